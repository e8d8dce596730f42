#version 110
// The view of the camera that circles the probes, so that what is painted behind them turns with them. "time" and
// "time2" are two clocks of different speed; the second tells where the camera stands, but for the first half second,
// over which it runs backwards: there the turn starts from rest.

uniform float time;   // the sine of 0.3 times the seconds
uniform float time2;  // the cosine of 0.2 times the seconds

varying vec2 place;  // 0..1 across the screen
varying vec3 eye;    // in the probes' own space; ahead of it lies their middle
varying vec3 right;  // for the eye, and upwards, both half a screen's height long at a distance of 1
varying vec3 upright;
varying vec2 far;   // in the noise, the screen's lower left corner: of what is far away,
varying vec2 near;  // and of what drifts past the eye

const float pi = 3.14159265;

void main() {
    gl_Position = ftransform();
    gl_FrontColor = gl_Color;
    place = gl_Vertex.xy * 0.5 + 0.5;

    float since = 5.0 * (pi - acos(clamp(time2, -1.0, 1.0)));  // since second 25 pi
    float seconds = 25.0 * pi + sqrt(since * since + 0.3);
    float turn = 0.8 * seconds;
    eye = vec3(140.0 * sin(turn), 130.0 + 10.0 * sin(0.5 * seconds), 180.0 * cos(turn));
    right = normalize(vec3(eye.z, 0.0, -eye.x));
    upright = cross(right, -normalize(eye));

    far = vec2(0.16 * turn, 0.2 * time2);
    near = vec2(0.27 * turn, 0.35 * time);
}
