// What both kits count with: curves between two numbers, and vectors of two and three of them. Numbers may be
// of either precision; what comes out has the higher one.
#pragma once

#include <algorithm>
#include <cmath>
#include <concepts>
#include <type_traits>

namespace kit {

template <class... Numbers>
using Common = std::common_type_t<Numbers...>;

template <class A, class B, class C>
requires std::floating_point<Common<A, B, C>>
auto mix(A from, B to, C k) {
    return from + (to - from) * k;
}

// Goes from 0 at `from` to 1 at `to` with level ends (the usual cubic); `to` may lie below `from`.
template <class A, class B, class C>
requires std::floating_point<Common<A, B, C>>
auto smoothstep(A from, B to, C x) {
    using Number = Common<A, B, C>;
    const Number k = std::clamp(Number(x - from) / Number(to - from), Number(0), Number(1));
    return k * k * (3 - 2 * k);
}

// 1 at x = 0, falling off as a bell of standard deviation `sigma`.
template <class A, class B>
requires std::floating_point<Common<A, B>>
auto bell(A x, B sigma) {
    using Number = Common<A, B>;
    return std::exp(Number(-0.5) * x * x / (Number(sigma) * sigma));
}

// Worked out in double precision: the C library's functions of single precision have another last bit from
// one of its releases to the next, and with them the pictures.
inline float arcTan(float y, float x) {
    return float(std::atan2(double(y), double(x)));
}
inline float arcSin(float x) {
    return float(std::asin(double(x)));
}

template <class T>
struct Vector2 {
    T x = 0, y = 0;
};

template <class T>
struct Vector3 {
    T x = 0, y = 0, z = 0;
};

template <class T>
constexpr Vector2<T> operator+(Vector2<T> a, Vector2<T> b) {
    return {a.x + b.x, a.y + b.y};
}
template <class T>
constexpr Vector2<T> operator-(Vector2<T> a, Vector2<T> b) {
    return {a.x - b.x, a.y - b.y};
}
template <class T>
constexpr Vector2<T> operator*(Vector2<T> a, std::type_identity_t<T> k) {
    return {a.x * k, a.y * k};
}
template <class T>
T dot(Vector2<T> a, Vector2<T> b) {
    return a.x * b.x + a.y * b.y;
}
template <class T>
T length(Vector2<T> a) {
    return std::hypot(a.x, a.y);
}

template <class T>
constexpr Vector3<T> operator+(Vector3<T> a, Vector3<T> b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
template <class T>
constexpr Vector3<T> operator-(Vector3<T> a, Vector3<T> b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
template <class T>
constexpr Vector3<T> operator*(Vector3<T> a, std::type_identity_t<T> k) {
    return {a.x * k, a.y * k, a.z * k};
}
template <class T>
Vector3<T>& operator+=(Vector3<T>& a, Vector3<T> b) {
    return a = a + b;
}
template <class T>
T dot(Vector3<T> a, Vector3<T> b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
template <class T>
Vector3<T> cross(Vector3<T> a, Vector3<T> b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
template <class T>
T length(Vector3<T> a) {
    return std::sqrt(dot(a, a));
}
// The zero vector stays zero.
template <class T>
Vector3<T> normalized(Vector3<T> a) {
    const T size = length(a);
    return size > 0 ? Vector3<T>{a.x / size, a.y / size, a.z / size} : a;
}

template <template <class> class Vector, class T>
Vector<T> mix(Vector<T> a, Vector<T> b, std::type_identity_t<T> k) {
    return a + (b - a) * k;
}

// A smooth curve through points (Catmull-Rom): its place from `b` (k = 0) to `c` (1), where `a` comes before
// and `d` after.
template <class Point, class Number>
Point curveBetween(Point a, Point b, Point c, Point d, Number k) {
    return (b * 2 + (c - a) * k + (a * 2 - b * 5 + c * 4 - d) * (k * k) +
            (b * 3 - a - c * 3 + d) * (k * k * k)) *
           0.5f;
}

}  // namespace kit
