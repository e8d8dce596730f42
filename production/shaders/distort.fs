#version 110
// With "time" near 0, the shimmer of hot air; near 1, a signal that tears: bands and lines of the picture slip
// sideways and its colours come apart.

uniform sampler2D picture;
uniform float time;  // moves the shimmer and draws new tears; its size is how torn the picture is

varying vec2 place;

float random(float seed) { return fract(sin(seed * 12.9898) * 43758.5453); }

vec2 coordinates(vec2 target, vec2 slope, vec2 margin) {
    return gl_TexCoord[0].st + (clamp(target, margin, 1.0 - margin) - place) * slope;
}

void main() {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));  // a pixel: slopes are not exact across the whole width
    float torn = smoothstep(0.2, 0.8, abs(time));

    vec2 shimmer = vec2(sin(place.y * 19.0 + time * 60.0) + 0.5 * sin(place.y * 47.0 - time * 90.0),
                        cos(place.x * 15.0 - time * 50.0) + 0.5 * cos(place.x * 37.0 + time * 70.0));
    vec2 target = place + 0.003 * shimmer;
    float split = 0.001 + 0.009 * torn;

    if (torn > 0.0) {
        float draw = floor(time * 45.0);
        float band = floor(place.y * (7.0 + 9.0 * random(draw)));
        float slipped = step(0.62, random(band + 17.0 * draw));
        float line = floor(place.y * 150.0);
        float slip = slipped * (random(band + 31.0 * draw) - 0.5) * 0.35 + (random(line + draw) - 0.5) * 0.012;
        target.x = fract(clamp(target.x, margin.x, 1.0 - margin.x) + torn * slip);
        split += torn * slipped * 0.02;
    }

    vec4 color = texture2D(picture, coordinates(target, slope, margin));
    color.r = texture2D(picture, coordinates(target - vec2(split, 0.0), slope, margin)).r;
    color.b = texture2D(picture, coordinates(target + vec2(split, 0.0), slope, margin)).b;
    gl_FragColor = color * gl_Color;
}
