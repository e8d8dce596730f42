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
// In seconds from the last card on: the screen goes out, between two beats, and on beats the eyes open, look aside,
// blink, and begin to fall shut.
const float switchedOff = 0.84;
const float eyesOpen = 1.08;
const float looksAside = 1.55;
const float blinks = 2.03;
const float fallsAsleep = 2.51;
const vec2 glass = vec2(4.0 / 3.0, 1.0);  // half the screen
const float glassCorner = 0.26;
const float faceSize = 1.22;
// Lights, of which the glow makes two to three times as much.
const vec3 gold = vec3(0.51, 0.35, 0.175);
const vec3 pale = vec3(0.52, 0.325, 0.22);  // on what is amber
const vec3 amber = vec3(0.62, 0.25, 0.05);
const vec3 cold = vec3(0.20, 0.32, 0.46);
const vec3 steel = vec3(0.40, 0.50, 0.60);

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

// Which way a box's edge looks that is nearest.
vec2 outOfBox(vec2 p, vec2 size, float corner) {
    vec2 beyond = abs(p) - size + corner, way = max(beyond, 0.0);
    if (way.x + way.y <= 0.0) way = beyond.x > beyond.y ? vec2(1.0, 0.0) : vec2(0.0, 1.0);
    return normalize(way) * sign(p);
}

float rod(vec2 p, vec2 from, vec2 to) {
    vec2 along = to - from;
    return length(p - from - along * clamp(dot(p - from, along) / dot(along, along), 0.0, 1.0));
}

// From an arc that hangs between two ends at the height 0, `angle` radians to each side.
float hangingArc(vec2 p, float halfWidth, float angle) {
    float radius = halfWidth / sin(angle);
    vec2 down = vec2(abs(p.x), radius * cos(angle) - p.y);
    return atan(down.x, down.y) < angle ? abs(length(down) - radius)
                                        : length(down - radius * vec2(sin(angle), cos(angle)));
}

// An eye from open (1) to closed (0), its lid sinking; hot in its middle.
float eyeInk(vec2 p, float open, vec2 gaze, float pixel) {
    float r = length(p);
    float disc = inside(r - 0.29, pixel) * mix(1.0, 0.80, smoothstep(0.10, 0.29, r));
    disc *= 1.0 - inside(length(p - gaze) - 0.085, pixel);
    float ring = 0.34 * smoothstep(0.3, 0.6, open) * inside(abs(r - 0.385) - 0.024, pixel);
    float underLid = inside(p.y - mix(-0.34, 0.46, open) + 0.5 * p.x * p.x, pixel);
    float lashes = inside(hangingArc(p - vec2(0.0, -0.03), 0.30, 0.95) - 0.05, pixel) *
                   (1.0 - smoothstep(0.12, 0.30, open));
    return max(max(disc, ring) * underLid, 1.3 * lashes);
}

// `bend`: how far the mouth has become a smile, from a line all across the screen.
float faceInk(vec2 p, vec2 open, vec2 gaze, float bend, float pixel) {
    float mouth = inside(hangingArc(p - vec2(0.0, -0.25 * bend), mix(1.25, 0.545, bend), mix(0.02, 0.74, bend)) -
                             mix(0.022, 0.058, bend), pixel);
    float side = p.x < 0.0 ? -1.0 : 1.0;
    float eyes = eyeInk(p - vec2(0.54 * side, 0.235), side < 0.0 ? open.x : open.y, gaze, pixel);
    return max(1.3 * mouth, eyes * smoothstep(0.3, 0.5, bend));
}

