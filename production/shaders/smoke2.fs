#version 110
// Smoke across the whole screen, darker towards its corners. It stays dim: the glow that follows adds it to itself.

uniform sampler2D noise;
uniform vec4 color;

varying vec2 place;
varying vec2 wide;
varying vec2 fine;

void main() {
    float swirl = texture2D(noise, wide).r;
    float wisp = texture2D(noise, fine + 0.3 * swirl).r;
    float smoke = swirl * wisp;
    vec2 aside = place - 0.5;
    float vignette = 1.0 - 1.3 * dot(aside, aside);
    vec3 light = color.rgb * (0.03 + 0.4 * smoke) + 0.12 * smoke * smoke;
    gl_FragColor = vec4(light * vignette, color.a) * gl_Color;
}
