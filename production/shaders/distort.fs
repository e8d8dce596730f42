#version 110
// With "time" near 0, the shimmer of hot air; as it swings up to 0.05 a sheet of cracked glass slides in, and as it
// swings down to -0.05 the lines lose their hold and bend away. Near 1, a signal that tears: bands, lines and blocks of
// the picture slip sideways, some fail, and its colours come apart.

uniform sampler2D picture;
uniform float time;  // moves the shimmer and draws new tears; its size is how torn the picture is

varying vec2 place;

float random(float seed) { return fract(sin(seed * 12.9898) * 43758.5453); }

vec2 coordinates(vec2 target, vec2 slope, vec2 margin) {
    return gl_TexCoord[0].st + (clamp(target, margin, 1.0 - margin) - place) * slope;
}

// Slanting slabs, each a prism of its own that throws the picture along the cracks.
vec2 glass(float strength) {
    vec2 across = vec2(0.94, 0.34), along = vec2(-0.34, 0.94);
    float at = dot(place - 0.5, across) * 9.0 + 0.5 * sin(7.0 * dot(place, along));
    float slab = floor(at);
    float throwOff = (random(slab + 40.0) - 0.5) * 0.34;
    float bevel = pow(abs(2.0 * (at - slab) - 1.0), 6.0) * sign(at - slab - 0.5);
    return strength * (throwOff * along - 0.03 * bevel * across);
}

// A picture that rolls: lines drift away the further, the nearer they lie to where the hold is lost.
vec2 lostHold(float strength) {
    float from = place.y * 5.0 + 0.9 * sin(place.y * 9.0 + time * 40.0);
    float band = floor(from), fall = from - band;
    float bend = pow(1.0 - fall, 5.0) * (random(band + 3.0) - 0.35);
    float jitter = (random(floor(place.y * 200.0) + floor(time * 400.0)) - 0.5) * 0.02;
    return strength * vec2(0.55 * bend + jitter * step(0.75, random(band + 11.0)), 0.0);
}

void main() {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));  // a pixel: slopes are not exact across the whole width
    float torn = smoothstep(0.2, 0.8, abs(time));
    float swing = smoothstep(0.004, 0.05, abs(time)) * (1.0 - torn);

    vec2 shimmer = vec2(sin(place.y * 19.0 + time * 60.0) + 0.5 * sin(place.y * 47.0 - time * 90.0),
                        cos(place.x * 15.0 - time * 50.0) + 0.5 * cos(place.x * 37.0 + time * 70.0));
    vec2 slip = time > 0.0 ? glass(swing) : lostHold(swing);
    vec2 target = place + 0.003 * shimmer + slip;
    vec2 split = vec2(0.001, 0.0) + 0.16 * slip;
    float light = 1.0;

    if (torn > 0.0) {
        float draw = floor(time * 45.0);
        float band = floor(place.y * (5.0 + 9.0 * random(draw)));
        float slipped = step(0.55, random(band + 17.0 * draw));
        float line = floor(place.y * 150.0);
        float aside = slipped * (random(band + 31.0 * draw) - 0.5) * 0.5 + (random(line + draw) - 0.5) * 0.012;

        // Blocks that hold on to another place.
        vec2 cell = floor(place * vec2(16.0, 12.0));
        float chance = random(cell.x + 57.0 * cell.y + 7.0 * draw);
        float lost = step(0.90, chance);
        aside += lost * (random(chance + draw) - 0.5) * 0.8;
        target.y += torn * lost * (random(chance * 3.0 + draw) - 0.5) * 0.5;

        target.x = fract(clamp(target.x, margin.x, 1.0 - margin.x) + torn * aside);
        split.x += torn * (0.009 + slipped * 0.03 + lost * 0.05);
        // Every other line of a band that fails is dark.
        float fails = step(0.86, random(band + 5.0 * draw + 2.0));
        light -= 0.85 * torn * fails * step(0.5, fract(place.y * 75.0));
    }

    vec4 color = texture2D(picture, coordinates(target, slope, margin));
    color.r = texture2D(picture, coordinates(target - split, slope, margin)).r;
    color.b = texture2D(picture, coordinates(target + split, slope, margin)).b;
    color.rgb *= light;
    gl_FragColor = color * gl_Color;
}
