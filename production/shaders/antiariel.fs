#version 110
// Smooths edges: across a step in brightness the picture is averaged along the edge, elsewhere it stays as it is.
// The idea is Timothy Lottes's (FXAA, 2009), with two taps along the edge.

uniform sampler2D picture;

varying vec2 place;

const vec3 luma = vec3(0.299, 0.587, 0.114);

vec4 beside(vec2 pixels) {
    vec2 pixel = vec2(abs(dFdx(place.x)), abs(dFdy(place.y)));
    vec2 slope = vec2(dFdx(gl_TexCoord[0].s) / dFdx(place.x), dFdy(gl_TexCoord[0].t) / dFdy(place.y));
    vec2 target = clamp(place + pixels * pixel, 0.5 * pixel, 1.0 - 0.5 * pixel);
    return texture2D(picture, gl_TexCoord[0].st + (target - place) * slope);
}

void main() {
    vec4 middle = beside(vec2(0.0, 0.0));
    float leftBelow = dot(beside(vec2(-0.5, -0.5)).rgb, luma);
    float rightBelow = dot(beside(vec2(0.5, -0.5)).rgb, luma);
    float leftAbove = dot(beside(vec2(-0.5, 0.5)).rgb, luma);
    float rightAbove = dot(beside(vec2(0.5, 0.5)).rgb, luma);
    float low = min(min(leftBelow, rightBelow), min(leftAbove, rightAbove));
    float high = max(max(leftBelow, rightBelow), max(leftAbove, rightAbove));

    // Along the edge: at a right angle to the gradient of the brightness.
    vec2 along = vec2((leftBelow + rightBelow) - (leftAbove + rightAbove),
                      (leftAbove + leftBelow) - (rightAbove + rightBelow));
    along = vec2(along.x, -along.y);
    along /= max(length(along), 0.001);

    vec4 averaged = 0.5 * (beside(along) + beside(-along));
    float edge = smoothstep(0.06, 0.2, high - low);
    gl_FragColor = mix(middle, averaged, edge) * gl_Color;
}
