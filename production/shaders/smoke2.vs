#version 110
// Two layers of smoke that drift across the screen, the same on a quad of any size.

uniform float time;   // -1..1: where the drift stands, across
uniform float time2;  // -1..1: and along

varying vec2 place;  // 0..1 across the screen
varying vec2 wide;   // coordinates in the noise
varying vec2 fine;

void main() {
    gl_Position = ftransform();
    gl_FrontColor = gl_Color;
    place = gl_Vertex.xy * 0.5 + 0.5;
    vec2 square = place * vec2(1.0, 0.75);
    wide = square * 0.55 + vec2(0.30 * time, 0.22 * time2);
    fine = square * 1.3 + vec2(-0.25 * time2, 0.35 * time);
}
