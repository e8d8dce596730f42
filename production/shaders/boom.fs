#version 110
// A shock wave: a front that throws the picture outward, splits its colours and glints, and a wake behind it that
// sinks, rings once and dies away. It starts in the middle when "scale" is 0.3 and runs outward as "scale" falls to 0,
// where the picture is left alone. A "scale" that stands still holds a ring of glass at its place.
//
// In the hall "distort" counts seconds, and when the last card goes it has values that it has nowhere else: there the
// hall turns out to be what the robot's screen shows. It shrinks to that, goes out, and leaves a face. The viewer steps
// back: the robot sits by the sea at night, sees a streak of light pass, and falls asleep as the program fades the
// picture. At the last beat, when nothing else is seen, it looks once more. What is told first is told brightest.

uniform sampler2D picture;
uniform vec2 center;    // of the rings, 0..1 across what is seen
uniform float distort;  // how tight the wave is: 1 a wide lens, 54 a blade; 0 leaves the picture alone
uniform float scale;    // how far the wave has still to go, 0.3 to 0

varying vec2 place;

// Behind the greetings, which write it into the frame's alpha, the picture is dimmed; the scene is told by its lamp,
// which stands like this for no other. What they have in the middle of their upper edge dims all of it.
const vec3 greetingsLamp = vec3(200.0, -150.0, 150.0);
const vec3 violetGlass = vec3(0.45, 0.60, 0.05);  // what it swallows: burnt white would be grey behind it

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen: rings are round on it
const float strength = 0.8;                // of the push at the front

// Of the end, in seconds as "distort" counts them, from one before the hall's shocks on: the last card's last beat, when
// it has gone, a moment before the last look, and one when all is over.
const float lastCardsBeat = 42.805;
const float lastCard = 43.156;
const float lastLook = 51.4;
const float allOver = 52.0;
// In seconds from the last card on: the screen goes out before a bar; on beats its eyes open, the viewer steps back into
// the night, a streak of light crosses it, and they fall shut.
const float switchedOff = 0.53;
const float eyesOpen = 0.60;
const float intoNight = 0.85;
const float streaks = 1.55;
const float fallsAsleep = 2.50;
const vec2 glass = vec2(4.0 / 3.0, 1.0);  // half the screen
const float glassCorner = 0.26;
const float faceSize = 1.22;
// Lights, of which the glow makes two to three times as much, and then the fade so much less of all that is over 1:
// what is to be seen longest is full in one channel and stays a colour, since what is full in all fades to grey.
const vec3 amber = vec3(0.62, 0.215, 0.012);
const vec3 hot = vec3(0.95, 0.56, 0.24);
const vec3 embers = vec3(0.95, 0.32, 0.06);
const vec3 gold = vec3(0.95, 0.26, 0.09);
const vec3 ivory = vec3(0.270, 0.206, 0.136);
const vec3 orange = vec3(0.34, 0.085, 0.012);
const vec3 brass = vec3(0.36, 0.165, 0.045);
const vec3 petrol = vec3(0.020, 0.075, 0.095);
const vec3 steel = vec3(0.030, 0.036, 0.050);
const vec3 zenith = vec3(0.010, 0.012, 0.055);
const vec3 horizon = vec3(0.060, 0.200, 0.340);
const vec3 moonlight = vec3(0.36, 0.47, 1.00);
// Places in the night, from the middle of the picture in halves of its height.
const float sea = -0.42;
const vec2 moon = vec2(0.84, 0.56);
const vec2 sleeper = vec2(0.0, -0.14);  // in the middle of the flash on beats
// The lamp over the viewer's left shoulder, and half-way from it to him.
const vec3 lamp = vec3(-0.45, 0.65, 0.61);
const vec3 halfway = vec3(-0.251, 0.362, 0.897);

// Texture coordinates of a place, which stays half a pixel inside of what is seen. The quad is square to the screen,
// so each axis has a slope of its own; it is turned over where a picture is stored top row first.
vec2 coordinates(vec2 target, vec2 slope, vec2 margin) {
    return gl_TexCoord[0].st + (clamp(target, margin, 1.0 - margin) - place) * slope;
}

