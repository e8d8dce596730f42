#version 110
// A disc of smoke lit from its middle in broad shafts, gone before the edge of the hexagon that it is drawn on. Added
// to the picture, and dim, since the glow that follows adds it to itself.

uniform sampler2D noise;
uniform vec4 color;
uniform float time2;  // radians that the smoke has turned

const float firstBeat = 17.138, beatsPerSecond = 2.1;  // seconds

varying vec2 disc;
varying vec2 wide;
varying vec2 fine;
varying vec3 fromEye;
varying float behind;

// 0 on the hundred hair lines from the middle to the rim, which would comb where they lie close. What lies this exactly
// at one of their angles is one of them but for a stray pixel; neighbouring pixels tell less, with samples at that.
float isSurface() {
    const float between = 3.14159265 / 50.0;
    float nearest = between * floor(atan(disc.y, disc.x) / between + 0.5);
    return abs(disc.y * cos(nearest) - disc.x * sin(nearest)) > 0.00002 ? 1.0 : 0.0;
}

void main() {
    float radius = length(disc);
    float swirl = texture2D(noise, wide).r;
    float wisp = texture2D(noise, fine + 0.35 * swirl).r;
    float smoke = swirl * wisp * (1.0 - smoothstep(0.45, 0.86, radius));
    float turn = atan(disc.y, disc.x) + 0.1 * swirl;
    float shafts = cos(11.0 * turn + 0.9 * time2) * cos(18.0 * turn - 0.7 * time2);
    shafts = smoothstep(0.1, 0.8, abs(shafts)) * (1.0 - smoothstep(0.40, 0.86, radius));
    // Who stands in the middle is to be seen through the smoke.
    float spread = 0.07 + 0.9 * smoothstep(0.15, 0.80, radius);
    // What drifts before the eye would be a veil over all that stands behind.
    float clear = smoothstep(20.0, 130.0, length(fromEye)) * mix(0.04, 1.0, smoothstep(-25.0, 4.0, behind));
    spread *= clear;
    smoke *= 0.75 + 1.0 * shafts;
    // On each beat a wave runs out from the middle.
    float beat = fract((time2 / 0.4 - firstBeat) * beatsPerSecond);
    float away = (radius - 0.22 - 0.6 * beat) / (0.012 + 0.03 * beat);
    float wave = exp(-away * away) * (1.0 - beat) * clear;
    vec3 light = color.rgb * spread * (1.0 * smoke + 0.05 * (1.0 - smoothstep(0.5, 0.86, radius)) + 0.20 * shafts) + color.rgb * wave * (0.25 + 0.5 * swirl) + 0.1 * smoke * smoke * spread;
    light *= isSurface();
    // Added by its own alpha, which stays as small as it can: by the frame's the greetings tell their plates.
    float most = max(max(light.r, max(light.g, light.b)), 0.004);
    gl_FragColor = vec4(light / most, most) * gl_Color;
}
