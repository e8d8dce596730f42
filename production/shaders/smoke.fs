#version 110
// A disc of light seen through smoke: bright at its middle, gone before the edge of the hexagon that it is drawn
// on. Added to the picture.

uniform sampler2D noise;
uniform vec4 color;

varying vec2 disc;
varying vec2 wide;
varying vec2 fine;

void main() {
    float radius = length(disc);
    float swirl = texture2D(noise, wide).r;
    float wisp = texture2D(noise, fine + 0.35 * swirl).r;
    float smoke = 2.2 * swirl * wisp * (1.0 - smoothstep(0.35, 0.86, radius));
    float core = exp(-9.0 * radius * radius);
    vec3 light = color.rgb * (smoke + 0.5 * core) + 0.15 * core * smoke;
    gl_FragColor = vec4(light, color.a) * gl_Color;
}
