#version 110
// A picture behind broken glass: one pane round the ship stays whole and clear, and the blades about it throw the
// picture aside and part its colours. With "time" at 0 the glass is only cracked; as it swings up to 0.05 it breaks
// into slanting ribbons, as it swings down to -0.05 into rings that turn against each other. Near 1 it is struck:
// blades stand round the blow, and each jump of "time" is another blow.

uniform sampler2D picture;
uniform float time;

varying vec2 place;
varying vec2 focus;
varying vec3 light;

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen: rings are round on it
const vec2 lamp = vec2(-0.9, 0.45);        // where the light falls from
const float hub = 0.27;                    // of rings and blades, the clear pane; in screen heights, as all lengths
const float bevelWidth = 0.03;

// A piece of glass at a place in it.
struct Blade {
    float number;    // 0 is the clear pane
    float toEdge;    // -1 to 1 across it
    float toBorder;  // how far its own edge is
    float toPane;    // how far the pane's is, where it isn't its own
    float reach;     // how far it may throw the picture
    vec2 across, along;
};

// The remainder of a whole number. Halves, since a quotient may fall short of the whole that it should be.
float within289(float number) { return number - 289.0 * floor((number + 0.5) / 289.0); }

// 0 to 1, of a whole number: in whole numbers throughout, which are the same on every card. Sines are not.
float random(float seed) {
    float first = within289(seed), second = within289((34.0 * first + 1.0) * first + 7.0);
    return within289((34.0 * second + 1.0) * second) / 289.0;
}

Blade ribbon(vec2 ray) {
    const float paneHalf = 0.22, width = 0.15;
    vec2 across = vec2(0.94, 0.34), along = vec2(-0.34, 0.94);
    float side = dot(ray, across) + 0.07 * sin(5.0 * dot(ray, along));
    float beyond = (abs(side) - paneHalf) / width;
    float toEdge = 2.0 * fract(beyond) - 1.0;
    Blade blade = Blade(sign(side) * (1.0 + floor(beyond)), sign(side) * toEdge, (0.5 - 0.5 * abs(toEdge)) * width, 1.0,
                        0.26, across, along);
    if (beyond < 0.0) blade.number = 0.0, blade.toEdge = side / paneHalf, blade.toBorder = -beyond * width;
    return blade;
}

Blade ring(float radius, vec2 outward) {
    const float width = 0.16;
    float beyond = (radius - hub) / width, toEdge = 2.0 * fract(beyond) - 1.0;
    return Blade(1.0 + floor(beyond), toEdge, (0.5 - 0.5 * abs(toEdge)) * width, 1.0, 0.8 * radius, outward,
                 vec2(-outward.y, outward.x));
}

Blade struckBlade(float radius, vec2 outward) {
    const float count = 9.0;
    float blow = floor(time * 22.0);
    float at = count * (atan(outward.y, outward.x) / 6.2831853 + 0.5) + 3.0 * (random(blow) - 0.5) * (radius - hub) +
               random(blow + 3.0);
    float toEdge = 2.0 * fract(at) - 1.0;
    return Blade(1.0 + mod(floor(at), count) + 10.0 * blow, toEdge, (1.0 - abs(toEdge)) * 0.35 * radius, radius - hub,
                 0.4 + 1.6 * (time - 1.0), vec2(-outward.y, outward.x), outward);
}

Blade bladeAt(vec2 ray, bool struck) {
    float radius = length(ray);
    vec2 outward = ray / max(radius, 0.01);
    Blade blade = Blade(0.0, radius / hub, hub - radius, 1.0, 0.0, outward, outward);
    if (time > 0.0 && !struck)
        blade = ribbon(ray);
    else if (radius > hub) {
        if (struck)
            blade = struckBlade(radius, outward);
        else
            blade = ring(radius, outward);
    }
    return blade;
}

