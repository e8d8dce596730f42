// The box of the heap: a storey of a tower, twenty of which stand on each other, and a house that juts out
// from it. Its roof rises beside the storeys above, unless they have turned the same way. As it is seen from
// each quarter it is another place.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/shared/house.h"

using namespace model;
using namespace house;
using enum atlas::hull::HousePaint;

namespace {

constexpr double proud = 0.3;  // by which what is lit lies before what is dark

// The light circles far below. What faces down so far catches it wherever it stands, and throws back little
// of the sky: of the comet, as it bulges, a glint that is no field.
Shape lit(const Shape& shape, Vec outwards, double bulgeUp = 0.03) {
    constexpr double bulge = 0.018;
    const double down = degrees(60);
    Vec middle;
    for (const Vec& p : shape.points) middle = middle + p * (1 / double(shape.points.size()));
    return litAs(shape, [=](Vec p) {
        const Vec away = p - middle;
        return outwards * std::cos(down) - Vec{0, std::sin(down), 0} +
               Vec{away.x * bulge, away.y * bulgeUp, away.z * bulge};
    });
}
Shape lit(const Shape& shape, Vec outwards, atlas::hull::HousePaint paint) {
    return lit(painted(shape, hull::housePaint(paint)), outwards);
}
Shape dark(const Shape& shape, Vec outwards) {
    return lit(painted(shape, hull::shade), outwards);
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
    const Outline outer = {
        {-halfWidth, bottom}, {halfWidth, bottom}, {halfWidth, eaves}, {0, ridge}, {-halfWidth, eaves}};
    return lit(mappedBy(sheet(placed(outer, 0)),
                        [=](const Face&, Vec p) {
                            return hull::gable.at(0.5 - p.z / (2 * halfWidth), (p.y - bottom) / high);
                        }),
               {1, 0, 0});
}

// The shop's, in stripes, with a fringe.
Shape awning() {
    constexpr double reach = 6.5, fall = 5.5, fringe = 1.6, width = 36;
    constexpr int stripes = 9;
    const double top = bottom + ceiling + 2.5, low = top - fall, in = frontAt(top) + proud,
                 out = frontAt(low) + reach;
    std::vector<Shape> all;
    for (int i = 0; i < stripes; i++) {
        const double left = width * (0.5 - double(i) / stripes), right = left - width / stripes,
                     spread = (out - in) * 0.02;
        const double middle = (left + right) / 2;
        all.push_back(lit(joined({sheet({{out, low, left * (1 + spread)},
                                         {out, low, right * (1 + spread)},
                                         {in, top, right},
                                         {in, top, left}}),
                                  sheet({{out, low, left * (1 + spread)},
                                         {out, low - fringe, middle * (1 + spread)},
                                         {out, low, right * (1 + spread)}})}),
                          {1, 0, 0}, i % 2 == 0 ? cloth : brass));
    }
    return joined(all);
}

// A wall, seen from its front, of which z is `out`.
struct Side {
    int number;
    double to() const { return number == workshop ? 1 : -1; }
    Vec at(double across, double up, double out = halfWidth) const {
        return {number == workshop ? core + across : front - across, bottom + up, to() * out};
    }
    Shape bar(double left, double right, double low, double high, double out) const {
        return sheet({at(left, low, out), at(right, low, out), at(right, high, out), at(left, high, out)});
    }
    Shape pane(const Outline& outline) const {
        std::vector<Vec> corners;
        for (const Flat& p : outline) corners.push_back(at(p.x, p.y, halfWidth + proud));
        return lit(mappedBy(sheet(corners),
                            [this](const Face&, Vec p) {
                                return hull::houseWall(number).at(
                                    (number == workshop ? p.x - core : front - p.x) / depth,
                                    (p.y - bottom) / wall);
                            }),
                   {0, 0, to()});
    }
    Shape pane(const Window& window) const {
        return pane({{window.left, window.low},
                     {window.right, window.low},
                     {window.right, window.high},
                     {window.left, window.high}});
    }
};

// A wall without its windows, and half of the roof.
Shape body(const Side& side) {
    const auto from = [&](double x) { return side.number == workshop ? x - core : front - x; };
    const auto shell = [&](const std::vector<Vec>& corners) {
        return dark(side.to() > 0 ? sheet(corners) : insideOut(sheet(corners)), {0, 0, side.to()});
    };
    const double z = side.to() * halfWidth;
    const double inner = from(core), outer = from(frontAt(eaves));
    return joined(
        {shell({{core, bottom, z}, {front, bottom, z}, {frontAt(eaves), eaves, z}, {core, eaves, z}}),
         shell({{core, eaves, z}, {frontAt(eaves), eaves, z}, {frontAt(ridge), ridge, 0}, {core, ridge, 0}}),
         side.pane(Window{std::min(inner, outer), std::max(inner, outer), wall - lining, wall})});
}

// A round window, a gate, and a chimney that glows at its top.
Shape workshopSide() {
    const Side side{workshop};
    Outline round = polygon(24, wheel);
    for (Flat& p : round) p = {p.x + wheelX, p.y + wheelY};
    const Vec foot = {front - 24, 12, 14};
    const auto stack = [&](double low, double high) {
        return moved(box({5, high - low, 5}, 0), foot + Vec{0, (low + high) / 2, 0});
    };
    return joined({body(side), side.pane(round), side.pane(gate), lit(stack(0, 13), {0, 0, 1}, cloth),
                   lit(stack(13, 14.5), {0, 0, 1}, brass)});
}

// A pot's leaves, in a fan.
Shape plant(const Side& side, double x, double low, double size, double out) {
    std::vector<Shape> all;
    for (int i = -2; i <= 2; i++) {
        const double lean = i * 0.5, c = std::cos(lean) * size, s = std::sin(lean) * size;
        all.push_back(
            sheet({side.at(x, low, out), side.at(x + 0.55 * s + 0.16 * c, low + 0.55 * c - 0.16 * s, out),
                   side.at(x + s, low + c, out),
                   side.at(x + 0.55 * s - 0.16 * c, low + 0.55 * c + 0.16 * s, out)}));
    }
    return lit(joined(all), {0, 0, side.to()}, leaves);
}

// Tall windows, before which a balcony runs with a rail, and plants on it and down from it.
Shape flatSide() {
    const Side side{flat};
    constexpr double out = halfWidth + 6, rail = 4, thick = 0.9;
    const double from = 0, to = front - core;
    std::vector<Shape> bars = {side.bar(from, to, rail, rail + thick, out),
                               side.bar(from, to, 0, thick, out)};
    for (double x = from + 1; x < to; x += 3.1) bars.push_back(side.bar(x, x + 0.5, thick, rail, out));
    std::vector<Shape> all = {
        body(side), lit(joined(bars), {0, 0, side.to()}, brass),
        dark(sheet({side.at(from, 0), side.at(to, 0), side.at(to, 0, out), side.at(from, 0, out)}),
             {0, 0, side.to()})};
    for (const Window& room : rooms) all.push_back(side.pane(room));
    for (const auto& [x, size] : {std::pair{7.0, 8.0}, {27.0, 7.0}, {44.0, 10.0}, {60, 6.0}})
        all.push_back(plant(side, x, thick, size, out - 1));
    for (const auto& [x, size] : {std::pair{12.0, 5.0}, {35.0, 6.5}, {53.0, 4.5}})
        all.push_back(plant(side, x, rail, -size, out + proud));
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

// The tower's sides beside the house, and the one behind it.
Shape coreSides() {
    const auto face = [](const Patch& patch) {
        return mappedBy(sheet({{-core, bottom, core},
                               {core, bottom, core},
                               {core, bottom + storeyHigh, core},
                               {-core, bottom + storeyHigh, core}}),
                        [=](const Face&, Vec p) {
                            return patch.at(0.5 + p.x / (2 * core), (p.y - bottom) / storeyHigh);
                        });
    };
    std::vector<Shape> all;
    for (int i = 0; i < 4; i++) {
        const double turn = i * pi / 2;
        all.push_back(lit(turned(face(i == 3 ? hull::stairs : hull::core), Axis::y, turn),
                          {std::sin(turn), 0, std::cos(turn)}, 0.06));
    }
    return joined(all);
}

// Climbs across the back of the core, from one side to the other and on where the next storey lies alike.
Shape flight() {
    constexpr int steps = 9, railed = 6;  // up to the house above
    constexpr double wide = 8, thick = 1.1, rail = 5;
    const double run = 2 * core / steps, rise = storeyHigh / steps, out = -core - wide;
    // From left to right as who stands behind the tower sees it.
    const auto at = [&](double step, double up, double x) {
        return Vec{x, bottom + step * rise + up, -core + step * run};
    };
    std::vector<Shape> treads, edges;
    for (int i = 0; i < steps; i++) {
        treads.push_back(sheet({{out, bottom + i * rise, -core + i * run},
                                {out, bottom + i * rise, -core + (i + 1) * run},
                                {out, bottom + (i + 1) * rise, -core + (i + 1) * run},
                                {out, bottom + (i + 0.7) * rise, -core + i * run}}));
    }
    for (int i = 0; i < railed; i++)
        edges.push_back(sheet({at(i + 0.4, rise, out), at(i + 0.52, rise, out), at(i + 0.52, rail, out),
                               at(i + 0.4, rail, out)}));
    edges.push_back(sheet(
        {at(0, rail, out), at(railed, rail, out), at(railed, rail + thick, out), at(0, rail + thick, out)}));
    return joined(
        {lit(joined(treads), {-1, 0, 0}, brass), lit(joined(edges), {-1, 0, 0}, cloth),
         dark(sheet({at(0, 0, -core), at(steps, 0, -core), at(steps, 0, out), at(0, 0, out)}), {-1, 0, 0})});
}

// From the core to the underside, below each wall.
Shape braces() {
    constexpr double drop = 15, reach = 34, thick = 2.6;
    const Shape one = sheet({{core, bottom - drop, halfWidth},
                             {core + reach, bottom - proud, halfWidth},
                             {core + reach - 2 * thick, bottom - proud, halfWidth},
                             {core, bottom - drop + thick, halfWidth}});
    return joined({lit(one, {0, 0, 1}, brass), lit(reflected(one, Axis::z), {0, 0, -1}, brass)});
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
    writeAml(path, {joined({gable(), awning(), workshopSide(), flatSide(), soffit(), coreSides(), flight(),
                            braces(), trunk()})});
}
