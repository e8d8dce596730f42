// The modelling kit: what a model may ask for and none of the show's does, so that their hashes don't tell.
#include <gtest/gtest.h>

#include "production/kit/model/forms.h"

namespace {

using namespace model;

TEST(ModelKit, PlacesAShapeUprightOnItsNewAxis) {
    for (const Vec up : {Vec{1, 0, 0}, Vec{0, -1, 0}, Vec{0.3, 0.5, -0.8}}) {
        Shape needle;
        needle.points = {{0, 0, 0}, {0, 2, 0}};
        const Shape there = placed(needle, {5, 6, 7}, up);
        EXPECT_LT(length(there.points[0] - Vec{5, 6, 7}), 1e-9);
        EXPECT_LT(length(there.points[1] - Vec{5, 6, 7} - normalized(up) * 2), 1e-9);
    }
}

TEST(ModelKit, SweptFramesDontTwistAndMeet) {
    Sweep how;
    how.closedPath = true;
    for (int i = 0; i < 90; i++) {
        const double a = 2 * pi * i / 90;
        how.path.push_back({std::cos(2 * a) * (3 + std::cos(3 * a)), std::sin(2 * a) * (3 + std::cos(3 * a)),
                            std::sin(3 * a)});
    }
    const Shape tube = sweep(Outline{{0.3, -0.1}, {0.3, 0.1}, {-0.3, 0.1}, {-0.3, -0.1}}, how);
    // A jump of the frame anywhere, at the seam too, would bend quads out of their plane.
    for (const Face& face : tube.faces) {
        const Vec p = tube.points[face.points[0]], q = tube.points[face.points[1]],
                  r = tube.points[face.points[2]], s = tube.points[face.points[3]];
        EXPECT_GT(dot(normalized(cross(q - p, r - p)), normalized(cross(r - p, s - p))), 0.6);
    }
}

}  // namespace
