#version 110
// A shock: a packet of ring waves that bends the picture, splits its colours a little and glints. It starts in the
// middle when "scale" is 0.3 and runs outward as "scale" falls to 0, where the picture is left alone. A "scale" that
// stands still holds a ring of glass at its place.

uniform sampler2D picture;
uniform vec2 center;    // of the rings, 0..1 across what is seen
uniform float distort;  // how tight the waves are: 1 one wide lens, 54 fine ripples; 0 leaves the picture alone
uniform float scale;    // how strong, 0 to 0.3

varying vec2 place;

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen: rings are round on it

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
    float behindFront = radius - 2.8 * (0.3 - scale);
    float packet = exp(-(8.0 + 0.6 * distort) * behindFront * behindFront) * smoothstep(0.0, 0.12, radius);

    // Tighter waves are lower, or the picture would fold over itself.
    float frequency = 2.0 * distort;
    float height = 2.0 * scale * scale * packet / (1.0 + 0.08 * frequency);
    float phase = frequency * behindFront;
    vec2 nearEdge = smoothstep(0.0, 0.15, min(place, 1.0 - place));
    vec2 shift = -height * sin(phase) * ray / max(radius, 0.001) / aspect * nearEdge;

    vec4 color = texture2D(picture, coordinates(place + shift, slope, margin));
    color.r = texture2D(picture, coordinates(place + shift * 0.94, slope, margin)).r;
    color.b = texture2D(picture, coordinates(place + shift * 1.08, slope, margin)).b;
    color.rgb *= 1.0 + 0.2 * height * frequency * cos(phase);
    // Over a picture's own blurred copy the packet and all outside of it go soft.
    color.a *= 1.0 - 2.5 * scale * min(0.1 * distort, 1.0) * smoothstep(-0.2, 0.3, behindFront);
    gl_FragColor = color * gl_Color;
}
