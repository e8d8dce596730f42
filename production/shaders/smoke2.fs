#version 110
// A world that the probes fly low over, where day ends, under thin clouds of stars. The camera circles over it, and each
// way that it looks has something of its own: the sun low over the edge, a moon, a comet over a net of towns, northern
// lights, the world's ring. Dim, since the glow that follows makes three of one.

uniform sampler2D noise;
uniform vec4 color;

varying vec2 place;
varying vec3 eye;
varying vec3 ray;
varying vec2 sky;
varying vec2 drift;

const float radius = 2000.0;
// Directions, of length 1. The sun stands over where the probes' own second light comes from.
const vec3 sun = vec3(0.6706, -0.3173, 0.6706);
const float dusk = 0.32;  // what its light reaches beyond where it is seen to stand
const vec3 moon = vec3(0.844, -0.292, -0.449);
const float moonRadius = 0.20;
const vec3 comet = vec3(0.2076, -0.0523, -0.9768);
const vec3 tail = vec3(-0.9201, 0.3287, -0.2132);  // where the comet's lies, square to it
const vec3 aside = vec3(0.3322, 0.9430, 0.0201);  // square to both
const vec3 axis = vec3(0.455, 0.766, -0.455);   // of the ring and of the northern lights
const vec3 east = vec3(0.0, 0.511, 0.860);      // square to it
const vec3 north = vec3(0.891, -0.391, 0.232);  // and square to both

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

// A lot for each cell of a grid, 0 to 1.
float lotOf(vec2 cell) {
    vec2 mixed = fract(cell * vec2(0.1731, 0.2917));
    return fract(97.0 * mixed.x * mixed.y + 13.0 * mixed.x);
}

