#version 110
// A world with a ring in the middle of the probes, and smoke across the whole screen, behind it and before it. The sun
// is the probes' own second light, so the world wanes and waxes as the camera circles it. Dim, since the glow that
// follows makes three of one.

uniform sampler2D noise;
uniform vec4 color;

varying vec2 place;
varying vec3 eye;
varying vec3 right;
varying vec3 upright;
varying vec2 far;
varying vec2 near;

const float radius = 72.0;
const vec3 sun = vec3(0.577, 0.577, 0.577);
const vec3 axis = vec3(-0.30, 0.94, -0.16);  // of the ring, of length 1; the sun stands low over its plane
const vec3 east = vec3(0.661, 0.084, -0.745);  // of the towns, on the side of the night that is seen
const vec3 north = vec3(0.410, 0.791, 0.453);

// The scene is seen through a lens, "boom" as it stands at a "distort" of 8 and a "scale" of 0.2. Where it will show
// what is drawn at a place, in screen heights from the middle, found in two steps: behind it the world is round.
vec2 shownAt(vec2 at) {
    const float tightness = 13.2, height = 0.8 * 0.5333 * 0.5333 / tightness;
    float radius = length(at), shown = radius;
    vec2 outward = at / max(radius, 0.001);
    float dent = sin(5.0 * outward.x + 3.0 * outward.y) + 0.6 * sin(8.0 * outward.y - 5.0 * outward.x);
    float front = 0.28 - 0.018 * dent * smoothstep(0.0, 0.5, radius);
    for (int i = 0; i < 2; i++) {
        float x = (shown - front) * tightness;
        float wake = x < 0.0 ? exp(0.28 * x) * cos(x) : exp(-0.7 * x * x);
        shown = radius + height * wake * smoothstep(0.0, 0.12, shown);
    }
    return outward * shown;
}

// 1 within a distance of 0, with edges so steep.
float bandAt(float away, float within, float steep) {
    return clamp((within - abs(away)) * steep, 0.0, 1.0);
}

// How much of the ring there is at a distance from the middle, in radii, but for its grain: a thin inner band, a
// dense one, a broad gap, an outer band with a narrow gap, and a thread outside.
float ringAt(float reach) {
    float inner = 0.38 * bandAt(reach - 1.35, 0.11, 30.0);
    float dense = bandAt(reach - 1.59, 0.145, 50.0);
    float outer = 0.85 * (bandAt(reach - 1.915, 0.105, 80.0) - bandAt(reach - 1.945, 0.014, 120.0));
    return max(inner, dense) + outer + 0.45 * bandAt(reach - 2.075, 0.014, 100.0);
}

// The ground at a place whose direction from the middle is `up`: bands that storms bend, each of finer ones. What is
// broad is dim and what is fine is strong, since the glow makes three of the one and one of the other.
vec3 groundAt(vec3 up, float storm) {
    float height = dot(up, axis);
    float band = texture2D(noise, vec2(0.06 * storm, height * 0.42 + 0.035 * storm)).r;
    vec3 fine = texture2D(noise, vec2(0.22 * storm + 0.3 * band, height * 1.9 + 0.16 * storm)).rgb;
    vec3 broad = mix(vec3(0.19, 0.030, 0.016), vec3(0.35, 0.21, 0.07), smoothstep(0.25, 0.75, band));
    return broad * (0.35 + 1.5 * fine.g) + vec3(0.26, 0.16, 0.08) * smoothstep(0.45, 0.95, fine.b);
}

// How much of the sun reaches that place past the ring.
float daylightAt(vec3 up) {
    float rise = -dot(up, axis) / dot(sun, axis);
    return smoothstep(-0.02, 0.40, dot(up, sun)) * (1.0 - 0.7 * step(0.0, rise) * bandAt(length(up + sun * rise) - 1.59, 0.15, 20.0));
}

// A lot for each cell of a grid, 0 to 1.
float lotOf(vec2 cell) {
    vec2 mixed = fract(cell * vec2(0.1731, 0.2917));
    return fract(97.0 * mixed.x * mixed.y + 13.0 * mixed.x);
}

// What glows by itself where it is night: towns, as many as `dense` says (0 to 1), and few of them large.
vec3 townsAt(vec3 up, float dense) {
    vec2 grid = vec2(dot(up, east), dot(up, north)) * 31.0;
    vec2 cell = floor(grid + vec2(0.37 * floor(grid.y), 0.0));
    float lot = lotOf(cell);
    float glint = fract(37.0 * lot);
    vec2 away = grid + vec2(0.37 * floor(grid.y) - 0.3 - 0.4 * fract(90.0 * lot), -0.3 - 0.4 * fract(53.0 * lot)) - cell;
    float lamp = max(1.0 - 7.0 * dot(away, away), 0.0) * step(lot, 0.04 + 0.70 * dense);
    return vec3(1.0, 0.58, 0.20) * (0.05 * dense * dense + lamp * lamp * (0.1 + 1.1 * glint * glint));
}

