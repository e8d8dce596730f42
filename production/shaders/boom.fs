#version 110
// A shock wave: a front that throws the picture outward, splits its colours and glints, and a wake behind it that
// sinks, rings once and dies away. It starts in the middle when "scale" is 0.3 and runs outward as "scale" falls to 0,
// where the picture is left alone. A "scale" that stands still holds a ring of glass at its place.
//
// In the hall "distort" counts seconds, and when the last card goes it has values that it has nowhere else: there the
// hall turns out to be what the robot's screen shows. It shrinks to that, goes out, and leaves a face, which falls
// asleep as the program fades the picture, and at the last beat, when nothing else is seen, looks once more. The fade
// begins with the last card's end, so that what is told first is told brightest, and the viewer comes as near to
// the sleeper as the light goes.

uniform sampler2D picture;
uniform vec2 center;    // of the rings, 0..1 across what is seen
uniform float distort;  // how tight the wave is: 1 a wide lens, 54 a blade; 0 leaves the picture alone
uniform float scale;    // how far the wave has still to go, 0.3 to 0

varying vec2 place;

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen: rings are round on it
const float strength = 0.8;                // of the push at the front

// Of the end, in seconds as "distort" counts them, from one before the hall's shocks on: the last card's last beat, when
// it has gone, a moment before the last look, and one when all is over.
const float lastCardsBeat = 42.805;
const float lastCard = 43.156;
const float lastLook = 51.4;
const float allOver = 52.0;
// In seconds from the last card on: the screen goes out before a bar, and on beats the eyes open, look aside, blink,
// and begin to fall shut.
const float switchedOff = 0.53;
const float eyesOpen = 0.60;
const float looksAside = 1.08;
const float blinks = 1.55;
const float fallsAsleep = 2.03;
const vec2 glass = vec2(4.0 / 3.0, 1.0);  // half the screen
const float glassCorner = 0.26;
const float faceSize = 1.22;
// Lights, of which the glow makes two to three times as much, and then the fade so much less of all that is over 1:
// with more green the face would fade to olive.
const vec3 orange = vec3(0.62, 0.205, 0.012);
const vec3 hot = vec3(0.56, 0.235, 0.06);
const vec3 ivory = vec3(0.36, 0.325, 0.275);
const vec3 petrol = vec3(0.03, 0.10, 0.13);

// Texture coordinates of a place, which stays half a pixel inside of what is seen. The quad is square to the screen,
// so each axis has a slope of its own; it is turned over where a picture is stored top row first.
vec2 coordinates(vec2 target, vec2 slope, vec2 margin) {
    return gl_TexCoord[0].st + (clamp(target, margin, 1.0 - margin) - place) * slope;
}

// --- The end. Seconds count from the last card on; a length of 1 is half the height of the robot's screen. ---

float inside(float outside, float pixel) { return 1.0 - smoothstep(-pixel, pixel, outside); }

float roundBox(vec2 p, vec2 size, float corner) {
    vec2 beyond = abs(p) - size + corner;
    return length(max(beyond, 0.0)) + min(max(beyond.x, beyond.y), 0.0) - corner;
}

// From an arc that hangs between two ends at the height 0, its middle that much lower.
float hangingArc(vec2 p, float halfWidth, float sag) {
    float radius = 0.5 * (halfWidth * halfWidth / sag + sag), up = radius - sag;
    vec2 down = vec2(abs(p.x), up - p.y);
    return down.x * up < down.y * halfWidth ? abs(length(down) - radius) : length(vec2(down.x - halfWidth, p.y));
}

// How far a place is outside of an eye from open (1) to closed (0), its lid sinking.
float outsideEye(vec2 p, float open, vec2 gaze) {
    float r = length(p);
    float disc = max(r - 0.31, 0.10 - length(p - gaze)), ring = abs(r - 0.385) - 0.022;
    float lashes = hangingArc(p - vec2(0.0, -0.03), 0.30, 0.16) - 0.055;
    return open > 0.2 ? max(min(disc, ring), p.y - mix(-0.40, 0.46, open)) : lashes;
}

