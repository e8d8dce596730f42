#version 110
// A disc of smoke lit from its middle in broad shafts, gone before the edge of the hexagon that it is drawn on. Added
// to the picture, and dim, since the glow that follows adds it to itself.

uniform sampler2D noise;
uniform vec4 color;
uniform float time2;  // radians that the smoke has turned

varying vec2 disc;
varying vec2 wide;
varying vec2 fine;
varying vec3 fromEye;

// 0 on the hundred hair lines from the middle to the rim, which would comb where they lie close: along a line the place
// on the disc moves one way only, whereas across the hexagon it moves both ways.
float isSurface() {
    vec2 right = dFdx(disc);
    vec2 up = dFdy(disc);
    return step(0.0002, abs(right.x * up.y - right.y * up.x) / (length(right) * length(up) + 1e-12));
}

void main() {
    float radius = length(disc);
    float swirl = texture2D(noise, wide).r;
    float wisp = texture2D(noise, fine + 0.35 * swirl).r;
    float smoke = swirl * wisp * (1.0 - smoothstep(0.45, 0.86, radius));
    float turn = atan(disc.y, disc.x) + 0.1 * swirl;
    float shafts = cos(11.0 * turn + 0.9 * time2) * cos(18.0 * turn - 0.7 * time2);
    shafts = smoothstep(0.1, 0.8, abs(shafts)) * smoothstep(0.86, 0.40, radius);
    // Who stands in the middle is to be seen through the smoke.
    float spread = 0.07 + 0.9 * smoothstep(0.15, 0.80, radius);
    // What drifts before the eye would be a veil over all that stands behind.
    spread *= smoothstep(20.0, 130.0, length(fromEye));
    smoke *= 0.75 + 1.0 * shafts;
    vec3 light = color.rgb * spread * (1.1 * smoke + 0.05 * smoothstep(0.86, 0.5, radius) + 0.20 * shafts) + 0.25 * smoke * smoke * spread;
    gl_FragColor = vec4(light * isSurface(), color.a) * gl_Color;
}
