#version 110
// Smoke across the whole screen in three depths: a far light in the middle, of the opposite hue; clouds that hide and
// show it; veins that drift before them. It darkens towards the corners and stays dim: the glow that follows adds it to
// itself.

uniform sampler2D noise;
uniform vec4 color;

varying vec2 place;
varying vec2 wide;
varying vec2 fine;

void main() {
    float swirl = texture2D(noise, wide).r;
    float wisp = texture2D(noise, fine + 0.3 * swirl).r;
    float smoke = swirl * wisp;
    float far = texture2D(noise, 0.55 * wide.ts + 0.35 * fine).r;
    float veins = texture2D(noise, 0.8 * fine + vec2(0.25 * wisp, 0.15 * swirl)).b;

    vec2 aside = (place - 0.5) * vec2(1.15, 1.0);
    float away = dot(aside, aside);
    float heart = exp(-9.0 * away) * (0.35 + 0.9 * far) * (1.0 - 0.75 * wisp);
    vec3 ember = color.bgr * vec3(0.72, 1.1, 2.4);

    vec3 light = color.rgb * (0.025 + 0.36 * smoke + 0.10 * veins * swirl) + 0.10 * smoke * smoke;
    light += ember * (0.22 * heart + 0.05 * far * (1.0 - swirl));
    gl_FragColor = vec4(light * (1.0 - 1.4 * away), color.a) * gl_Color;
}