// Stars, each somewhere in its cell of a grid of `scale` cells to a unit, a `share` of which has one; `most` wide, or
// half that. `arms` is the light of a cross through each.
vec3 starsAt(vec2 sky, float scale, float share, float most, float arms) {
    vec2 cell = floor(sky * scale);
    float lot = lotOf(cell);
    vec2 away = abs((sky * scale - cell - 0.3 - 0.4 * fract(vec2(90.0, 170.0) * lot)) / scale);
    float size = most * (fract(11.0 * lot) < 0.3 ? 1.0 : 0.5);
    float core = max(1.0 - dot(away, away) / (size * size), 0.0);
    vec2 thin = max(1.0 - 2.5 * away / size, 0.0), fall = max(1.0 - away.yx / (size * 7.0), 0.0);
    float bright = step(lot, share) * (0.4 + 0.6 * fract(23.0 * lot)) * (core * core + arms * dot(thin, fall * fall));
    return mix(vec3(0.55, 0.70, 1.0), vec3(1.0, 0.72, 0.48), fract(41.0 * lot)) * bright;
}

void main() {
    vec2 at = shownAt((place - 0.5) * vec2(4.0 / 3.0, 1.0));
    vec3 ray = 2.0 * (at.x * right + at.y * upright) - normalize(eye);
    vec2 square = 0.75 * at + vec2(0.5, 0.375);
    vec2 sky = far + 0.55 * square, drift = near + 0.8 * square;

    float swirl = texture2D(noise, sky).r;
    float wisp = texture2D(noise, drift + 0.25 * swirl).r;
    float veins = texture2D(noise, 1.7 * sky + vec2(0.25 * wisp, 0.15 * swirl)).b;
    vec3 haze = mix(vec3(0.075, 0.02, 0.18), vec3(0.015, 0.105, 0.17), swirl);
    vec3 light = haze * swirl * (wisp + 0.5 * veins - 0.15) + vec3(0.09, 0.03, 0.04) * veins * wisp;
    light = mix(light, haze * (0.5 + wisp), 0.6 * smoothstep(0.45, 0.85, wisp) * swirl);
    light += 0.8 * starsAt(sky, 62.0, 0.34, 0.0018, 0.0) + starsAt(sky + 0.71, 13.0, 0.2, 0.0028, 0.5);

    // Where the ray meets the world, or comes nearest to it.
    vec3 towards = normalize(ray);
    float along = -dot(eye, towards);
    float depth = radius * radius - dot(eye, eye) + along * along;
    float meets = along - sqrt(max(depth, 0.0));
    vec3 up = (eye + towards * meets) / radius;
    float body = smoothstep(-40.0, 40.0, depth);
    float day = daylightAt(up);
    // Looked up at every pixel, as the ring's grain is: which level of a picture is meant is not known where neighbours
    // don't look.
    float storm = texture2D(noise, up.xz * 0.28 + 0.5).r;
    vec3 ground = groundAt(up, storm);
    if (body > 0.0) {
        float grazing = 1.0 - max(dot(up, -towards), 0.0);
        float rim = grazing * grazing * grazing;
        vec3 air = color.rgb + vec3(0.06, 0.08, 0.0);
        vec3 towns = townsAt(up, clamp(5.0 * storm - 2.1, 0.0, 1.0));
        vec3 world = ground * day * (1.15 - 0.75 * grazing) + 0.7 * towns * max(1.0 - 10.0 * day, 0.0) * (1.0 - rim);
        light = mix(light, world + air * rim * (rim * 0.75 + 0.2 * day), body);
    }
    light += vec3(0.06, 0.09, 0.17) * (1.0 - body) * (0.35 + 0.4 * day) / (1.0 + 0.003 * max(-depth, 0.0));

    // Where it meets the ring's plane, and how far that lies behind the world, for the sun.
    float crosses = -dot(eye, axis) / dot(towards, axis);
    vec3 spot = eye + towards * crosses;
    float reach = length(spot) / radius;
    float ice = ringAt(reach) * step(0.0, crosses) * (1.0 - body * step(meets, crosses));
    vec3 grain = texture2D(noise, vec2(reach * 4.7, 0.37)).rgb;
    if (ice > 0.0) {
        float behind = -dot(spot, sun);
        float blur = 1.0 + 0.04 * max(behind, 0.0);
        float shadow = step(0.0, behind) * (1.0 - smoothstep(radius - blur, radius + blur, length(spot + sun * behind)));
        grain.b = smoothstep(0.25, 0.70, grain.b);
        vec3 dust = mix(vec3(0.13, 0.08, 0.08), vec3(0.46, 0.36, 0.24), smoothstep(0.25, 0.75, grain.g));
        dust = mix(dust, vec3(0.27, 0.31, 0.40), smoothstep(1.78, 1.90, reach));
        light = mix(light, dust * (0.18 + 1.35 * grain.b * grain.b) * (1.0 - 0.97 * shadow), min(ice * (0.75 + 0.35 * grain.r), 1.0));
    }

    vec2 off = (place - 0.5) * vec2(1.15, 1.0);
    gl_FragColor = vec4(light * (1.0 - 1.2 * dot(off, off)), color.a) * gl_Color;
}
