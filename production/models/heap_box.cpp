// The box of the heap: a storey of a tower, twenty of which stand on each other, and a house that juts out
// from it. Its roof rises beside the storeys above, unless they have turned the same way.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/shared/house.h"

using namespace model;
using namespace house;

namespace {

constexpr double proud = 0.3;  // by which what is lit lies before what is dark

// The light circles far below. What is to catch it wherever it stands faces down so far that it seldom throws
// back the comet, and bulges, so that this is a glint and no field.
Shape lit(const Shape& shape, Vec outwards) {
    constexpr double bulge = 0.006;
    const double down = degrees(66);
    Vec middle;
    for (const Vec& p : shape.points) middle = middle + p * (1 / double(shape.points.size()));
    return litAs(shape, [=](Vec p) {
        return outwards * std::cos(down) - Vec{0, std::sin(down), 0} +
               Vec{p.x - middle.x, 0, p.z - middle.z} * bulge;
    });
}

// What faces down so little throws back neither the comet nor the glow beyond the heap.
Shape dark(const Shape& shape, Vec outwards) {
    const double down = degrees(16);
    return litAs(painted(shape, hull::shade), [=](Vec) {
        return outwards * std::cos(down) - Vec{0, std::sin(down), 0};
    });
}

// A polygon, counter-clockwise from its front.
Shape sheet(const std::vector<Vec>& corners) {
    Shape shape;
    std::vector<int> round;
    for (const Vec& corner : corners) {
        round.push_back(int(shape.points.size()));
        shape.points.push_back(corner);
    }
    addFace(shape, round);
    return shape;
}

// The front leans back, so that it lies behind that of a house above it.
double frontAt(double y) {
    constexpr double leaning = 3;
    return front - leaning * (y - bottom) / high;
}

Shape gable() {
    const auto placed = [](const Outline& outline, double out) {
        std::vector<Vec> corners;
        for (const Flat& p : outline) corners.push_back({frontAt(p.y) + out, p.y, -p.x});
        return corners;
    };
    const auto seen = [](const Shape& shape) {
        return lit(mappedBy(shape,
                            [=](const Face&, Vec p) {
                                return hull::gable.at(0.5 - p.z / (2 * halfWidth), (p.y - bottom) / high);
                            }),
                   {1, 0, 0});
    };
    const Outline outer = {
        {-halfWidth, bottom}, {halfWidth, bottom}, {halfWidth, eaves}, {0, ridge}, {-halfWidth, eaves}};
    std::vector<Shape> all = {dark(sheet(placed(outer, 0)), {1, 0, 0}),
                              seen(sheet(placed(insetBy(outer, frame), proud)))};
    const std::vector<Vec> rim = placed(outer, proud), inner = placed(insetBy(outer, lining), proud);
    for (size_t i = 0; i < rim.size(); i++) {
        const size_t next = (i + 1) % rim.size();
        all.push_back(seen(sheet({rim[i], rim[next], inner[next], inner[i]})));
    }
    return joined(all);
}

// A wall with its windows, and half of the roof.
Shape side(int number) {
    const double to = number == 0 ? 1 : -1;
    const auto at = [&](double x, double y, double z) { return Vec{x, y, to * z}; };
    const auto outside = [&](const std::vector<Vec>& corners) {
        return to > 0 ? sheet(corners) : insideOut(sheet(corners));
    };
    // From `left` to `right` as who stands before it sees it.
    const auto seen = [&](double left, double right, double low, double high) {
        const double from = to > 0 ? core + left : front - right, z = halfWidth + proud,
                     breadth = right - left;
        const Patch patch = hull::houseWall(number);
        return lit(mappedBy(outside({at(from, low, z), at(from + breadth, low, z),
                                     at(from + breadth, high, z), at(from, high, z)}),
                            [=](const Face&, Vec p) {
                                return patch.at((to > 0 ? p.x - core : front - p.x) / depth,
                                                (p.y - bottom) / wall);
                            }),
                   {0, 0, to});
    };
    const double frontAtEaves = frontAt(eaves);
    std::vector<Shape> all = {
        dark(joined({outside({at(core, bottom, halfWidth), at(front, bottom, halfWidth),
                              at(frontAtEaves, eaves, halfWidth), at(core, eaves, halfWidth)}),
                     outside({at(core, eaves, halfWidth), at(frontAtEaves, eaves, halfWidth),
                              at(frontAt(ridge), ridge, 0), at(core, ridge, 0)})}),
             {0, 0, to}),
        seen(to > 0 ? 0 : front - frontAtEaves, to > 0 ? frontAtEaves - core : depth, eaves - lining, eaves)};
    for (const auto& [left, right] : windows[number])
        all.push_back(seen(left, right, bottom + sill, bottom + lintel));
    return joined(all);
}

// So nearly level that who stands below finds the comet nowhere on it.
Shape soffit() {
    const Shape half =
        sheet({{core, bottom, 0}, {front, bottom, 0}, {front, bottom, halfWidth}, {core, bottom, halfWidth}});
    const Shape whole = mappedBy(joined({half, reflected(half, Axis::z)}), [=](const Face&, Vec p) {
        return hull::soffit.at((p.x - core) / depth, std::fabs(p.z) / halfWidth);
    });
    return litAs(whole, [](Vec) { return Vec{0.09, -1, 0}; });
}

// The core's sides are alike, so that the stairs on them climb on from storey to storey however these turn.
Shape stairs() {
    const Shape face = mappedBy(sheet({{-core, bottom, core},
                                       {core, bottom, core},
                                       {core, bottom + storeyHigh, core},
                                       {-core, bottom + storeyHigh, core}}),
                                [](const Face&, Vec p) {
                                    return hull::core.at(0.5 + p.x / (2 * core), (p.y - bottom) / storeyHigh);
                                });
    std::vector<Shape> all;
    for (int i = 0; i < 4; i++) {
        const double turn = i * pi / 2;
        all.push_back(lit(turned(face, Axis::y, turn), {std::sin(turn), 0, std::cos(turn)}));
    }
    return joined(all);
}

// From the core to the underside, below each wall.
Shape braces() {
    constexpr double drop = 15, reach = 34, thick = 2.6;
    const Shape one = sheet({{core, bottom - drop, halfWidth},
                             {core + reach, bottom - proud, halfWidth},
                             {core + reach - 2 * thick, bottom - proud, halfWidth},
                             {core, bottom - drop + thick, halfWidth}});
    return joined({lit(painted(one, hull::brace), {0, 0, 1}),
                   lit(painted(reflected(one, Axis::z), hull::brace), {0, 0, -1})});
}

// A balcony's rail along each wall, on posts, before the windows.
Shape balconies() {
    constexpr double out = halfWidth + 5, low = bottom + 3.4, thick = 0.9;
    const auto bar = [&](double from, double to, double y, double high) {
        return sheet({{from, y, out}, {to, y, out}, {to, y + high, out}, {from, y + high, out}});
    };
    std::vector<Shape> bars = {bar(core, front, low, thick), bar(core, front, bottom, thick)};
    for (double x = core + 5; x < front; x += 9) bars.push_back(bar(x, x + 0.6, bottom, low - bottom));
    const Shape rail = painted(joined(bars), hull::brace);
    const Shape floor = sheet(
        {{core, bottom, halfWidth}, {front, bottom, halfWidth}, {front, bottom, out}, {core, bottom, out}});
    return joined({lit(rail, {0, 0, 1}), lit(reflected(rail, Axis::z), {0, 0, -1}), dark(floor, {0, 0, 1}),
                   dark(reflected(floor, Axis::z), {0, 0, -1})});
}

// What carries all, which the storeys hide but below the lowest.
Shape trunk() {
    return shaded(painted(lathe({{11, -130}, {11, -60}, {14, -30}, {21, bottom}}, 16), hull::shade),
                  [](Vec, Vec normal) {
                      return normal - Vec{0, 0.3, 0};
                  });
}

}  // namespace

void makeHeapBox(const char* path) {
    writeAml(path, {joined({gable(), side(0), side(1), soffit(), stairs(), braces(), balconies(), trunk()})});
}
