#include "geometry/matrix4.h"

#include <gtest/gtest.h>

#include <random>

namespace {

void expectNear(const Vec3& actual, const Vec3& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-5);
    EXPECT_NEAR(actual.y, expected.y, 1e-5);
    EXPECT_NEAR(actual.z, expected.z, 1e-5);
}

Matrix4 randomMatrix(std::mt19937& random) {
    std::uniform_real_distribution<float> element(-2, 2);
    Matrix4 matrix;
    for (float& value : matrix.m) value = element(random);
    return matrix;
}

TEST(Matrix4, AffineProductAppliesTheRightOneFirstAndIgnoresBottomRows) {
    expectNear(transformPoint(translation({1, 2, 3}), {4, 4, 4}), {5, 6, 7});
    expectNear(transformDirection(translation({1, 2, 3}), {4, 4, 4}), {4, 4, 4});
    std::mt19937 random(1);
    const Matrix4 a = randomMatrix(random), b = randomMatrix(random);
    const Matrix4 product = affineProduct(a, b);
    const Vec3 point = {0.5f, -1, 2};
    expectNear(transformPoint(product, point), transformPoint(a, transformPoint(b, point)));
    expectNear({product.m[3], product.m[7], product.m[11]}, {0, 0, 0});
    EXPECT_EQ(product.m[15], 1);
}

TEST(Matrix4, InverseOfAnyMatrix) {
    std::mt19937 random(2);
    for (int run = 0; run < 20; run++) {
        const Matrix4 matrix = randomMatrix(random);
        const Matrix4 inverted = inverse(matrix);
        for (int column = 0; column < 4; column++)
            for (int row = 0; row < 4; row++) {
                double sum = 0, magnitude = 0;
                for (int k = 0; k < 4; k++) {
                    const double term = double{matrix.m[4 * k + row]} * inverted.m[4 * column + k];
                    sum += term;
                    magnitude += std::abs(term);
                }
                EXPECT_NEAR(sum, row == column, 1e-4 * std::max(1.0, magnitude)) << run;
            }
    }
    EXPECT_FALSE(std::isfinite(inverse(Matrix4{}).m[0]));
}

}  // namespace
