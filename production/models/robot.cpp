// The robot: body, arms and the screen that is its face.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeRobotBody(const char* path) {
    const Shape feet = withMirror(moved(box({20, 10, 34}, 3, 2), {16, -13, 3}), Axis::x);
    const Shape base = lathe({{0, -30}, {40, -30}, {43, -27}, {43, -22}, {38, -18}, {0, -18}}, 36);
    const Shape legs =
        withMirror(lathe({{0, -10}, {8, -10}, {6, 20}, {8, 30}, {6, 60}, {0, 60}}, 16), Axis::x);
    const Shape legsApart = joined({moved(legs, {14, 0, 0}), moved(legs, {-14, 0, 0})});
    const Shape torso = lathe({{0, 84}, {14, 86}, {28, 108}, {26, 122}, {10, 126}, {0, 126}}, 24);
    const Shape head = moved(box({34, 32, 30}, 8, 3), {0, 148, 0});
    const Shape spine = moved(lathe({{0, 50}, {4, 50}, {4, 90}, {0, 90}}, 12), {0, 0, -6});
    writeAml(path, {mappedBox(joined({feet, base, legsApart, torso, head, spine}), 64)});
}

void makeRobotArms(const char* path) {
    const Shape shoulder = moved(icosphere(9, 3), {33, 114, 0});
    const Shape arm = moved(box({9, 44, 10}, 3, 2), {36, 88, 0});
    writeAml(path, {mappedBox(withMirror(joined({shoulder, arm}), Axis::x), 64)});
}

void makeRobotScreen(const char* path) {
    Shape screen = grid(13, 13, false, false, [](int c, int r) {
        const double x = (c - 6) * 2.2, y = (r - 6) * 1.9;
        return Vec{x, 148 + y, 18 - (x * x + y * y) * 0.006};
    });
    for (Face& face : screen.faces)
        for (Uv& uv : face.uvs) uv.t = 1 - uv.t;
    writeAml(path, {screen});
}
