#include "geometry/matrix4.h"

#include <cmath>

Matrix4 identity() {
    return {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
}

Matrix4 translation(const Vec3& offset) {
    return {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, offset.x, offset.y, offset.z, 1}};
}

Matrix4 rotationX(float angle) {
    const float c = std::cos(angle), s = std::sin(angle);
    return {{1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1}};
}

Matrix4 rotationY(float angle) {
    const float c = std::cos(angle), s = std::sin(angle);
    return {{c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1}};
}

Matrix4 rotationZ(float angle) {
    const float c = std::cos(angle), s = std::sin(angle);
    return {{c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
}

Matrix4 affineProduct(const Matrix4& a, const Matrix4& b) {
    Matrix4 product = identity();
    for (int column = 0; column < 4; column++) {
        const float* from = &b.m[4 * column];
        const Vec3 right = {from[0], from[1], from[2]};
        const Vec3 result = column < 3 ? transformDirection(a, right) : transformPoint(a, right);
        float* to = &product.m[4 * column];
        to[0] = result.x;
        to[1] = result.y;
        to[2] = result.z;
    }
    return product;
}

// Laplace expansion in the 2 x 2 minors of the first two and the last two columns (D. Eberly, "The Laplace
// Expansion Theorem: Computing the Determinants and Inverses of Matrices").
Matrix4 inverse(const Matrix4& matrix) {
    const float* m = matrix.m;
    const auto minor = [m](int column, int row1, int row2) {
        return m[column + row1] * m[column + 4 + row2] - m[column + row2] * m[column + 4 + row1];
    };
    const float s01 = minor(0, 0, 1), s02 = minor(0, 0, 2), s03 = minor(0, 0, 3);
    const float s12 = minor(0, 1, 2), s13 = minor(0, 1, 3), s23 = minor(0, 2, 3);
    const float t01 = minor(8, 0, 1), t02 = minor(8, 0, 2), t03 = minor(8, 0, 3);
    const float t12 = minor(8, 1, 2), t13 = minor(8, 1, 3), t23 = minor(8, 2, 3);
    const float determinant = s01 * t23 - s02 * t13 + s03 * t12 + s12 * t03 - s13 * t02 + s23 * t01;

    Matrix4 adjugate = {{
        m[5] * t23 - m[6] * t13 + m[7] * t12,
        -m[1] * t23 + m[2] * t13 - m[3] * t12,
        m[13] * s23 - m[14] * s13 + m[15] * s12,
        -m[9] * s23 + m[10] * s13 - m[11] * s12,

        -m[4] * t23 + m[6] * t03 - m[7] * t02,
        m[0] * t23 - m[2] * t03 + m[3] * t02,
        -m[12] * s23 + m[14] * s03 - m[15] * s02,
        m[8] * s23 - m[10] * s03 + m[11] * s02,

        m[4] * t13 - m[5] * t03 + m[7] * t01,
        -m[0] * t13 + m[1] * t03 - m[3] * t01,
        m[12] * s13 - m[13] * s03 + m[15] * s01,
        -m[8] * s13 + m[9] * s03 - m[11] * s01,

        -m[4] * t12 + m[5] * t02 - m[6] * t01,
        m[0] * t12 - m[1] * t02 + m[2] * t01,
        -m[12] * s12 + m[13] * s02 - m[14] * s01,
        m[8] * s12 - m[9] * s02 + m[10] * s01,
    }};
    for (float& element : adjugate.m) element /= determinant;
    return adjugate;
}
