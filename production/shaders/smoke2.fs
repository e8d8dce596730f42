#version 110
// A world with a ring in the middle of the probes, under thin clouds of stars. The sun is the probes' own second light,
// so the world wanes and waxes as the camera circles it: bands by day, a net of towns under northern lights by night.
// Dim, since the glow that follows makes three of one.

uniform sampler2D noise;
uniform vec4 color;

varying vec2 place;
varying vec3 eye;
varying vec3 ray;
varying vec2 sky;
varying vec2 drift;

const float radius = 94.0;
const vec3 sun = vec3(0.577, 0.577, 0.577);
const vec3 axis = vec3(-0.30, 0.94, -0.16);  // of the ring, of length 1; the sun stands low over its plane
const vec3 stormEast = vec3(-0.456, 0.0, 0.890);  // square to it, of the great storm and of the northern lights,
const vec3 stormNorth = vec3(0.837, 0.340, 0.429);  // and square to both
const vec3 east = vec3(0.661, 0.084, -0.745);  // of the towns, on the side of the night that is seen
const vec3 north = vec3(0.410, 0.791, 0.453);

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

// Northern lights round the axis, whose hems `night` makes bright.
vec3 auroraAt(vec3 up, float height, float night) {
    vec2 way = vec2(dot(up, stormEast), dot(up, stormNorth));
    vec3 folds = texture2D(noise, 0.55 * way / max(length(way), 0.01) + 0.2).rgb;
    float hem = height - 0.815 - 0.09 * folds.r;
    float curtain = hem > 0.0 ? exp(-16.0 * hem) : exp(70.0 * hem);
    return mix(vec3(0.02, 0.52, 0.30), vec3(0.30, 0.08, 0.60), smoothstep(0.0, 0.10, hem)) *
           (curtain * (0.2 + 1.2 * folds.b) * night);
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
    vec3 towards = normalize(ray);

    // Where the ray meets the world, or comes nearest to it.
    float along = -dot(eye, towards);
    float depth = radius * radius - dot(eye, eye) + along * along;
    float meets = along - sqrt(max(depth, 0.0));
    vec3 up = (eye + towards * meets) / radius;
    float body = smoothstep(-40.0, 40.0, depth);
    float rise = dot(up, sun), height = dot(up, axis);
    float day = daylightAt(up);

    // Where it meets the ring's plane.
    float crosses = -dot(eye, axis) / dot(towards, axis);
    vec3 spot = eye + towards * crosses;
    float reach = length(spot) / radius;
    float ice = ringAt(reach) * step(0.0, crosses) * (1.0 - body * step(meets, crosses));

    // Three looks serve a place, which is sky, day or night: to look up all of them everywhere takes twice the time.
    // The third is the grain of the ring where that lies before all.
    bool isSky = depth < 0.0, isNight = rise < 0.0;
    vec2 town = vec2(dot(up, east), dot(up, north));
    vec3 first = texture2D(noise, isSky ? sky : isNight ? 0.37 * town + 0.13 : 0.28 * up.xz + 0.5).rgb;
    // The great storm turns the bands about itself.
    vec2 fromEye = vec2(3.2 * dot(up, stormEast), 5.2 * (height - 0.30));
    float eddy = exp(-2.0 * dot(fromEye, fromEye)) * step(0.0, rise);
    float band = height + 0.10 * eddy * sin(9.0 * length(fromEye) - 1.0);
    vec2 broadly = isNight ? 1.15 * town + 0.3 : vec2(0.06 * first.r, 0.42 * band + 0.035 * first.r);
    vec3 second = texture2D(noise, isSky ? drift + 0.2 * first.r : broadly).rgb;
    vec2 fine = isNight ? 5.3 * town : vec2(0.22 * first.r + 0.3 * second.r, 1.9 * band + 0.16 * first.r);
    vec3 third = texture2D(noise, ice > 0.0 ? vec2(4.7 * reach, 0.37) : fine).rgb;

    // Space: thin clouds, and stars of three sizes.
    vec3 light = mix(vec3(0.100, 0.020, 0.170), vec3(0.006, 0.085, 0.130), first.r) *
                 (0.06 + second.r * (1.5 * first.r * second.r + 0.35 * first.b * first.b));
    light += 1.3 * starsAt(sky, 74.0, 0.24, 0.0017, 0.0) + 1.3 * starsAt(sky + 0.71, 14.0, 0.22, 0.0032, 0.6);

    // By day, bands. What is broad is dim and what is fine is strong, since the glow makes three of the one and one of
    // the other.
    float grazing = 1.0 - max(dot(up, -towards), 0.0);
    float rim = grazing * grazing * grazing;
    vec3 broad = mix(mix(vec3(0.12, 0.016, 0.012), vec3(0.28, 0.17, 0.07), smoothstep(0.30, 0.70, second.r)),
                     vec3(0.31, 0.08, 0.023), eddy);
    vec3 ground = broad * (0.25 + 1.6 * third.g) + vec3(0.26, 0.16, 0.08) * smoothstep(0.45, 0.95, third.b);
    vec3 world = ground * day * (1.15 - 0.75 * grazing);
    // By night, a net of towns and of the roads between them, then what the air adds.
    float dark = 1.0 - smoothstep(-0.15, 0.0, rise);
    float road = second.b * second.b * second.b * smoothstep(0.15, 0.50, first.r), lamps = road * third.b;
    world += (vec3(0.8, 0.45, 0.16) * (lamps * (0.5 + 1.9 * third.b) + 0.22 * road) +
              vec3(4.0, 3.5, 2.6) * (lamps * lamps * third.b)) * (dark * (1.0 - rim));
    world += vec3(0.22, 0.06, 0.02) * exp(-90.0 * (rise - 0.02) * (rise - 0.02));
    world += auroraAt(up, height, 0.25 + 0.75 * dark);
    world += mix(vec3(0.05, 0.16, 0.42), vec3(0.20, 0.50, 0.95), day) * rim * (rim * (0.5 + 0.6 * day) + 0.10);
    light = mix(light, world, body);
    float outside = max(-depth, 0.0);
    light += vec3(0.09, 0.20, 0.46) * (1.0 - body) * (0.20 + 0.45 * day) /
             (1.0 + outside * (0.0012 + 0.0000015 * outside));

    if (ice > 0.0) {
        // How far that lies behind the world, for the sun.
        float behind = -dot(spot, sun);
        float blur = 1.0 + 0.04 * max(behind, 0.0);
        float shadow = step(0.0, behind) * (1.0 - smoothstep(radius - blur, radius + blur, length(spot + sun * behind)));
        float bright = smoothstep(0.25, 0.70, third.b);
        vec3 stone = mix(vec3(0.13, 0.08, 0.08), vec3(0.46, 0.36, 0.24), smoothstep(0.25, 0.75, third.g));
        stone = mix(stone, vec3(0.27, 0.31, 0.40), smoothstep(1.78, 1.90, reach));
        stone *= (0.18 + 1.35 * bright * bright) * (1.0 - 0.97 * shadow);
        light = mix(light, stone, min(ice * (0.75 + 0.35 * third.r), 1.0));
    }

    vec2 off = (place - 0.5) * vec2(1.15, 1.0);
    gl_FragColor = vec4(light * (1.0 - 1.2 * dot(off, off)), color.a) * gl_Color;
}
