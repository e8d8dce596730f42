// Points, directions and texture coordinates of the modelling kit, in double precision so that welding and
// offsetting don't drift; the writer rounds to single precision once, at the end.
#pragma once

#include <algorithm>
#include <cmath>

namespace model {

constexpr double pi = 3.14159265358979323846;

struct Vec {
    double x = 0, y = 0, z = 0;
};

struct Uv {
    double s = 0, t = 0;
};

inline Vec operator+(Vec a, Vec b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec operator-(Vec a, Vec b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec operator-(Vec a) {
    return {-a.x, -a.y, -a.z};
}
inline Vec operator*(Vec a, double k) {
    return {a.x * k, a.y * k, a.z * k};
}
inline Vec& operator+=(Vec& a, Vec b) {
    return a = a + b;
}
inline Uv operator+(Uv a, Uv b) {
    return {a.s + b.s, a.t + b.t};
}
inline Uv operator-(Uv a, Uv b) {
    return {a.s - b.s, a.t - b.t};
}
inline Uv operator*(Uv a, double k) {
    return {a.s * k, a.t * k};
}

inline double dot(Vec a, Vec b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec cross(Vec a, Vec b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(Vec a) {
    return std::sqrt(dot(a, a));
}
// The zero vector stays zero.
inline Vec normalized(Vec a) {
    const double size = length(a);
    return size > 0 ? a * (1 / size) : a;
}
inline Vec mix(Vec a, Vec b, double k) {
    return a + (b - a) * k;
}
inline double mix(double a, double b, double k) {
    return a + (b - a) * k;
}
inline double degrees(double angle) {
    return angle * pi / 180;
}

// Of a number, what is left over the whole number below it: 0..1.
inline double fraction(double x) {
    return x - std::floor(x);
}

// Goes from 0 at `from` to 1 at `to` with level ends (the usual cubic); `to` may lie below `from`.
inline double smoothStep(double from, double to, double x) {
    const double k = std::clamp((x - from) / (to - from), 0.0, 1.0);
    return k * k * (3 - 2 * k);
}

}  // namespace model