// Of a face. `bend`: how far the mouth has become a smile, from a line all across the screen.
float outsideFace(vec2 p, vec2 open, vec2 gaze, float bend) {
    float mouth = hangingArc(p - vec2(0.0, -0.25 * bend), mix(1.25, 0.545, bend), mix(0.02, 0.215, bend));
    float side = p.x < 0.0 ? -1.0 : 1.0;
    float eye = outsideEye(p - vec2(0.54 * side, 0.235), side < 0.0 ? open.x : open.y, gaze);
    return min(mouth - mix(0.022, 0.062, bend), bend < 0.4 ? 1.0 : eye);
}

// The head that the screen sits in: an ivory shell, brightest above, with a line of light along its upper edge, and
// in it the screen's black frame.
vec3 headAt(vec2 p, vec3 glow, float pixel) {
    vec2 side = vec2(abs(p.x), p.y);
    vec3 color = petrol * (0.4 + 0.6 * side.x) * inside(max(side.x - 0.62, p.y + 1.3), pixel);  // the neck
    // Aerials and ears.
    vec2 at = side - vec2(0.52, 1.30);
    color += petrol * inside(max(abs(at.x - 0.7 * at.y) - 0.04, at.y - 0.42), pixel);
    color += 1.3 * orange * inside(length(at - vec2(0.30, 0.44)) - 0.10, pixel);
    float ear = roundBox(side - vec2(1.76, -0.05), vec2(0.18, 0.42), 0.12);
    color = mix(color, orange * (0.40 + 0.5 * p.y), inside(ear, pixel));
    float shell = roundBox(p, vec2(1.70, 1.34), 0.48), frame = roundBox(p, vec2(1.47, 1.135), 0.36);
    float rim = clamp(1.0 + shell / 0.22, 0.0, 1.0);
    float light = (0.60 + 0.26 * p.y - 0.16 * p.x) * (1.0 - 0.85 * rim * rim);
    light += 0.9 * inside(abs(shell + 0.085) - 0.014, pixel) * max(0.6 * p.y - 0.3 * p.x, 0.0);
    color = mix(color, ivory * light + 1.5 * glow * smoothstep(0.10, 0.0, frame), inside(shell, pixel));
    vec3 rubber = vec3(0.003) + glow * smoothstep(0.12, 0.0, roundBox(p, glass, glassCorner));
    return mix(color, rubber, inside(frame, pixel));
}

// Of the end: where the screen is for a place.
struct Screen {
    vec2 at;
    float zoom, back;
};

Screen screenFor(float seconds, bool look) {
    // The viewer steps back from the screen, and comes near again as its light goes.
    float back = smoothstep(lastCardsBeat - lastCard, 0.32, seconds), nearer = smoothstep(eyesOpen, 5.2, seconds);
    float zoom = look ? 1.08 : mix(1.0, 0.58, back) + 0.16 * nearer;
    float tilt = look ? -0.05 : 0.05 * smoothstep(eyesOpen - 0.1, eyesOpen + 0.4, seconds) -
                                    0.11 * smoothstep(fallsAsleep, fallsAsleep + 0.95, seconds);
    vec2 p = (place - 0.5 + vec2(0.0, look ? 0.0 : 0.035 * back)) * 2.0 * aspect / zoom;
    return Screen(p + tilt * vec2(p.y, -p.x), zoom, back);
}