// --- The end. Seconds count from the last card on; a length of 1 is half the height of the robot's screen. ---

float inside(float outside, float pixel) { return clamp(0.5 - outside * (0.5 / pixel), 0.0, 1.0); }

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
    float disc = max(r - 0.31, 0.17 - length(p - gaze)), ring = abs(r - 0.385) - 0.022;
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

// Of a rounded box: which way leads out of it, and how far outside of it a place is.
vec3 outOf(vec2 p, vec2 size, float corner) {
    vec2 beyond = abs(p) - size + corner, over = max(beyond, 0.0);
    float far = length(over), most = max(beyond.x, beyond.y);
    vec2 way = most > 0.0 ? over / max(far, 0.0001) : vec2(step(beyond.y, beyond.x), step(beyond.x, beyond.y));
    return vec3(way * vec2(p.x < 0.0 ? -1.0 : 1.0, p.y < 0.0 ? -1.0 : 1.0), far + min(most, 0.0) - corner);
}

// What is seen at a place: its paint, how far it leans across and up (at most 1), and third how much it glints. It is
// lit at the end, once: software draws both ways of a branch, and every shock of the show pays for this one.
struct Surface {
    vec3 paint;
    vec3 lean;
    float outside;  // of all that was laid
};

void lay(inout Surface seen, vec3 paint, vec2 lean, float gloss, float outside, float pixel) {
    float share = inside(outside, pixel);
    seen.paint = mix(seen.paint, paint, share);
    seen.lean = mix(seen.lean, vec3(lean, gloss), share);
    seen.outside = min(seen.outside, outside);
}

// In the lamp, which is left behind as night comes, and in the moon's light from behind on the right.
vec3 lit(Surface seen, float dark) {
    vec2 lean = seen.lean.xy;
    float steep = dot(lean, lean);
    lean *= steep > 1.0 ? inversesqrt(steep) : 1.0;
    vec3 normal = vec3(lean, sqrt(max(1.0 - steep, 0.0)));
    float glint = max(dot(normal, halfway), 0.0);
    glint *= glint, glint *= glint, glint *= glint, glint *= glint, glint *= glint;
    float rim = clamp(2.0 * dot(lean, vec2(0.88, 0.36)) - 0.95, 0.0, 1.0);
    return (seen.paint * (0.05 + 0.95 * max(dot(normal, lamp), 0.0)) + seen.lean.z * glint * vec3(0.50, 0.46, 0.40)) *
               (1.0 - 0.8 * dark) +
           rim * mix(vec3(0.03, 0.20, 0.30), moonlight, dark);
}

// What is seen of the night: stars over the sea, the moon, its path on the water, and the streak of light.
vec3 nightAt(vec2 p, float seconds, float pixel) {
    float up = p.y - sea, depth = max(-up, 0.0);
    float high = min(abs(up), 1.0);
    vec3 seen = mix(horizon, zenith, high * (2.0 - high));
    // A star in every second cell, more of them small than great.
    vec2 q = p * 9.0 + 40.0, cell = floor(q);
    vec2 dice = fract(cell * vec2(0.3183, 0.3679));
    float chance = fract(19.0 * (dice.x + dice.y) * (dice.x + 7.3 * dice.y));
    float size = max(2.0 * fract(31.0 * chance) - 1.0, 0.0);
    vec2 from = q - cell - 0.15 - 0.7 * vec2(chance, fract(17.0 * chance));
    float star = clamp(3.0 - 3.0 * length(from) / (0.03 + 0.11 * size * size), 0.0, 1.0) * clamp(8.0 * up, 0.0, 1.0);
    vec2 m = p - moon;
    float light = inside(max(length(m) - 0.205, 0.190 - length(m - vec2(-0.095, 0.045))), pixel);
    // Ripples of the water; below it they catch its light, wider towards the viewer.
    float wet = step(up, 0.0), wave = 2.9 / (depth + 0.15) - 0.3 * seconds, which = floor(wave);
    float ripple = 1.0 - 4.0 * abs(fract(wave) - 0.5), width = (0.03 + 0.22 * depth) * (0.5 + fract(0.618 * which));
    float aside = abs(m.x + (0.02 + 0.10 * depth) * sin(2.4 * which)) / width;
    seen *= 1.0 - wet * (0.45 - 0.25 * max(ripple, 0.0));
    light = max(light, wet * clamp(4.0 * ripple + 0.6 - 3.4 * aside * aside, 0.0, 1.0));
    // The streak's track is an arc across the sky, which stays and thins.
    float gone = min(4.0 * (seconds - streaks) - 1.6, 1.8) - p.x, age = max(seconds - streaks - 0.9, 0.0);
    float arc = p.x + 0.9, thick = (0.032 - 0.006 * age) / (1.0 + gone * gone);
    float across = abs(p.y - 0.84 + 0.24 * arc * arc) - thick * clamp(gone / 0.12, 0.0, 1.0);
    light = max(light, max(step(0.0, gone) * inside(across, pixel), step(0.05, size) * star));
    return mix(seen, moonlight, light);
}

