#version 110
// The view of the camera that circles the probes, so that what is painted behind them turns with them. "time" and
// "time2" are two clocks of different speed; the second tells where the camera stands, but for the first half second,
// over which it runs backwards: there the turn starts from rest.

uniform float time;   // the sine of 0.3 times the seconds
uniform float time2;  // the cosine of 0.2 times the seconds

varying vec2 place;  // 0..1 across the screen
varying vec3 eye;    // from the middle of the world that lies below the probes
varying vec3 ray;    // from there through this place
varying vec2 sky;    // in the noise, what is far away,
varying vec2 drift;  // and what drifts past the eye

const vec3 world = vec3(0.0, -2120.0, 0.0);  // its middle; the probes' own is the origin
const float pi = 3.14159265;

void main() {
    gl_Position = ftransform();
    gl_FrontColor = gl_Color;
    place = gl_Vertex.xy * 0.5 + 0.5;

    float since = 5.0 * (pi - acos(clamp(time2, -1.0, 1.0)));  // since second 25 pi
    float seconds = 25.0 * pi + sqrt(since * since + 0.3);
    float turn = 0.8 * seconds;
    vec3 stand = vec3(140.0 * sin(turn), 130.0 + 10.0 * sin(0.5 * seconds), 180.0 * cos(turn));
    vec3 right = normalize(vec3(stand.z, 0.0, -stand.x)), ahead = -normalize(stand);
    eye = stand - world;
    vec2 at = (place - 0.5) * vec2(4.0 / 3.0, 1.0);
    ray = 2.0 * (at.x * right + at.y * cross(right, ahead)) + ahead;

    vec2 square = 0.75 * at + vec2(0.5, 0.375);
    sky = vec2(0.16 * turn, 0.2 * time2) + 0.55 * square;
    drift = 1.9 * (vec2(0.27 * turn, 0.35 * time) + 0.8 * square);
}