// `shown`: what the hall has there.
vec3 endAt(float seconds, bool look, Screen screen, vec3 shown, float pixel) {
    vec2 p = screen.at;
    float asleep = look ? 0.0 : smoothstep(fallsAsleep, fallsAsleep + 0.95, seconds);
    // It goes out as an old tube does, and its last line becomes the smile.
    float tube = 1.0 - smoothstep(switchedOff - 0.18, switchedOff, seconds);
    shown *= inside(abs(p.y) - 1.2 * tube, max(pixel, 0.1 * tube)) * step(0.001, tube);
    float bend = smoothstep(switchedOff - 0.02, eyesOpen, seconds);
    float open = step(switchedOff, seconds) * smoothstep(0.04, 0.14, abs(seconds - blinks)) * (1.0 - asleep);
    float aside = step(looksAside, seconds) * step(seconds, blinks);
    vec2 gaze = look ? vec2(0.02, 0.06) : mix(vec2(-0.09, 0.11), vec2(0.11, 0.09), aside);
    // On beats it swells, from one to the next less.
    float size = look ? 1.0 : faceSize * (1.0 + 0.35 * scale * bend * (1.0 - asleep));
    vec2 eyes = look ? vec2(1.0, 0.0) : vec2(open);
    float face = outsideFace(p / size, eyes, gaze, bend);
    float ink = inside(face, pixel / size) * step(switchedOff - 0.06, seconds);
    shown += mix(hot, orange, smoothstep(-0.12, 0.0, face)) * (ink * (0.90 + 0.10 * sin(p.y * 201.0)));
    float onGlass = inside(roundBox(p, glass, glassCorner * screen.back), pixel);
    return mix(headAt(p, mix(vec3(0.05, 0.04, 0.05), 0.16 * orange, bend) * screen.back, pixel), shown, onGlass);
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
    vec2 withinEdges = smoothstep(0.0, 0.15, min(place, 1.0 - place));
    vec2 shift = -height * outward / aspect * withinEdges;
    float hard = smoothstep(8.0, 50.0, distort);
    float edge = exp(-2.5 * x * x) * smoothstep(0.0, 0.12, radius);
    vec2 split = -(mix(0.07, 0.25, hard) * abs(height) + 0.010 * hard * pulse * edge) * outward / aspect * withinEdges;

    float seconds = distort - lastCard;
    bool atTheEnd = distort > lastCardsBeat && distort < allOver, look = distort > lastLook;
    Screen screen = screenFor(seconds, look);
    vec2 at = place + shift;
    if (atTheEnd) {
        at = 0.5 + 0.5 * screen.at / glass;
        split = margin * vec2(0.4, 0.2) / screen.zoom;  // edges would turn to stairs where the hall is small
    }
    // Looked up at every pixel: which level of a picture is meant is not known where neighbours don't look.
    vec4 color = texture2D(picture, coordinates(at, slope, margin));
    vec3 red = texture2D(picture, coordinates(at - 2.0 * split, slope, margin)).rgb;
    vec3 amber = texture2D(picture, coordinates(at - split, slope, margin)).rgb;
    vec3 azure = texture2D(picture, coordinates(at + split, slope, margin)).rgb;
    vec3 blue = texture2D(picture, coordinates(at + 2.0 * split, slope, margin)).rgb;
    if (atTheEnd) {
        vec3 shown = 0.2 * (color.rgb + red + amber + azure + blue);
        gl_FragColor = vec4(endAt(seconds, look, screen, shown, 4.0 * margin.y / screen.zoom), 1.0) * gl_Color;
        return;
    }
    if (dot(split, split) > 2e-8) {  // a quarter of a pixel from end to end
        color.rgb = vec3(0.5 * red.r + 0.35 * amber.r + 0.15 * color.r,
                         0.25 * amber.g + 0.5 * color.g + 0.25 * azure.g,
                         0.15 * color.b + 0.35 * azure.b + 0.5 * blue.b);
    }

    // The edge shines, and behind it the air is thin.
    float hollow = ahead < 0.0 ? wake * (1.0 - cos(min(-x, 6.2832))) : 0.0;
    color.rgb *= 1.0 + pulse * (0.10 * edge - 0.36 * hollow);
    gl_FragColor = color * gl_Color;
}