// Northern lights: two curtains round the axis, of rays over a bright hem.
vec3 auroraAt(vec3 up, float height) {
    vec2 way = vec2(dot(up, east), dot(up, north));
    way /= max(length(way), 0.01);
    vec3 folds = texture2D(noise, 0.45 * way + 0.2).rgb;
    float rays = texture2D(noise, 3.7 * way).b;
    vec2 hem = vec2(height) - vec2(0.845, 0.885) - vec2(0.07, 0.05) * folds.rg;
    vec2 curtain = exp(-mix(vec2(34.0, 55.0), vec2(-260.0), vec2(lessThan(hem, vec2(0.0)))) * hem);
    float light = dot(curtain, vec2(1.0, 0.6));
    return mix(vec3(0.34, 0.06, 0.50), vec3(0.03, 0.62, 0.34), clamp(1.5 * light - 0.2, 0.0, 1.0)) *
           (light * (0.15 + 1.8 * rays * rays));
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

// Space: thin clouds of `first` and `second`, stars of three sizes, the sun and a comet.
vec3 spaceAt(vec3 towards, vec3 first, vec3 second, float sunwards) {
    vec3 light = mix(vec3(0.100, 0.020, 0.170), vec3(0.006, 0.085, 0.130), first.r) *
                 (0.06 + second.r * (1.5 * first.r * second.r + 0.35 * first.b * first.b));
    light += 1.3 * starsAt(sky, 74.0, 0.24, 0.0017, 0.0) + 1.3 * starsAt(sky + 0.71, 14.0, 0.22, 0.0032, 0.6);
    light += vec3(1.0, 0.62, 0.30) * (0.16 * exp(-260.0 * sunwards) + 0.05 * exp(-22.0 * sunwards)) +
             vec3(1.0, 0.85, 0.65) * (1.6 * exp(-5000.0 * sunwards) + 0.5 * exp(-900.0 * sunwards));
    vec2 head = vec2(dot(towards - comet, tail), dot(towards, aside));
    float behind = max(head.x, 0.0), width = 0.004 + 0.07 * behind, across = head.y / width;
    float streaming = exp(-across * across - 5.0 * behind) * smoothstep(-0.006, 0.0, head.x) * (0.004 / width + 0.10);
    float shining = (streaming + exp(-60000.0 * dot(head, head))) * step(0.0, dot(towards, comet));
    return light + vec3(0.35, 0.60, 0.85) * shining;
}

// The night's lights, `far` from the eye: each town is rings and spokes of streets in a cell of its own, and between
// them runs a net of roads, lamp by lamp.
vec3 townsAt(vec2 place, float far, vec3 first, vec3 second, vec3 third) {
    vec2 cell = floor(place * 17.0);
    float lot = lotOf(cell);
    vec2 off = place * 17.0 - cell - 0.35 - 0.30 * fract(vec2(90.0, 170.0) * lot);
    off += 0.16 * (vec2(second.g, third.r) - 0.5);  // no town is a wheel
    vec2 away = abs(off);
    float reach = length(off), size = 0.15 + 0.33 * fract(11.0 * lot) * fract(17.0 * lot);
    float spoke = min(min(away.x, away.y), 0.7071 * abs(away.x - away.y));
    float ring = abs(fract(reach * 9.0) - 0.5) / 9.0;
    float town = max(1.0 - reach / size, 0.0);
    float street = max(1.0 - min(spoke, ring) / (0.016 + 0.000025 * far), 0.0);
    // Lamps lie anywhere in their cells and not in all, or they would be a screen; from afar only their clumps are seen.
    vec2 block = floor(place * 700.0);
    float pick = lotOf(block);
    vec2 lamp = place * 700.0 - block - 0.25 - 0.5 * fract(vec2(90.0, 170.0) * pick);
    float lit = max(1.0 - 16.0 * dot(lamp, lamp), 0.0) * step(0.35, pick) * (1.0 + 4.0 * fract(23.0 * pick));
    float clump = smoothstep(0.42, 0.74, third.b);
    float dots = clump * mix(lit, 0.3 + 1.2 * third.g, smoothstep(220.0, 520.0, far));
    float road = second.b * second.b * second.b * smoothstep(0.05, 0.40, first.r);
    float lamps = road * third.b;
    vec3 tint = mix(vec3(1.0, 0.55, 0.20), vec3(0.50, 0.75, 1.0), smoothstep(0.45, 0.75, first.g));
    return tint * (town * (street * (0.3 + 1.5 * third.b) + 1.6 * dots * third.b + 0.34 * town * town) +
           road * (0.16 + 3.0 * dots * smoothstep(0.25, 0.65, road)) + 1.6 * lamps * lamps * dots);
}

// By day, seas and coasts under clouds, red where the day ends; by night, a net of towns and of roads between them.
vec3 groundAt(float rise, float glint, vec2 place, float far, vec3 first, vec3 second, vec3 third) {
    float day = smoothstep(0.0, 0.13, rise), night = 1.0 - smoothstep(-0.04, 0.02, rise);
    float coast = smoothstep(0.46, 0.54, first.r + 0.10 * (third.g - 0.5));
    vec3 land = mix(vec3(0.10, 0.075, 0.04), vec3(0.03, 0.06, 0.03), third.r);
    vec3 ground = mix(vec3(0.008, 0.060, 0.105) + vec3(0.40, 0.20, 0.09) * glint, land, coast);
    vec3 clouds = mix(vec3(0.66, 0.14, 0.07), vec3(0.42, 0.36, 0.32), smoothstep(0.0, 0.22, rise));
    ground = mix(ground, clouds * (0.35 + 1.1 * third.r), 0.9 * smoothstep(0.40, 0.85, second.r + 0.55 * (third.r - 0.5)));
    return ground * day + townsAt(place, far, first, second, third) * night;
}

void main() {
    vec3 towards = normalize(ray);

    // Where the ray meets the world, or comes nearest to it.
    float along = -dot(eye, towards);
    float depth = radius * radius - dot(eye, eye) + along * along;
    float away = along - sqrt(max(depth, 0.0));
    vec3 up = (eye + towards * away) / radius;
    float body = smoothstep(-7000.0, 7000.0, depth);
    float rise = dot(up, sun) + dusk, day = smoothstep(0.0, 0.13, rise);

    // Where it meets the ring's plane.
    float crosses = -dot(eye, axis) / dot(towards, axis);
    vec3 spot = eye + towards * crosses;
    float reach = length(spot) / radius;
    float ice = ringAt(reach) * step(0.0, crosses) * (1.0 - body);

    // Where it meets the moon: what that faces there.
    vec3 beside = (towards - moon * dot(towards, moon)) / moonRadius;
    float beyond = dot(beside, beside);
    vec3 facing = beside - moon * sqrt(max(1.0 - beyond, 0.0));
    float disc = step(0.0, dot(towards, moon)) * smoothstep(1.02, 0.98, beyond);

    // Three looks serve a place, which is sky, moon, day or night: to look up all of them everywhere takes twice the
    // time. The third is the grain of the ring where that lies before all.
    bool isSky = depth < 0.0, isNight = rise < 0.01;
    vec3 first = texture2D(noise, isSky ? sky : 1.85 * up.xz + vec2(0.30, 0.75)).rgb;
    vec2 far = disc > 0.0 ? 0.4 * facing.xy + 0.7 * facing.z : drift + 0.2 * first.r;
    vec2 near = isNight ? 5.75 * up.xz + 0.3 : 2.9 * up.xz + 0.16 * first.rg;
    vec3 second = texture2D(noise, isSky ? far : near).rgb;
    vec2 fine = isNight ? 26.5 * up.xz : 10.0 * up.xz + 0.22 * second.rg;
    vec3 third = texture2D(noise, ice > 0.0 ? vec2(4.7 * reach, 0.37) : fine).rgb;

    float sunwards = max(1.0 - dot(towards, sun), 0.0);
    vec3 light = spaceAt(towards, first, second, sunwards);
    light = mix(light, vec3(0.004, 0.006, 0.012) + vec3(0.46, 0.40, 0.36) *
                (smoothstep(-0.02, 0.5, dot(facing, sun)) * (0.25 + 0.9 * second.r)), disc);

    float grazing = 1.0 - max(dot(up, -towards), 0.0), rim = grazing * grazing * grazing;
    float glint = max(dot(reflect(towards, up), sun), 0.0);
    glint *= glint, glint *= glint, glint *= glint, glint *= glint;
    vec3 world = groundAt(rise, glint, up.xz, away, first, second, third);
    world += auroraAt(up, dot(up, axis)) * (1.0 - day);
    world += mix(vec3(0.05, 0.16, 0.42), vec3(0.20, 0.50, 0.95), day) * rim * (rim * (0.5 + 0.6 * day) + 0.10);
    light = mix(light, world, body);
    light += mix(vec3(0.09, 0.20, 0.46), vec3(0.55, 0.26, 0.10), exp(-9.0 * sunwards)) *
             ((1.0 - body) * (0.20 + 0.45 * day) / (1.0 + 0.000006 * max(-depth, 0.0)));

    if (ice > 0.0) {
        // How far that lies behind the world, for the sun.
        float behind = -dot(spot, sun);
        float blur = 20.0 + 0.04 * max(behind, 0.0);
        float offAxis = length(spot + sun * behind);
        float shadow = step(0.0, behind) * (1.0 - smoothstep(radius - blur, radius + blur, offAxis));
        float bright = smoothstep(0.25, 0.70, third.b);
        vec3 stone = mix(vec3(0.13, 0.08, 0.08), vec3(0.46, 0.36, 0.24), smoothstep(0.25, 0.75, third.g));
        stone = mix(stone, vec3(0.27, 0.31, 0.40), smoothstep(1.78, 1.90, reach));
        stone *= (0.18 + 1.35 * bright * bright) * (1.0 - 0.97 * shadow);
        light = mix(light, stone, min(ice * (0.75 + 0.35 * third.r), 1.0));
    }

    vec2 off = (place - 0.5) * vec2(1.15, 1.0);
    gl_FragColor = vec4(light * (1.0 - 1.2 * dot(off, off)), color.a) * gl_Color;
}
