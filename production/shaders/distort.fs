#version 110
// A picture behind broken glass: one pane round the ship stays whole and clear, and the blades about it throw the
// picture aside and part its colours. With "time" at 0 the glass is whole and only shimmers; as it swings up to 0.05
// it breaks into slanting ribbons, as it swings down to -0.05 into rings that turn against each other. Near 1 it is
// struck: blades stand round the blow, and each jump of "time" is another blow.

uniform sampler2D picture;
uniform float time;

varying vec2 place;
varying vec2 focus;
varying vec3 light;

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen: rings are round on it
const vec2 lamp = vec2(-0.9, 0.45);        // where the light falls from
const float bevelWidth = 0.03;             // of a blade's slanted edge, of the screen's height

float random(float seed) { return fract(sin(seed * 12.9898) * 43758.5453); }

// Always between texels, never the nearest one: edges would turn to stairs where the picture is drawn small.
vec3 seenAt(vec2 target) { return texture2D(picture, target, -4.0).rgb; }

void main() {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));  // a pixel: slopes are not exact across the whole width
    float struck = step(0.5, abs(time));
    float broken = max(struck, smoothstep(0.001, 0.04, abs(time)));

    // Which blade a place lies in (0 is the clear pane), from -1 to 1 across it and how far from its edge, across and
    // along it there, and how far it may be thrown.
    vec2 ray = (place - focus) * aspect;
    float radius = length(ray);
    vec2 outward = ray / max(radius, 0.01);
    float blade, toEdge, toBorder, reach, toPane = 1.0;
    vec2 across, along;
    if (time > 0.0 && struck == 0.0) {
        across = vec2(0.94, 0.34), along = vec2(-0.34, 0.94), reach = 0.26;
        float side = dot(ray, across) + 0.07 * sin(5.0 * dot(ray, along));
        float beyond = (abs(side) - 0.22) / 0.15;
        blade = beyond < 0.0 ? 0.0 : sign(side) * (1.0 + floor(beyond));
        toEdge = beyond < 0.0 ? side / 0.22 : sign(side) * (2.0 * fract(beyond) - 1.0);
        toBorder = (1.0 - abs(toEdge)) * (beyond < 0.0 ? 0.22 : 0.075);
    } else {
        float hub = 0.27;
        float beyond = radius - hub;
        if (beyond < 0.0) {
            across = outward, blade = 0.0, toEdge = radius / hub, toBorder = -beyond;
        } else if (struck > 0.0) {
            float blow = floor(time * 22.0);
            float turn = 9.0 * (atan(ray.y, ray.x) / 6.2831853 + 0.5) + 3.0 * (random(blow) - 0.5) * (radius - hub) +
                         random(blow + 3.0);
            across = vec2(-outward.y, outward.x), along = outward, reach = 0.4;
            blade = 1.0 + mod(floor(turn), 9.0) + 10.0 * blow;
            toEdge = 2.0 * fract(turn) - 1.0;
            toBorder = (1.0 - abs(toEdge)) * 0.35 * radius;
            toPane = beyond;
        } else {
            across = outward, along = vec2(-outward.y, outward.x), reach = 0.8 * radius;
            blade = 1.0 + floor(beyond / 0.16);
            toEdge = 2.0 * fract(beyond / 0.16) - 1.0;
            toBorder = (1.0 - abs(toEdge)) * 0.08;
        }
    }
    float bevel = max(1.0 - toBorder / bevelWidth, 0.0);
    vec2 tilt = sign(toEdge) * bevel * across;

    vec2 slip = -0.04 * bevel * tilt;
    if (blade == 0.0) {
        slip -= 0.16 * (1.0 - 0.5 * bevel) * ray;  // a lens that brings the ship nearer
    } else {
        slip += (random(blade + 40.0) - 0.5) * reach * (1.0 + 4.0 * struck * (time - 1.0)) * along;
    }
    slip *= broken / aspect;

    vec2 shimmer = vec2(sin(place.y * 19.0 + time * 60.0) + 0.5 * sin(place.y * 47.0 - time * 90.0),
                        cos(place.x * 15.0 - time * 50.0) + 0.5 * cos(place.x * 37.0 + time * 70.0));
    vec2 target = place + 0.003 * (1.0 - broken) * shimmer + slip;
    vec2 split = blade == 0.0 ? 0.06 * slip * bevel : 0.035 * slip;

    // Thrown over an edge of the picture, a place comes back in. Red bends least and blue most, over a whole spectrum.
    target = 1.0 - abs(1.0 - abs(target));
    vec2 low = gl_TexCoord[0].st + (margin - place) * slope, high = low + (1.0 - 2.0 * margin) * slope;
    vec2 least = min(low, high), most = max(low, high);
    vec2 at = gl_TexCoord[0].st + (target - place) * slope;
    split *= slope;
    vec3 color = seenAt(clamp(at, least, most));
    if (dot(split, split) > 1e-8) {
        vec3 red = seenAt(clamp(at - 2.0 * split, least, most)), orange = seenAt(clamp(at - split, least, most));
        vec3 azure = seenAt(clamp(at + split, least, most)), blue = seenAt(clamp(at + 2.0 * split, least, most));
        color = vec3(0.4 * red.r + 0.35 * orange.r + 0.25 * color.r,
                     0.3 * orange.g + 0.4 * color.g + 0.3 * azure.g,
                     0.25 * color.b + 0.35 * azure.b + 0.4 * blue.b);
    }

    // A blade is round across: the side towards the lamp is lit, the other lies in the shade, most so at its edges,
    // which gather what light there is. What is dark comes up, what is white keeps the beams' colour.
    float facing = dot(across, lamp);
    float edge = dot(tilt, lamp);
    float dark = 1.0 - max(color.r, max(color.g, color.b)), white = min(color.r, min(color.g, color.b));
    float round = blade == 0.0 ? 0.0 : toEdge * facing;
    float shade = 0.45 * round + 0.5 * edge;
    color *= 1.0 + broken * (shade * (shade > 0.0 ? dark : 1.0) + (blade == 0.0 ? 0.0 : 1.2) * dark * dark);
    color.g *= 1.0 - 0.3 * broken * white * white * white;
    float caught = max(edge, 0.0), sheen = max(round + 0.35, 0.0);
    float patch = 0.5 + 0.5 * sin(7.0 * dot(ray, vec2(0.45, 0.9)) + 2.4 * blade);  // no blade is lit alike all along
    sheen *= blade == 0.0 ? 0.4 : sheen * (0.3 + patch);
    color += broken * (0.55 * caught * caught + 0.28 * sheen) * light * (1.0 - min(color, 1.0));
    float border = 1.0 - smoothstep(0.0, 2.0 * margin.y, min(toBorder, toPane));
    color = mix(color, light * (0.35 + 0.45 * abs(facing)), broken * border);
    gl_FragColor = vec4(color, 1.0) * gl_Color;
}
