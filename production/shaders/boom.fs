#version 110
// A shock wave: a front that throws the picture outward, splits its colours and glints, and a wake behind it that
// sinks, rings once and dies away. It starts in the middle when "scale" is 0.3 and runs outward as "scale" falls to 0,
// where the picture is left alone. A "scale" that stands still holds a ring of glass at its place.

uniform sampler2D picture;
uniform vec2 center;    // of the rings, 0..1 across what is seen
uniform float distort;  // how tight the wave is: 1 a wide lens, 54 a blade; 0 leaves the picture alone
uniform float scale;    // how far the wave has still to go, 0.3 to 0

varying vec2 place;

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen: rings are round on it
const float strength = 0.8;                // of the push at the front

// Texture coordinates of a place, which stays half a pixel inside of what is seen. The quad is square to the screen,
// so each axis has a slope of its own; it is turned over where a picture is stored top row first.
vec2 coordinates(vec2 target, vec2 slope, vec2 margin) {
    return gl_TexCoord[0].st + (clamp(target, margin, 1.0 - margin) - place) * slope;
}

void main() {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = 0.5 * vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));

    vec2 ray = (place - center) * aspect;
    float radius = length(ray);
    vec2 outward = ray / max(radius, 0.001);
    float behindFront = radius - 2.8 * (0.3 - scale);
    float pulse = scale / 0.3 * distort / (distort + 2.0);

    // No blast is quite round.
    float dent = sin(5.0 * outward.x + 3.0 * outward.y) + 0.6 * sin(8.0 * outward.y - 5.0 * outward.x);
    float ahead = behindFront + 0.018 * dent * smoothstep(0.0, 0.5, radius);
    float tightness = 6.0 + 0.9 * distort;
    float x = ahead * tightness;
    float wake = ahead < 0.0 ? exp(0.28 * x) : exp(-0.7 * x * x);
    wake *= smoothstep(0.0, 0.12, radius);

    // As far as the picture doesn't fold over itself.
    float height = strength * pulse * pulse / tightness * wake * (ahead < 0.0 ? cos(x) : 1.0);
    vec2 inside = smoothstep(0.0, 0.15, min(place, 1.0 - place));
    vec2 shift = -height * outward / aspect * inside;
    float hard = smoothstep(8.0, 50.0, distort);
    float edge = exp(-2.5 * x * x) * smoothstep(0.0, 0.12, radius);
    vec2 split = -(mix(0.07, 0.25, hard) * abs(height) + 0.010 * hard * pulse * edge) * outward / aspect * inside;

    vec4 color = texture2D(picture, coordinates(place + shift, slope, margin));
    // Looked up at every pixel: which level of a picture is meant is not known where neighbours don't look.
    vec3 red = texture2D(picture, coordinates(place + shift - 2.0 * split, slope, margin)).rgb;
    vec3 orange = texture2D(picture, coordinates(place + shift - split, slope, margin)).rgb;
    vec3 azure = texture2D(picture, coordinates(place + shift + split, slope, margin)).rgb;
    vec3 blue = texture2D(picture, coordinates(place + shift + 2.0 * split, slope, margin)).rgb;
    if (dot(split, split) > 2e-8) {  // a quarter of a pixel from end to end
        color.rgb = vec3(0.5 * red.r + 0.35 * orange.r + 0.15 * color.r,
                         0.25 * orange.g + 0.5 * color.g + 0.25 * azure.g,
                         0.15 * color.b + 0.35 * azure.b + 0.5 * blue.b);
    }

    // The edge shines, and behind it the air is thin.
    float hollow = ahead < 0.0 ? wake * (1.0 - cos(min(-x, 6.2832))) : 0.0;
    color.rgb *= 1.0 + pulse * (0.10 * edge - 0.36 * hollow);
    gl_FragColor = color * gl_Color;
}