// The robot's metal where the light of a screen is all there is, by how its surface leans aside (x to the right, y up,
// 1 edge on): dark, with a tall window of two panes on the right, an orange strip on the left and a cold one from
// above, their edges hard.
float pane(float at, float from, float to) { return smoothstep(0.0, 0.03, at - from) * smoothstep(0.0, 0.03, to - at); }
vec3 metalAt(vec2 lean) {
    float key = (pane(lean.x, 0.42, 0.66) + pane(lean.x, 0.70, 0.78)) * mix(0.35, 1.0, smoothstep(-0.75, 0.35, lean.y));
    vec3 color = vec3(0.008, 0.010, 0.014) + cold * (0.16 * smoothstep(-0.6, 1.0, lean.y + 0.5 * lean.x));
    color += steel * (0.75 * key) + amber * (0.60 * pane(lean.x, -0.86, -0.62)) +
             cold * (0.80 * pane(lean.y, 0.62, 0.80) * pane(lean.x, -0.52, 0.36));
    return color + cold * (0.5 * smoothstep(0.90, 1.0, length(lean)));
}

// Of a box whose edges are round over a breadth.
vec3 boxMetal(vec2 p, vec2 size, float corner, float breadth) {
    float d = roundBox(p, size, corner);
    float across = clamp(1.0 + d / breadth, 0.0, 1.0);
    return metalAt(outOfBox(p, size, corner) * sin(1.5708 * across));
}

vec3 headAt(vec2 p, vec3 glow, float pixel) {
    vec2 side = vec2(abs(p.x), p.y);
    vec3 color = vec3(0.0);
    // The chest, its shoulders painted, and the neck.
    vec2 at = p - vec2(0.0, -2.28), chest = vec2(1.70, 0.72);
    color = mix(color, boxMetal(at, chest, 0.5, 0.30), inside(roundBox(at, chest, 0.5), pixel));
    at = vec2(side.x - 1.62, p.y + 2.22);
    color = mix(color, amber * (0.10 + 0.5 * pane(length(at), 0.50, 0.56)), inside(length(at) - 0.62, pixel));
    at = p - vec2(0.0, -1.45);
    float ribs = 0.5 + 0.5 * cos(at.y * 60.0);
    color = mix(color, metalAt(vec2(at.x / 0.44, 0.0)) * (0.15 + 0.6 * ribs),
                inside(roundBox(at, vec2(0.44, 0.20), 0.03), pixel));
    // Aerials and ears.
    at = side - vec2(0.50, 1.30);
    color = mix(color, metalAt(vec2(at.x / 0.16, 0.3)), inside(roundBox(at, vec2(0.15, 0.08), 0.05), pixel));
    color = mix(color, 0.9 * cold, inside(rod(side, vec2(0.52, 1.34), vec2(0.80, 1.70)) - 0.024, pixel));
    float tip = length(side - vec2(0.82, 1.74));
    color = mix(color, mix(vec3(0.9, 0.62, 0.28), amber, smoothstep(0.0, 0.1, tip)), inside(tip - 0.095, pixel));
    at = vec2(p.x - 1.74 * sign(p.x), p.y + 0.05);
    vec2 ear = vec2(0.16, 0.40);
    vec3 earMetal = boxMetal(at, ear, 0.12, 0.14) + amber * pane(abs(at.x - 0.04 * sign(p.x)), -1.0, 0.025);
    color = mix(color, earMetal, inside(roundBox(at, ear, 0.12), pixel));
    // The shell, and sunk into it the screen's frame with its lamp.
    vec2 shell = vec2(1.70, 1.34), frame = vec2(1.47, 1.135);
    color = mix(color, boxMetal(p, shell, 0.48, 0.26), inside(roundBox(p, shell, 0.48), pixel));
    float d = roundBox(p, frame, 0.36);
    vec3 rubber = vec3(0.003) + glow * exp(-max(roundBox(p, glass, glassCorner), 0.0) / 0.035);
    rubber += 0.35 * cold * pane(d, -0.035, -0.005) * (0.5 - 0.5 * outOfBox(p, frame, 0.36).y);
    color = mix(color, vec3(0.0), inside(abs(d) - 0.012, pixel));
    color = mix(color, rubber, inside(d, pixel));
    return color + amber * inside(length(p - vec2(1.16, -1.065)) - 0.028, pixel);
}