// Cracks of the glass before it breaks, a web with straight threads round the ship, which stands in a whole pane: by
// how much the piece between them throws the picture, and how near the next thread is, up to 1 on it.
vec3 crackedAt(vec2 ray) {
    const float spokes = 11.0, rungs = 3.4;  // rungs to a screen height
    float pixel = abs(dFdy(place.y));
    float angle = atan(ray.y, ray.x), radius = length(ray);
    float spoke = mod(spokes * ((angle + 0.25 * sin(2.0 * angle + 1.0)) / 6.2831853 + 0.5), spokes);
    float sector = floor(spoke), side = spoke - sector;
    float next = mod(sector + (side < 0.5 ? -1.0 : 1.0) + spokes, spokes);
    float along = rungs * radius * cos((side - 0.5) * 6.2831853 / spokes);
    float rung = along + 0.7 * random(sector), piece = floor(rung), within = rung - piece;
    bool pane = piece < 1.0, paneBeside = along + 0.7 * random(next) < 1.0;

    // Spokes grow outwards to the blades' edges' breadth, rungs have half of it.
    float breadth = mix(3.0, 7.0, smoothstep(0.1, 0.7, radius)) * pixel;
    float toSpoke = min(side, 1.0 - side) * radius * 6.2831853 / spokes;
    float toRung = (pane ? 1.0 - within : min(within, 1.0 - within)) / rungs;
    float thread = pane && paneBeside ? 0.0 : 1.0 - smoothstep(0.0, breadth, toSpoke);
    thread = max(thread, 0.8 - 0.8 * smoothstep(0.0, 4.0 * pixel, toRung));
    float number = sector + 17.0 * piece;
    vec2 thrown = vec2(random(number) - 0.5, random(number + 5.0) - 0.5);
    return vec3(pane ? vec2(0.0) : 0.10 * thrown, thread);
}

// Always between texels, never the nearest one: edges would turn to stairs where the picture is drawn small.
vec3 seenAt(vec2 target) { return texture2D(picture, target, -4.0).rgb; }

// What lies over a place as broad as the glow lays it, not a line's own light: across a line one of a pair of
// neighbours is dark.
vec3 veilAt(vec2 at, vec2 slope, vec2 least, vec2 most) {
    const float reach = 0.055;  // screen heights
    vec3 veil = vec3(0.0);
    for (int i = 0; i < 4; i++) {
        float angle = 0.7853982 * float(i) + 0.4;
        vec2 aside = reach * vec2(cos(angle), sin(angle)) / aspect * slope;
        veil += 0.25 * min(seenAt(clamp(at + aside, least, most)), seenAt(clamp(at - aside, least, most)));
    }
    return veil;
}

// What is seen at a place, thrown by `slip` and parted by `split` on either side: red bends least and blue most, over
// a whole spectrum. Thrown over an edge of the picture, a place comes back in.
vec3 thrownPicture(vec2 slip, vec2 split) {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));  // a pixel: slopes are not exact across the whole width
    vec2 low = gl_TexCoord[0].st + (margin - place) * slope, high = low + (1.0 - 2.0 * margin) * slope;
    vec2 least = min(low, high), most = max(low, high);

    vec2 target = 1.0 - abs(1.0 - abs(place + slip));
    vec2 at = gl_TexCoord[0].st + (target - place) * slope;
    split *= slope;
    vec3 color = seenAt(clamp(at, least, most));
    vec3 veil = veilAt(at, slope, least, most);
    // Looked up at every pixel: which level of a picture is meant is not known where neighbours don't look.
    vec3 red = seenAt(clamp(at - 2.0 * split, least, most)), orange = seenAt(clamp(at - split, least, most));
    vec3 azure = seenAt(clamp(at + split, least, most)), blue = seenAt(clamp(at + 2.0 * split, least, most));
    if (dot(split, split) > 1e-8) {
        color = vec3(0.4 * red.r + 0.35 * orange.r + 0.25 * color.r,
                     0.3 * orange.g + 0.4 * color.g + 0.3 * azure.g,
                     0.25 * color.b + 0.35 * azure.b + 0.4 * blue.b);
    }
    // What shines from a broad field is held down, the more the brighter it is, and white takes the beams' hue. A line
    // in it stands out by what is its own in any channel. What comes back in fades, or corners mirror themselves.
    vec3 share = (veil + 0.02) / (max(color, veil) + 0.02);
    float broad = min(share.r, min(share.g, share.b));
    float field = broad * broad * max(veil.r, max(veil.g, veil.b)) / 0.46;
    float held = 1.0 / (1.0 + field * field);
    float white = min(veil.r, min(veil.g, veil.b));
    float beam = mix(held, sqrt(held), white);
    vec2 over = max(abs(place + slip - 0.5) - 0.5, 0.0);
    return color * vec3(beam, held * (1.0 - 0.5 * white), beam) * exp(-12.0 * (over.x + over.y));
}

