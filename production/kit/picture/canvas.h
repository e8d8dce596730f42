// Pictures in the making: float RGBA with premultiplied alpha, compositing, blur and glow, and the way into a
// file. Values are the file's own (1 is 255), with no gamma anywhere; row 0 is the top of the picture.
#pragma once

#include <numbers>
#include <vector>

#include "production/kit/maths.h"

namespace picture {

using kit::arcSin, kit::arcTan, kit::bell, kit::cross, kit::curveBetween, kit::dot, kit::length, kit::mix,
    kit::normalized, kit::smoothstep;

constexpr float pi = std::numbers::pi_v<float>, degree = pi / 180;  // radians

using Point = kit::Vector2<float>;      // of a picture: row 0 is its top
using Direction = kit::Vector3<float>;  // in space

struct Rgba {
    float r = 0, g = 0, b = 0, a = 0;
};

inline Rgba operator+(Rgba p, Rgba q) {
    return {p.r + q.r, p.g + q.g, p.b + q.b, p.a + q.a};
}
inline Rgba operator*(Rgba p, float k) {
    return {p.r * k, p.g * k, p.b * k, p.a * k};
}
inline Rgba operator*(Rgba p, Rgba q) {
    return {p.r * q.r, p.g * q.g, p.b * q.b, p.a * q.a};
}

inline Rgba opaque(float r, float g, float b) {
    return {r, g, b, 1};
}
inline Rgba grey(float value) {
    return {value, value, value, 1};
}
// Light to be added: no alpha of its own.
inline Rgba light(float r, float g, float b) {
    return {r, g, b, 0};
}
inline Rgba over(Rgba front, Rgba back) {
    return front + back * (1 - front.a);
}

inline float unit(float x) {
    return std::clamp(x, 0.0f, 1.0f);
}
inline Rgba mix(Rgba from, Rgba to, float k) {
    return from * (1 - k) + to * k;
}
struct Canvas {
    int width, height;
    std::vector<Rgba> pixels;

    Canvas(int width, int height, Rgba ground = {})
        : width(width), height(height), pixels(size_t(width) * height, ground) {}
    Rgba& at(int x, int y) { return pixels[size_t(y) * width + x]; }
    const Rgba& at(int x, int y) const { return pixels[size_t(y) * width + x]; }
};

// Sets every pixel to shade(x, y, pixel there), where x and y are the pixel's centre in pixels.
template <class Shade>
void paint(Canvas& canvas, Shade shade) {
    for (int y = 0; y < canvas.height; y++) {
        for (int x = 0; x < canvas.width; x++) {
            Rgba& pixel = canvas.at(x, y);
            pixel = shade(x + 0.5f, y + 0.5f, pixel);
        }
    }
}

// Colour stops along a line, sorted by place; before the first and after the last the end colours hold.
struct Stop {
    float place;
    Rgba colour;
};
Rgba gradient(const std::vector<Stop>& stops, float place);

// Between the four nearest pixels of a place in pixels; beyond the edge the edge holds.
Rgba sampled(const Canvas& canvas, float x, float y);

// What lies beyond the edge for a blur.
enum class Edge { Clamp, Wrap };

// A Gaussian of standard deviation `sigma` in pixels, as three box passes (Wells, "Efficient synthesis of
// Gaussian filters by cascaded uniform filters", 1986).
Canvas blurred(const Canvas& source, float sigma, Edge edge);

// Streams of light away from a place in pixels: every pixel becomes the mean of what lies between it and a
// point `reach` (0..1) of its way towards the centre.
Canvas streamed(const Canvas& source, float centreX, float centreY, float reach);

// The order of the file's rows: a picture that GL draws over the full screen starts at its bottom row.
enum class Rows { TopFirst, BottomFirst };

// Writes the picture as 8-bit RGB or RGBA (alpha no longer premultiplied), JPEG or PNG by the path's ending.
// A fixed dither of one step keeps dark ramps from banding; exact 0 and 1 stay exact. Ends the process with a
// line when the file can't be written.
void saveRgb(const Canvas& canvas, const char* path, Rows rows);
void saveRgba(const Canvas& canvas, const char* path, Rows rows);

}  // namespace picture
