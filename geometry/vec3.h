// Single-precision vectors of three. A Vec3 declared without a value is not initialised.
#pragma once

#include <cmath>

struct Vec3 {
    float x, y, z;

    void set(float newX, float newY, float newZ) { *this = {newX, newY, newZ}; }
    Vec3& operator+=(const Vec3& b) {
        set(x + b.x, y + b.y, z + b.z);
        return *this;
    }
    float lengthSquared() const { return x * x + y * y + z * z; }
    float length() const { return std::sqrt(lengthSquared()); }
    // In place; a zero vector gives values that are not finite.
    void normalize() {
        const float scale = 1 / length();
        set(x * scale, y * scale, z * scale);
    }
};

inline Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3 operator*(const Vec3& v, float s) {
    return {v.x * s, v.y * s, v.z * s};
}
inline Vec3 operator*(float s, const Vec3& v) {
    return v * s;
}

inline Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline float dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