// The robot's head, in which the screen sits: an ivory box with round edges, on it a brass frame round the deep black
// one of the screen, ears, aerials and a cap. `rubber`: how far outside of the screen a place is; `glow`: what the
// screen throws on what is next to it; `behind`: what is seen behind it all.
vec3 headAt(vec2 p, float rubber, vec3 glow, vec3 behind, float dark, float pixel) {
    vec2 side = vec2(abs(p.x), p.y), hand = vec2(p.x < 0.0 ? -1.0 : 1.0, 1.0);
    // Shoulders, and the neck, a bellows.
    float ribs = sin(44.0 * p.y);
    Surface seen = Surface(vec3(0.0), vec3(0.0), 1.0);
    vec3 body = outOf(p + vec2(0.0, 4.3), vec2(2.15, 2.35), 1.1);
    lay(seen, ivory * 0.5, body.xy * clamp(1.0 + body.z / 0.5, 0.0, 1.0), 0.3, body.z, pixel);
    lay(seen, petrol * 1.6, vec2(1.5 * p.x, 0.5 * ribs), 0.4, max(side.x - 0.60, p.y + 1.4), pixel);
    // Aerials: a rod and a ball.
    vec2 foot = side - vec2(0.66, 1.34);
    float rod = foot.x - 0.35 * foot.y;
    lay(seen, steel * 3.0, vec2(24.0 * rod * hand.x, 0.0), 0.5, max(abs(rod) - 0.022, abs(foot.y - 0.18) - 0.22), pixel);
    vec2 ball = foot - vec2(0.14, 0.44);
    float fromBall = length(ball) - 0.095;
    lay(seen, amber * 0.9, ball * hand * 10.5, 1.0, fromBall, pixel);
    // A cap between them, and the ears: a dark wheel seen from its edge, an orange tyre on it.
    float cap = length(vec2(max(side.x - 0.36, 0.0), p.y - 1.37)) - 0.11;
    lay(seen, orange, vec2(0.0, 8.0 * (p.y - 1.37)), 0.8, cap, pixel);
    vec2 ear = side - vec2(1.86, -0.06);
    lay(seen, steel, vec2(0.2 * hand.x, 2.5 * ear.y), 0.5, max(abs(ear.x) - 0.26, abs(ear.y) - 0.38 + 0.6 * ear.x), pixel);
    lay(seen, orange, vec2(7.0 * (ear.x - 0.06) * hand.x, 2.0 * ear.y), 0.8,
        length(vec2(ear.x - 0.06, max(abs(ear.y) - 0.40, 0.0))) - 0.07, pixel);
    // The shell: its edge is a quarter round, its front all but flat.
    vec3 shell = outOf(p + vec2(0.0, 0.10), vec2(1.80, 1.46), 0.46);
    float edge = clamp(1.0 + shell.z / 0.26, 0.0, 1.0);
    // The frame lies on it and shades it.
    vec3 frame = outOf(p, vec2(1.52, 1.19), 0.38);
    float shade = 0.4 + 0.6 * clamp(11.0 * (frame.z + dot(frame.xy, vec2(-0.03, 0.04))), 0.0, 1.0);
    lay(seen, ivory * shade, shell.xy * edge * edge + vec2(0.20, 0.24) * p, 0.9, shell.z, pixel);
    // The frame is round, and falls to the screen.
    float across = clamp((frame.z + 0.055) / 0.055, -1.0, 1.0);
    lay(seen, brass, frame.xy * across, 1.0, frame.z, pixel);
    float pit = inside(frame.z + 0.11, pixel);
    lay(seen, steel * (0.1 + clamp(20.0 * rubber - 0.4, 0.0, 1.0)), -0.8 * frame.xy, 0.2, frame.z + 0.11, pixel);
    vec3 thrown = glow * mix(0.5 * clamp(-9.0 * frame.z, 0.0, 1.0), clamp(1.0 - 10.0 * rubber, 0.0, 1.0), pit);
    float aura = max(1.0 - 3.5 * max(fromBall, 0.0), 0.0) * step(0.0, min(fromBall, shell.z));
    vec3 lamps = amber * (0.25 * aura * aura * aura + dark * inside(fromBall, pixel));
    return mix(behind, lit(seen, dark), inside(seen.outside, pixel)) + thrown + lamps;
}