vec3 endAt(float seconds, vec2 slope, vec2 margin) {
    bool look = seconds > lastLook - lastCard;
    // The viewer steps back from the screen, and comes near again as its light goes.
    float back = smoothstep(lastCardsBeat - lastCard, 0.35, seconds);
    float nearer = look ? 0.0 : smoothstep(eyesOpen, 5.2, seconds);
    float zoom = look ? 1.08 : mix(mix(1.0, 0.58, back), 0.86, nearer);
    float asleep = smoothstep(fallsAsleep, fallsAsleep + 0.95, seconds);
    float tilt = look ? -0.05 : 0.05 * smoothstep(eyesOpen - 0.2, eyesOpen + 0.5, seconds) - 0.11 * asleep;
    vec2 p = (place - 0.5 + vec2(0.0, look ? 0.0 : 0.035 * back * (1.0 - nearer))) * 2.0 * aspect / zoom;
    p = vec2(p.x * cos(tilt) + p.y * sin(tilt), p.y * cos(tilt) - p.x * sin(tilt));
    float pixel = abs(dFdy(place.y)) * 2.0 / zoom;

    vec3 shown = vec3(0.0);  // always between texels: edges would turn to stairs where the hall is small
    vec2 seen = 0.5 + 0.5 * p / glass;
    for (int i = 0; i < 4; i++) {
        vec2 aside = pixel * vec2(i < 2 ? -0.125 : 0.125, i == 0 || i == 2 ? -0.125 : 0.125);
        shown += 0.25 * texture2D(picture, coordinates(seen + aside, slope, margin), -4.0).rgb;
    }
    // It goes out as an old tube does, and its last line becomes the smile.
    float tube = 1.0 - smoothstep(switchedOff - 0.22, switchedOff, seconds);
    shown *= inside(abs(p.y) - 1.2 * tube, max(pixel, 0.1 * tube)) * step(0.001, tube) * mix(1.6, 1.0, tube);
    float bend = smoothstep(switchedOff - 0.02, eyesOpen, seconds);
    float open = smoothstep(eyesOpen - 0.10, eyesOpen + 0.08, seconds) *
                 smoothstep(0.04, 0.14, abs(seconds - blinks)) * (1.0 - asleep);
    float aside = smoothstep(looksAside, looksAside + 0.12, seconds) * (1.0 - smoothstep(blinks, blinks + 0.02, seconds));
    vec2 gaze = look ? vec2(0.02, 0.06) : mix(vec2(-0.09, 0.11), vec2(0.11, 0.09), aside);
    float size = look ? 1.0 : faceSize;
    float ink = faceInk(p / size, look ? vec2(1.0, 0.0) : vec2(open), gaze, look ? 1.0 : bend, pixel / size) *
                smoothstep(switchedOff - 0.10, switchedOff, seconds) * mix(1.0, 0.68, nearer);  // of broad lines
    float lines = (look ? 0.76 : 0.88) + 0.12 * cos(p.y * 201.0);
    shown += cold * (0.020 * (1.0 - tube) * pane(p.x + 0.5 * p.y, -1.25, -0.75));
    if (!look) shown += mix(amber, gold, 0.25) * (0.40 * asleep * exp(-0.7 * dot(p, p)));  // a light for the night
    shown += mix(amber, look ? gold : mix(gold, pale, asleep), smoothstep(0.3, 0.7, ink)) * (ink * lines);

    float onGlass = inside(roundBox(p, glass, glassCorner * back), pixel);
    vec3 glow = mix(vec3(0.10, 0.08, 0.10), 0.30 * amber, smoothstep(switchedOff - 0.2, eyesOpen, seconds));
    return mix(headAt(p, glow * back, pixel) * (1.0 + 0.2 * nearer), shown, onGlass);
}

void main() {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = 0.5 * vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));
    if (distort > lastCardsBeat && distort < allOver) {
        gl_FragColor = vec4(endAt(distort - lastCard, slope, margin), 1.0) * gl_Color;
        return;
    }

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
