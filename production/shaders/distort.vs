#version 110
// What "distort" knows of the whole picture: where the middle of its light lies, and what light falls on the glass.

uniform sampler2D picture;

varying vec2 place;  // 0..1 across what is seen
varying vec2 focus;  // of the beams, where the ship is, 0..1
varying vec3 light;  // from the side of this corner, its largest channel 1

const vec2 seen = vec2(800.0, 600.0) / 1024.0;  // of a target
const vec2 aspect = vec2(4.0 / 3.0, 1.0);       // of the screen

vec3 sampleAt(vec2 at) { return texture2D(picture, at * seen).rgb; }

// The middle of a sample's cell: coarse samples do, since the picture has a glow round all that shines.
vec2 cellAt(int column, int row) { return (vec2(float(column), float(row)) + 0.5) / vec2(20.0, 15.0); }

// How much of a colour is the beams', which are magenta.
float beamIn(vec3 color) {
    float beam = max(min(color.r, color.b) - 0.6 * color.g, 0.0);
    return beam * beam;
}

void main() {
    gl_Position = ftransform();
    gl_FrontColor = gl_Color;
    gl_TexCoord[0] = gl_MultiTexCoord0;
    place = gl_Vertex.xy * 0.5 + 0.5;

    vec2 corner = clamp(place, 0.0, 1.0);
    vec3 middle = vec3(0.5, 0.5, 1.0) * 0.01;
    vec3 fallen = vec3(0.0);
    for (int row = 0; row < 15; row++) {
        for (int column = 0; column < 20; column++) {
            vec2 at = cellAt(column, row);
            vec3 color = sampleAt(at);
            middle += beamIn(color) * vec3(at, 1.0);
            vec2 away = (at - corner) * aspect;
            fallen += color * max(color.r, max(color.g, color.b)) * exp(-3.0 * dot(away, away));
        }
    }
    // Then only what is near, so that a beam that runs off to one side doesn't count.
    vec2 first = middle.xy / middle.z;
    middle = vec3(first, 1.0) * 0.05;
    for (int row = 0; row < 15; row++) {
        for (int column = 0; column < 20; column++) {
            vec2 at = cellAt(column, row);
            vec2 away = (at - first) * aspect;
            middle += beamIn(sampleAt(at)) * exp(-12.0 * dot(away, away)) * vec3(at, 1.0);
        }
    }
    focus = clamp(middle.xy / middle.z, 0.2, 0.8);
    light = fallen / max(max(fallen.r, max(fallen.g, fallen.b)), 0.001);
}
