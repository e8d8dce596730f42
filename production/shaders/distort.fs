#version 110
// A picture in a cell of mirrors: the ship stands whole and clear in the pane in the middle, and what lies round it is
// its own reflection. As "time" swings up to 0.05 the pane is a hexagon and each of its sides a mirror, that one sees
// the ship in again and again; as it swings down to -0.05 the pane is round and facets are cut about it. Near 1 the
// facets are struck: each jump of "time" is another blow. The beams are ice where they were magenta.

uniform sampler2D picture;
uniform float time;

varying vec2 place;
varying vec2 focus;
varying float magnified;

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen: circles are round on it
const vec2 lamp = vec2(-0.9, 0.45);        // where the light falls from
const float hub = 0.36;                    // of the pane; in screen heights, as all lengths

// What a place sees: the clear pane, or that many mirrors.
struct View {
    vec2 ray;        // from the ship to the place that is seen
    float mirrors;   // 0 is the pane itself
    float toBorder;  // how far the nearest edge of glass is
    vec2 facing;     // of the last mirror, 0 in the pane
};

vec2 towards(float angle) { return vec2(cos(angle), sin(angle)); }

// The remainder of a whole number. Halves, since a quotient may fall short of the whole that it should be.
float within289(float number) { return number - 289.0 * floor((number + 0.5) / 289.0); }

// 0 to 1, of a whole number: in whole numbers throughout, which are the same on every card. Sines are not.
float random(float seed) {
    float first = within289(seed), second = within289((34.0 * first + 1.0) * first + 7.0);
    return within289((34.0 * second + 1.0) * second) / 289.0;
}

View inHexagon(vec2 ray) {
    const vec2 steep = vec2(0.5, 0.8660254);
    View view = View(ray, 0.0, 1.0, vec2(0.0));
    for (int i = 0; i < 3; i++) {
        // The side that is farthest out, of three pairs.
        vec2 side = vec2(1.0, 0.0), rising = steep, falling = vec2(steep.x, -steep.y);
        float far = dot(view.ray, side), second = dot(view.ray, rising), third = dot(view.ray, falling);
        if (abs(second) > abs(far)) side = rising, far = second;
        if (abs(third) > abs(far)) side = falling, far = third;
        side *= far < 0.0 ? -1.0 : 1.0;
        float beyond = abs(far) - hub;
        view.toBorder = min(view.toBorder, abs(beyond));
        if (beyond > 0.0) {
            view.ray -= 2.0 * beyond * side;
            view.mirrors += 1.0;
            view.facing = side;
        }
    }
    return view;
}

// Facets cut about the round pane, so many: each shows the ship once more, whole, mirrored and smaller, since what is
// drawn larger than it is shows its pixels.
View amongFacets(vec2 ray, float count, float turn) {
    const float stands = 0.6, smaller = 1.5;  // where in a facet, from the middle, and how much
    float radius = length(ray), wide = 3.1415927 / count;
    View view = View(ray, 0.0, hub - radius, vec2(0.0));
    if (radius > hub) {
        float angle = atan(ray.y, ray.x) - turn;
        float middle = 2.0 * wide * floor(angle / (2.0 * wide) + 0.5), aside = angle - middle;
        view.facing = towards(turn + middle);
        view.ray = smaller * (ray + (stands - 2.0 * dot(ray, view.facing)) * view.facing);
        view.mirrors = 1.0;
        view.toBorder = min(radius - hub, (wide - abs(aside)) * radius);
    }
    return view;
}

// Both are worked out at each pixel, whichever is shown, so each stands here once.
View viewOf(vec2 ray) {
    bool struck = abs(time) > 0.5;
    float blow = floor(time * 22.0);
    View facets = amongFacets(ray, struck ? 3.0 + floor(5.0 * random(blow)) : 6.0,
                              struck ? 6.2831853 * random(blow + 3.0) : 14.0 * time);
    View mirrors = inHexagon(ray);
    if (struck || time <= 0.0) return facets;
    return mirrors;
}

// Always between texels, never the nearest one: edges would turn to stairs where the picture is drawn small.
vec4 seenAt(vec2 target) { return texture2D(picture, target, -4.0); }

// How much of a colour is the beams', which are magenta.
float beamIn(vec3 color) { return max(min(color.r, color.b) - color.g, 0.0); }

