#version 110
// What "distort" knows of the whole picture: where the ship is, which alone is solid in it, and how much of it there is.

uniform sampler2D picture;

varying vec2 place;       // 0..1 across what is seen
varying vec2 focus;       // the middle of the ship, 0..1
varying float magnified;  // how much the ship is to be

const vec2 seen = vec2(800.0, 600.0) / 1024.0;  // of a target
const vec2 aspect = vec2(4.0 / 3.0, 1.0);       // of the screen

// Beams are magenta and pass for solid where many of them cross.
float solidAt(vec2 at) {
    vec4 color = texture2D(picture, at * seen);
    float beam = max(min(color.r, color.b) - color.g, 0.0);
    return smoothstep(0.5, 0.95, color.a) * (1.0 - smoothstep(0.05, 0.35, beam));
}

void main() {
    gl_Position = ftransform();
    gl_FrontColor = gl_Color;
    gl_TexCoord[0] = gl_MultiTexCoord0;
    place = gl_Vertex.xy * 0.5 + 0.5;

    // Two neighbours that are solid: one alone is the core of a beam.
    vec3 middle = vec3(0.5, 0.5, 1.0) * 0.05;
    float moment = 0.0;
    for (int row = 0; row < 28; row++) {
        float before = 0.0;
        for (int column = 0; column < 40; column++) {
            vec2 at = (vec2(float(column), float(row)) + 0.5) / vec2(40.0, 28.0);
            float here = solidAt(at), solid = here * before;
            at.x -= 0.5 / 40.0;
            middle += solid * vec3(at, 1.0);
            moment += solid * dot(at * aspect, at * aspect);
            before = here;
        }
    }
    // Then finely round there, since a far ship is few of those samples.
    vec2 first = middle.xy / middle.z;
    float spread = sqrt(max(moment / middle.z - dot(first * aspect, first * aspect), 0.0001));
    middle = vec3(first, 1.0) * 0.05;
    for (int row = -8; row <= 8; row++) {
        float before = 0.0;
        for (int column = -8; column <= 8; column++) {
            vec2 at = clamp(first + vec2(float(column), float(row)) * 0.03 / aspect, 0.0, 1.0);
            float here = solidAt(at);
            middle += here * before * vec3(at.x - 0.015 / aspect.x, at.y, 1.0);
            before = here;
        }
    }
    focus = clamp(middle.xy / middle.z, 0.15, 0.85);
    magnified = clamp(sqrt(0.17 / spread), 0.75, 1.8);
}
