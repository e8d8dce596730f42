// 4 x 4 matrices as glMultMatrixf takes them: column after column, so elements 12, 13, 14 translate.
// Angles are radians; points and directions are columns to the right of a matrix.
#pragma once

#include "geometry/vec3.h"

// Without a value it is not initialised.
struct Matrix4 {
    float m[16];
};

Matrix4 identity();
Matrix4 translation(const Vec3& offset);
Matrix4 rotationX(float angle);
Matrix4 rotationY(float angle);
Matrix4 rotationZ(float angle);

// a * b of two affine matrices: their bottom rows are taken to be (0, 0, 0, 1), whatever they hold.
Matrix4 affineProduct(const Matrix4& a, const Matrix4& b);

// Of any matrix, affine or not: the adjugate divided by the determinant. A singular one gives values that are
// not finite.
Matrix4 inverse(const Matrix4& matrix);

inline Vec3 transformPoint(const Matrix4& matrix, const Vec3& p) {
    const float* m = matrix.m;
    return {p.x * m[0] + p.y * m[4] + p.z * m[8] + m[12], p.x * m[1] + p.y * m[5] + p.z * m[9] + m[13],
            p.x * m[2] + p.y * m[6] + p.z * m[10] + m[14]};
}

// The same without the translation.
inline Vec3 transformDirection(const Matrix4& matrix, const Vec3& d) {
    const float* m = matrix.m;
    return {d.x * m[0] + d.y * m[4] + d.z * m[8], d.x * m[1] + d.y * m[5] + d.z * m[9],
            d.x * m[2] + d.y * m[6] + d.z * m[10]};
}