// What lies over a place as broad as the glow lays it, not a line's own light: across a line one of a pair of
// neighbours is dark.
vec3 veilAt(vec2 at, vec2 slope, vec2 least, vec2 most) {
    const float reach = 0.055;  // screen heights
    vec3 veil = vec3(0.0);
    for (int i = 0; i < 3; i++) {
        vec2 aside = reach * towards(1.0471976 * float(i) + 0.4) / aspect * slope;
        veil += 0.3333 * min(seenAt(clamp(at + aside, least, most)).rgb, seenAt(clamp(at - aside, least, most)).rgb);
    }
    return veil;
}

// What is seen at a place, thrown by `slip` and parted by `split` on either side, red and blue, with how solid it is
// and how bright the field in which it lies. Thrown over an edge of the picture, a place comes back in.
vec4 thrownPicture(vec2 slip, vec2 split, out float field) {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));  // a pixel: slopes are not exact across the whole width
    vec2 low = gl_TexCoord[0].st + (margin - place) * slope, high = low + (1.0 - 2.0 * margin) * slope;
    vec2 least = min(low, high), most = max(low, high);

    vec2 target = 1.0 - abs(1.0 - abs(place + slip));
    vec2 at = gl_TexCoord[0].st + (target - place) * slope;
    split *= slope;
    vec4 color = seenAt(clamp(at, least, most));
    vec3 red = seenAt(clamp(at - split, least, most)).rgb, blue = seenAt(clamp(at + split, least, most)).rgb;
    color.rgb = vec3(0.6 * red.r + 0.4 * color.r, color.g, 0.4 * color.b + 0.6 * blue.b);
    // What shines from a broad field is held down, the more the brighter it is, and white takes the beams' hue; a line
    // in it stands out by what is its own. Dark haze is black.
    vec3 veil = veilAt(at, slope, least, most);
    field = max(veil.r, max(veil.g, veil.b));
    float white = min(veil.r, min(veil.g, veil.b));
    float open = 1.0 - smoothstep(0.5, 0.95, color.a) * (1.0 - smoothstep(0.0, 0.3, beamIn(color.rgb)));
    color.rgb = max(color.rgb - (0.5 + 0.1 * open) * field * mix(vec3(0.5 * (field + white)), veil, open), 0.0);
    color.rgb *= 1.0 - white * mix(vec3(0.0, 0.17, 0.40), vec3(0.5, 0.62, 0.45), open);
    float brightest = max(color.r, max(color.g, color.b));
    color.rgb *= brightest * brightest / (brightest * brightest + 0.001 + 0.024 * open);
    vec2 over = max(abs(place + slip - 0.5) - 0.5, 0.0);
    return color * exp(-6.0 * (over.x + over.y));
}

void main() {
    float broken = smoothstep(0.0005, 0.006, abs(time));
    vec2 ray = (place - focus) * aspect;
    View view = viewOf(ray);
    bool pane = view.mirrors == 0.0;
    vec2 slip = mix(ray, view.ray / magnified, broken) - ray;
    float bevel = max(1.0 - view.toBorder / 0.03, 0.0);
    slip -= 0.06 * broken * bevel * bevel * view.ray;
    vec2 split = (pane ? 0.008 * bevel : 0.004 * view.mirrors) * ray;

    float field;
    vec4 seen = thrownPicture(slip / aspect, split / aspect, field);
    vec3 color = seen.rgb;
    // The ship, which alone is solid, stands before its beams, and they are ice.
    float beam = beamIn(color), ship = smoothstep(0.5, 0.95, seen.a);
    color = max(color + beam * vec3(-1.5, 0.75, 0.3), 0.0);
    float most = max(color.r, max(color.g, color.b));
    // A near ship fills the screen; and what a beat has lit is raised as it is, so that it keeps its shades.
    float far = smoothstep(0.75, 1.3, magnified), lit = smoothstep(0.25, 0.75, field);
    color *= 1.0 + 0.5 * ship * far * lit;
    float lift = mix(0.7, 1.9, far) * (1.0 - 0.9 * lit);
    color *= 1.0 + lift * ship * (1.0 - smoothstep(0.0, 0.3, beam)) * (1.0 - min(most, 1.0));
    if (!pane) {
        // Each mirror takes some of the light, and more where it turns from the lamp.
        float kept = pow(0.56, view.mirrors) * (1.0 + 0.35 * dot(view.facing, lamp));
        color *= mix(1.0, kept, smoothstep(0.0, 0.15, broken));
    }
    float border = 1.0 - smoothstep(0.0, 2.5 * abs(dFdy(place.y)), view.toBorder);
    color.gb += 0.4 * border * broken;
    gl_FragColor = vec4(min(color, 1.0), 1.0) * gl_Color;
}
