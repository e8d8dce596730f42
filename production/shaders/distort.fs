#version 110
// A picture behind an iris of glass: the ship stands whole and clear in its opening, in copper before beams of ice, and
// five blades about that show the corridor turned and in blue. As "time" swings to 0 the iris opens over all that is
// seen; near 1 it is struck.

uniform sampler2D picture;

varying vec2 place;
varying vec2 focus;
varying float magnified;
varying float lightness;  // of the ship, on the whole
varying vec4 blades[5];

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen; lengths are screen heights
const vec2 lamp = vec2(-0.8, 0.6);         // where the light falls from
const float target = 1024.0;               // texels
const float headroom = 0.3;                // how far over the whole ship's a broad tone may rise

// The part of a target that is seen, a pixel within its edges.
struct Frame {
    vec2 slope, least, most;
};

// What a place sees: a blade, or none of them in the opening.
struct View {
    vec2 ray;      // from the ship to the place that is seen
    vec4 blade;
    float onTop;   // 1 where a blade is
    float toEdge;  // of the glass
};

// The blade that lies on top is beyond its own side of the opening, and not beyond the next one's.
View viewOf(vec2 ray) {
    View view = View(ray, vec4(0.0), 0.0, 1.0);
    float next = dot(ray, blades[0].xy) - blades[0].z, farthest = -1.0;
    for (int i = 4; i >= 0; i--) {
        float beyond = dot(ray, blades[i].xy) - blades[i].z;
        if (beyond > 0.0 && next <= 0.0) view.blade = blades[i], view.onTop = 1.0, view.toEdge = min(beyond, -next);
        farthest = max(farthest, beyond);
        next = beyond;
    }
    if (view.onTop == 0.0) view.toEdge = -farthest;
    // Glass is bent along its edges.
    float rim = max(1.0 - view.toEdge / 0.028, 0.0);
    float c = cos(view.blade.w), s = sin(view.blade.w);
    vec2 turned = 1.1 * (mat2(c, s, -s, c) * ray) - 0.10 * rim * rim * view.blade.xy;
    view.ray = (view.onTop > 0.0 ? turned : ray * (1.0 - 0.06 * rim * rim)) / magnified;
    return view;
}

Frame frameSeen() {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));  // slopes are not exact across the whole width
    vec2 low = gl_TexCoord[0].st + (margin - place) * slope, high = low + (1.0 - 2.0 * margin) * slope;
    return Frame(slope, min(low, high), max(low, high));
}

// Always between texels, never the nearest one: edges would turn to stairs where the picture is drawn small.
vec4 seenAt(vec2 at, Frame frame) { return texture2D(picture, clamp(at, frame.least, frame.most), -4.0); }

// Weighed over four texels each way, so that what is magnified shows none.
vec4 smoothAt(vec2 at, Frame frame) {
    vec2 texel = at * target - 0.5, part = fract(texel), rest = 1.0 - part;
    vec2 before = rest * rest * rest / 6.0, after = part * part * part / 6.0;
    vec2 low = before + 2.0 / 3.0 - part * part * (1.0 - 0.5 * part), high = 1.0 - low;
    vec2 a = (texel - part + 0.5 - before / low) / target, b = (texel - part + 1.5 + after / high) / target;
    return low.y * (low.x * seenAt(a, frame) + high.x * seenAt(vec2(b.x, a.y), frame)) +
           high.y * (low.x * seenAt(vec2(a.x, b.y), frame) + high.x * seenAt(b, frame));
}

// How much of a place may be the ship's.
float hullAt(vec4 color) { return clamp(4.0 * color.a - 3.0, 0.0, 1.0); }

float magentaOf(vec3 color) { return max(min(color.r, color.b) - color.g, 0.0); }

