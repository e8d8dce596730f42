#version 110
// Two layers of smoke that turn against each other around the middle of the disc and slide with its height. The disc is
// drawn down to a funnel, or it would be a line for a viewer at its own height; near the ground it lies flat.

uniform float time;   // 0.01 of the disc's height
uniform float time2;  // radians that the layers have turned

varying vec2 disc;  // -1..1 around the middle
varying vec2 wide;  // coordinates in the noise
varying vec2 fine;
varying vec3 fromEye;
varying float behind;  // the middle, from the eye

vec2 turned(vec2 point, float angle) {
    float c = cos(angle);
    float s = sin(angle);
    return vec2(c * point.x - s * point.y, s * point.x + c * point.y);
}

void main() {
    vec4 point = gl_Vertex;
    point.y -= 26.0 * min(0.25 + 2.5 * time, 1.0) * (1.0 - length(gl_MultiTexCoord0.st));
    gl_Position = gl_ModelViewProjectionMatrix * point;
    gl_FrontColor = gl_Color;
    disc = gl_MultiTexCoord0.st;
    wide = turned(disc, time2) * 0.35 + vec2(0.0, time);
    fromEye = vec3(gl_ModelViewMatrix * point);
    behind = length(fromEye) - length(vec3(gl_ModelViewMatrix * vec4(0.0, 100.0 * time, 0.0, 1.0)));
    fine = turned(disc, -0.6 * time2) * 0.8 - vec2(time, 0.0);
}
