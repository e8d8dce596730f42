#version 110
// A picture behind cracked glass, whose blades throw it aside and part its colours. With "time" at 0 the glass is
// whole and only shimmers; as it swings up to 0.05 it breaks into slanting ribbons, as it swings down to -0.05 into
// rings that turn against each other. Near 1 it is struck: blades stand round the blow, and each jump of "time" is
// another blow.

uniform sampler2D picture;
uniform float time;

varying vec2 place;

const vec2 aspect = vec2(4.0 / 3.0, 1.0);  // of the screen: rings are round on it

float random(float seed) { return fract(sin(seed * 12.9898) * 43758.5453); }

// Thrown over an edge of the picture, a place comes back in.
vec2 coordinates(vec2 target, vec2 slope, vec2 margin) {
    target = 1.0 - abs(1.0 - abs(target));
    return gl_TexCoord[0].st + (clamp(target, margin, 1.0 - margin) - place) * slope;
}

void main() {
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 margin = vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));  // a pixel: slopes are not exact across the whole width
    float struck = step(0.5, abs(time));
    float broken = max(struck, smoothstep(0.001, 0.04, abs(time)));

    float blow = floor(time * 22.0) * struck;
    vec2 middle = 0.5 + 0.24 * struck * (vec2(random(blow + 2.0), random(blow + 5.0)) - 0.5);
    vec2 ray = (place - middle) * aspect;
    float radius = length(ray);
    vec2 outward = ray / max(radius, 0.01);
    vec2 around = vec2(-outward.y, outward.x);

    // How many blades lie before a place, across and along a blade there, and how far one may be thrown.
    float at;
    vec2 across, along;
    float reach;
    if (struck > 0.0) {
        at = 11.0 * (atan(ray.y, ray.x) / 6.2831853 + 0.5) + (2.6 * random(blow) - 1.3) * radius;
        across = around, along = outward, reach = 0.55;
    } else if (time > 0.0) {
        across = vec2(0.94, 0.34), along = vec2(-0.34, 0.94), reach = 0.34;
        at = dot(place - 0.5, across) * 9.0 + 0.5 * sin(7.0 * dot(place, along));
    } else {
        at = 7.0 * radius + 0.35 * outward.x + 0.4;
        across = outward, along = around, reach = 1.1 * radius;
    }
    float blade = floor(at), inside = at - blade;
    float toEdge = 2.0 * inside - 1.0;
    float bevel = toEdge * toEdge * toEdge;
    bevel *= bevel * toEdge;
    float thrown = (random(mod(blade, 11.0) + 40.0 + 13.0 * blow) - 0.5) * reach * (1.0 + 4.0 * struck * (time - 1.0));
    vec2 slip = broken * (thrown * along - 0.03 * bevel * across) / aspect;

    vec2 shimmer = vec2(sin(place.y * 19.0 + time * 60.0) + 0.5 * sin(place.y * 47.0 - time * 90.0),
                        cos(place.x * 15.0 - time * 50.0) + 0.5 * cos(place.x * 37.0 + time * 70.0));
    vec2 target = place + 0.003 * shimmer + slip;
    vec2 split = vec2(0.001, 0.0) + (0.11 - 0.04 * struck) * slip;

    vec4 color = texture2D(picture, coordinates(target, slope, margin));
    color.r = texture2D(picture, coordinates(target - split, slope, margin)).r;
    color.b = texture2D(picture, coordinates(target + split, slope, margin)).b;
    // One edge of a blade catches the light, the other lies in the shade; what is dark comes up, what is white keeps
    // the beams' colour.
    float dark = 1.0 - max(color.r, max(color.g, color.b)), white = min(color.r, min(color.g, color.b));
    color.rgb *= 1.0 + broken * (0.7 * bevel + 0.9 * dark * dark);
    color.g *= 1.0 - 0.3 * broken * white * white * white;
    gl_FragColor = color * gl_Color;
}