// The screen's glass bulges: what it shows does, and it throws back its own edge.
vec2 bulged(vec2 p, float back) { return p * (1.0 - back * (0.08 - 0.045 * dot(p, p))); }

vec3 onGlass(vec2 p, float edge) {
    float lip = max(1.0 - 18.0 * abs(edge + 0.035), 0.0) * clamp(0.3 + dot(p, vec2(-0.35, 0.54)), 0.0, 1.0);
    return vec3(0.16, 0.17, 0.18) * lip;
}

// Of the end: where the screen is for a place.
struct Screen {
    vec2 at;
    float zoom, back;
};

// How far the viewer has stepped back into the night.
float nightfall(float seconds, bool look) { return look ? 0.0 : smoothstep(intoNight, intoNight + 1.0, seconds); }

Screen screenFor(float seconds, bool look) {
    // The viewer steps back from the screen, and then from the head.
    float back = smoothstep(lastCardsBeat - lastCard, 0.32, seconds), dark = nightfall(seconds, look);
    float far = 0.285 + 0.12 * smoothstep(fallsAsleep, fallsAsleep + 3.6, seconds);  // and nearer as it falls asleep
    float zoom = look ? 0.53 : mix(mix(1.0, 0.52, back), far, dark);
    float tilt = look ? -0.05 : 0.05 * smoothstep(eyesOpen - 0.1, eyesOpen + 0.4, seconds) -
                                    0.11 * smoothstep(fallsAsleep, fallsAsleep + 0.95, seconds);
    vec2 p = ((place - 0.5 + vec2(0.0, 0.02 * back)) * 2.0 * aspect - sleeper * dark) / zoom;
    return Screen(p + tilt * vec2(p.y, -p.x), zoom, back);
}

