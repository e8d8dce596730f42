#version 110
// A disc of smoke lit from its middle, gone before the edge of the hexagon that it is drawn on, with rays that reach
// the edge. Added to the picture, and dim, since the glow that follows adds it to itself.

uniform sampler2D noise;
uniform vec4 color;

varying vec2 disc;
varying vec2 wide;
varying vec2 fine;
varying vec3 fromEye;

void main() {
    float radius = length(disc);
    float swirl = texture2D(noise, wide).r;
    float wisp = texture2D(noise, fine + 0.35 * swirl).r;
    float smoke = swirl * wisp * (1.0 - smoothstep(0.45, 0.86, radius));
    // A hundred rays meet in the middle and add up there; and who stands there is to be seen through the smoke.
    float spread = 0.07 + 0.9 * smoothstep(0.15, 0.80, radius);
    // What drifts before the eye would be a veil over all that stands behind.
    spread *= smoothstep(20.0, 130.0, length(fromEye));
    vec3 light = color.rgb * spread * (0.9 * smoke + 0.02) + 0.25 * smoke * smoke * spread;
    gl_FragColor = vec4(light, color.a) * gl_Color;
}
