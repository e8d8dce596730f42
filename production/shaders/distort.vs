#version 110
// What "distort" knows of the whole picture: where the ship is, which alone is solid in it, how much of it there is, and
// how the iris about it is cut.

uniform sampler2D picture;
uniform float time;

varying vec2 place;       // 0..1 across what is seen
varying vec2 focus;       // the middle of the ship, 0..1
varying float magnified;  // how much the ship is to be
varying float lightness;  // of the ship, on the whole
varying vec4 blades[5];   // a side of the opening each: which way it faces, how far out, and how far its blade is turned

const vec2 seen = vec2(800.0, 600.0) / 1024.0;  // of a target
const vec2 aspect = vec2(4.0 / 3.0, 1.0);       // of the screen

// Beams are magenta and pass for solid where many of them cross.
float solidAt(vec2 at) {
    vec4 color = texture2D(picture, at * seen);
    float beam = max(min(color.r, color.b) - color.g, 0.0);
    return smoothstep(0.5, 0.95, color.a) * (1.0 - smoothstep(0.05, 0.35, beam));
}

// The remainder of a whole number. Halves, since a quotient may fall short of the whole that it should be.
float within289(float number) { return number - 289.0 * floor((number + 0.5) / 289.0); }

// 0 to 1, of a whole number: in whole numbers throughout, which are the same on every card. Sines are not.
float random(float seed) {
    float first = within289(seed), second = within289((34.0 * first + 1.0) * first + 7.0);
    return within289((34.0 * second + 1.0) * second) / 289.0;
}

// The iris is another on either side of 0, where it stands open. Near 1 it is struck: it is one of three, and "time"
// passes the marks between them on beats.
void cutBlades(float near) {
    bool struck = abs(time) > 0.5;
    float which = struck ? 2.0 + step(0.9245, time) + step(1.054, time) : step(0.0, time);
    float closed = struck ? 1.0 : smoothstep(0.0, 0.03, abs(time));
    // A near ship takes a larger one, the nearest more where no beat strikes.
    float opening = mix(1.5, 0.34, closed) * mix(1.35, 1.0, smoothstep(1.0, 1.3, magnified));
    if (!struck) opening *= mix(1.0, 1.33, near);
    float turn = 6.2831853 * random(which) + (struck ? 5.0 * (time - 1.0) : 9.0 * time);
    for (int i = 0; i < 5; i++) {
        float seed = 11.0 * which + 3.0 * float(i) + 5.0;
        float angle = turn + 1.2566371 * (float(i) + 0.5 * random(seed));
        float swing = (struck ? 1.4 : closed) * (0.25 + 0.35 * random(seed + 1.0));
        blades[i] = vec4(cos(angle), sin(angle), opening * (0.9 + 0.25 * random(seed + 2.0)),
                         mod(float(i), 2.0) < 0.5 ? swing : -swing);
    }
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
    lightness = 0.3 * 0.05;
    for (int row = -8; row <= 8; row++) {
        float before = 0.0;
        for (int column = -8; column <= 8; column++) {
            vec2 at = clamp(first + vec2(float(column), float(row)) * 0.03 / aspect, 0.0, 1.0);
            float here = solidAt(at);
            middle += here * before * vec3(at.x - 0.015 / aspect.x, at.y, 1.0);
            lightness += here * before * texture2D(picture, at * seen).g;
            before = here;
        }
    }
    lightness = max(lightness / middle.z, 0.34);
    focus = clamp(middle.xy / middle.z, 0.15, 0.85);
    float far = sqrt(0.17 / spread);
    magnified = clamp(far, 1.0, 1.8);
    cutBlades(1.0 - smoothstep(0.7, 0.85, far));
}