// `shown`: what the hall has there.
vec3 endAt(float seconds, bool look, Screen screen, vec3 shown, float pixel) {
    vec2 p = screen.at;
    float asleep = look ? 0.0 : smoothstep(fallsAsleep, fallsAsleep + 0.5, seconds), dark = nightfall(seconds, look);
    // It goes out as an old tube does, and its last line becomes the smile.
    float tube = 1.0 - smoothstep(switchedOff - 0.18, switchedOff, seconds);
    shown *= inside(abs(p.y) - 1.2 * tube, max(pixel, 0.1 * tube)) * step(0.001, tube);
    float bend = smoothstep(switchedOff - 0.02, eyesOpen, seconds);
    float open = step(switchedOff, seconds) * (1.0 - asleep);
    // They follow the streak.
    vec2 gaze = look ? vec2(0.02, 0.06) : vec2(clamp(2.2 * (seconds - streaks - 0.45), -0.11, 0.11), 0.11);
    // On beats it swells, from one to the next less.
    float size = look ? faceSize : faceSize * (1.0 + 0.35 * scale * bend * (1.0 - asleep));
    vec2 eyes = look ? vec2(1.0, 0.0) : vec2(open), q = bulged(p, screen.back);
    float face = outsideFace(q / size, eyes, gaze, bend), drawn = step(switchedOff - 0.06, seconds);
    float halo = max(1.0 - 3.0 * max(face, 0.0), 0.0);
    // It is drawn in light, which shines through the glass round it.
    float ember = look ? 0.11 : 0.022 * bend + 0.13 * asleep;  // asleep, the screen is a night light
    shown += ((look ? gold : mix(hot, embers, asleep)) * inside(face, pixel / size) +
              amber * (0.14 * halo * halo * halo + ember * (1.0 - 0.4 * dot(p, p)))) * drawn;
    float edge = roundBox(p, glass, glassCorner * screen.back);
    shown = shown * (1.0 - 0.8 * screen.back * clamp(1.0 + 6.0 * edge, 0.0, 1.0)) +
            onGlass(p, edge) * (screen.back * (1.0 - dark));
    vec2 beyond = (place - 0.5) * 2.0 * aspect + vec2(0.0, look ? 0.34 : 0.0);
    vec3 behind = nightAt(beyond, seconds, pixel * screen.zoom) * screen.back;
    vec3 thrown = mix(vec3(0.05, 0.04, 0.05), 0.3 * amber, bend) * screen.back;
    return mix(headAt(p, edge, thrown, behind, dark, pixel) * (look ? 1.2 : 1.0), shown, inside(edge, pixel));
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
        at = 0.5 + 0.5 * bulged(screen.at, screen.back) / glass;
        split = margin * vec2(0.4, 0.2) / screen.zoom;  // edges would turn to stairs where the hall is small
    }
    // Looked up at every pixel: which level of a picture is meant is not known where neighbours don't look. A copy of
    // the frame, bottom row first, has one level, and where it is squeezed it would be taken without blending: edges
    // would turn to stairs.
    float level = slope.t > 0.0 ? -4.0 : 0.0;
    vec4 color = texture2D(picture, coordinates(at, slope, margin), level);
    vec3 red = texture2D(picture, coordinates(at - 2.0 * split, slope, margin), level).rgb;
    vec3 yellow = texture2D(picture, coordinates(at - split, slope, margin), level).rgb;
    vec3 azure = texture2D(picture, coordinates(at + split, slope, margin), level).rgb;
    vec3 blue = texture2D(picture, coordinates(at + 2.0 * split, slope, margin), level).rgb;
    float night = texture2D(picture, gl_TexCoord[0].st + (vec2(0.5, 0.998) - place) * slope).a;
    if (atTheEnd) {
        vec3 shown = 0.2 * (color.rgb + red + yellow + azure + blue);
        gl_FragColor = vec4(endAt(seconds, look, screen, shown, 4.0 * margin.y / screen.zoom), 1.0) * gl_Color;
        return;
    }
    if (dot(split, split) > 2e-8) {  // a quarter of a pixel from end to end
        color.rgb = vec3(0.5 * red.r + 0.35 * yellow.r + 0.15 * color.r,
                         0.25 * yellow.g + 0.5 * color.g + 0.25 * azure.g,
                         0.15 * color.b + 0.35 * azure.b + 0.5 * blue.b);
    }

    // The edge shines, and behind it the air is thin.
    float hollow = ahead < 0.0 ? wake * (1.0 - cos(min(-x, 6.2832))) : 0.0;
    vec3 fromLamp = gl_LightSource[0].position.xyz - greetingsLamp;
    float dark = dot(fromLamp, fromLamp) < 0.01 ? max(color.a, night) : 0.0;
    color.rgb *= (1.0 + pulse * (0.10 * edge - 0.36 * hollow)) * (1.0 - dark) * (1.0 - dark * violetGlass);
    gl_FragColor = color * gl_Color;
}