// A blade is round across: the side towards the lamp is lit, the other lies in the shade, most so at its edges, which
// gather what light there is. What is dark comes up, what is white keeps the beams' colour.
vec3 shaded(vec3 color, Blade blade, vec2 ray, vec2 tilt, float broken) {
    bool pane = blade.number == 0.0;
    float facing = dot(blade.across, lamp), edge = dot(tilt, lamp);
    float dark = 1.0 - max(color.r, max(color.g, color.b)), white = min(color.r, min(color.g, color.b));
    float bulge = pane ? 0.0 : blade.toEdge * facing;
    float shade = 0.45 * bulge + 0.5 * edge;
    color *= 1.0 + broken * (shade * (shade > 0.0 ? dark : 1.0) + (pane ? 0.0 : 0.8) * dark * dark);
    color.g *= 1.0 - 0.3 * broken * white * white * white;

    // No blade is lit alike all along.
    float pool = 0.5 + 0.5 * sin(7.0 * dot(ray, vec2(0.45, 0.9)) + 2.4 * blade.number);
    float caught = max(edge, 0.0), sheen = max(bulge + 0.35, 0.0);
    sheen *= pane ? 0.4 : sheen * (0.3 + pool);
    color += broken * (0.55 * caught * caught + 0.22 * sheen) * light * (1.0 - min(color, 1.0));
    float border = 1.0 - smoothstep(0.0, 2.0 * abs(dFdy(place.y)), min(blade.toBorder, blade.toPane));
    return mix(color, light * (0.35 + 0.45 * abs(facing)), broken * border);
}

void main() {
    bool struck = abs(time) > 0.5;
    float broken = smoothstep(0.001, 0.02, abs(time));

    vec2 ray = (place - focus) * aspect;
    Blade blade = bladeAt(ray, struck);
    float bevel = max(1.0 - blade.toBorder / bevelWidth, 0.0);
    vec2 tilt = sign(blade.toEdge) * bevel * blade.across;
    vec2 slip = -0.04 * bevel * tilt;
    if (blade.number == 0.0)
        slip -= 0.16 * (1.0 - 0.5 * bevel) * ray;  // a lens that brings the ship nearer
    else
        slip += (random(blade.number + 40.0) - 0.5) * blade.reach * blade.along;
    slip *= broken / aspect;
    vec2 split = (blade.number == 0.0 ? 0.06 * bevel : 0.025) * slip;
    vec3 crack = vec3(0.0);
    if (broken < 1.0) crack = (1.0 - broken) * crackedAt(ray);
    slip += crack.xy / aspect;

    vec3 color = shaded(thrownPicture(slip, split), blade, ray, tilt, broken);
    color += crack.z * light * (1.0 - min(color, 1.0));
    // Black stays black under the sheen.
    float most = max(color.r, max(color.g, color.b));
    gl_FragColor = vec4(color * most * most / (most * most + 0.06), 1.0) * gl_Color;
}