// What the ship and what lies behind it look like at a place. The ship is measured by itself and not by what is next to
// it: on a far hull that would leave pits of black.
vec3 colorAt(vec2 at, Frame frame) {
    vec4 seen = smoothAt(at, frame);
    vec2 along = vec2(0.016, 0.007) / aspect * frame.slope, across = vec2(-0.007, 0.016) / aspect * frame.slope;
    vec4 ahead = seenAt(at + along, frame), astern = seenAt(at - along, frame);
    vec4 left = seenAt(at + across, frame), right = seenAt(at - across, frame);
    vec3 veil = min(min(ahead, astern), min(left, right)).rgb;

    // A beam is a line of magenta; what is as magenta all about is violet feathers, or has a beat's glow over it.
    float magenta = magentaOf(seen.rgb), beam = max(magenta - magentaOf(veil), 0.0);
    float tone = 1.0 + (max(seen.g - 0.5 * magenta, 0.0) - lightness) / 0.34;
    // What is scarlet, violet or blue has little green, and is no dark of the ship all the same: there feathers are
    // told apart by how they differ from what is next to them.
    float relief = seen.g - 0.25 * (ahead.g + astern.g + left.g + right.g);
    float colored = max(max(seen.r, seen.b) - seen.g - 0.4 * magenta - 0.6 * beam, 0.0);
    colored *= 1.0 - smoothstep(0.4, 1.1, tone);
    tone += colored * (0.65 + clamp(10.0 * relief, -0.3, 0.6));
    // Beams that a beat makes white pass for hull, but on both sides of a line there is none.
    float solid = hullAt(seen) * clamp(1.9 - 5.0 * beam, 0.0, 1.0) * smoothstep(-0.4, 0.1, tone) *
                  min(max(hullAt(ahead), hullAt(astern)), max(hullAt(left), hullAt(right)));

    // What is broad and lighter is bent down without a break, or what a beat lights would be one flat white.
    if (tone > 1.0)
        tone = 1.0 + headroom - headroom * exp((1.0 - tone) / headroom) +
               min(tone - 1.0, 1.0) * clamp(3.5 * relief, -0.7, 0.35);

    // Beams are ice. Of what lies over them as broad as the glow lays it most is taken away.
    float lit = smoothstep(0.2, 0.8, max(veil.r, veil.b));
    vec3 behind = max(seen.rgb - 0.75 * veil, 0.0);
    float core = max(seen.g - 0.9 * veil.g, 0.0), both = min(seen.r, seen.b);
    vec3 ice = (0.95 - 0.45 * lit) * max(behind.r, behind.b) * vec3(0.05, 0.55, 1.0) + core * vec3(0.55, 0.80, 0.70);
    behind = mix(max(behind, lit * ice), ice, max(smoothstep(0.03, 0.15, both - seen.g), smoothstep(0.5, 0.8, both)));

    vec3 copper = mix(vec3(0.10, 0.025, 0.03), vec3(0.82, 0.41, 0.14), smoothstep(0.1, 1.0, tone));
    // Embers where it is dim. Lit, it is golder: fields of red would flash on beats.
    copper.gb *= mix(0.62, 1.0, smoothstep(0.65, 1.05, tone));
    copper = mix(copper, vec3(1.0, 0.62, 0.26), smoothstep(0.9, 1.4, tone));
    copper = mix(copper, vec3(1.0, 0.93, 0.80), smoothstep(1.3, 1.9, tone));
    // Where the ship is green, copper has its patina.
    float patina = smoothstep(0.0, 0.12, seen.g - seen.r - 0.5 * max(seen.b - seen.g, 0.0));
    copper = mix(copper, dot(copper, vec3(0.5, 0.5, 0.2)) * vec3(0.08, 1.05, 0.85), patina);
    vec3 color = mix(behind, copper, solid);
    return vec3(min(color.r, 3.0 * seen.r), color.gb);  // what has no red is none of these
}

// 1 within a breadth, 0 outside of it, the change that soft.
float within(float far, float breadth, float soft) { return 1.0 - smoothstep(breadth - soft, breadth, far); }

// A blade is blue, lighter where it leans to the lamp, with a sheen in two bands and a bevel with a line of light.
vec3 onBlade(View view, vec3 color, vec2 ray) {
    float facing = dot(view.blade.xy, lamp), lean = max(facing, 0.0);
    float across = dot(ray, vec2(-view.blade.y, view.blade.x)), beyond = dot(ray, view.blade.xy) - view.blade.z;
    float slant = mod(across + 0.6 * beyond + 4.0 * view.blade.w, 0.9);
    float sheen = within(abs(slant - 0.35), 0.16, 0.02) + within(abs(slant - 0.60), 0.04, 0.02);
    float bevel = within(view.toEdge, 0.030, 0.002), line = within(abs(view.toEdge - 0.030), 0.0035, 0.003);
    return max(dot(color, vec3(0.4, 0.5, 0.3)) - 0.02, 0.0) * vec3(0.0, 0.55, 1.05) * (1.0 + 0.3 * facing) +
           vec3(0.0, 0.036, 0.095) * (clamp(0.5 * facing + 0.9 * across, 0.0, 1.6) + (0.7 + lean) * sheen) +
           vec3(0.0, 0.85, 1.15) * (bevel * (0.10 + 0.16 * lean) + line * (0.22 + 0.4 * lean));
}

void main() {
    vec2 ray = (place - focus) * aspect;
    View view = viewOf(ray);
    Frame frame = frameSeen();
    // Turned over an edge of the picture, a place comes back in, and is lost in the dark.
    vec2 to = focus + view.ray / aspect, over = max(abs(to - 0.5) - 0.5, 0.0);
    vec2 at = gl_TexCoord[0].st + (1.0 - abs(1.0 - abs(to)) - place) * frame.slope;
    vec3 color = colorAt(at, frame) * exp(-5.0 * (over.x + over.y));
    if (view.onTop > 0.0) color = onBlade(view, color, ray);
    color *= smoothstep(0.002, 0.006, view.toEdge);
    gl_FragColor = vec4(min(color, 1.0), 1.0) * gl_Color;
}
