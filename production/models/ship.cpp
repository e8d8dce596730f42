// The ship of the laser corridor: a dart of plates between two rings of emitters, nose towards -z, since the
// tunnel streams to +z. Six beams leave each ring at 30, 90, 150 ... degrees round the z axis.
#include <algorithm>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/figures.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr double emitterZ = 52;                  // of both rings
constexpr double frontRing = 21, rearRing = 33;  // radius of each ring's nozzle mouths

// The hull is built standing on its tail along y and laid down at the end: y = 90 is the nose. A needle, a
// shoulder under the front ring, a slim waist and the swelling that carries the engines.
double hullRadius(double y) {
    const double nose = 14.5 * std::pow(std::clamp((92 - y) / 50, 0.0, 1.0), 0.8);
    const double waist = 5.5 * smoothStep(34, 8, y) * smoothStep(-34, -4, y);
    return nose - waist + 8 * smoothStep(-10, -44, y) - 5 * smoothStep(-54, -78, y);
}

// What each stretch of the hull shows of the picture, from its lower end (y) up.
struct Band {
    double low;
    Patch patch;
};

constexpr int flutes = 6;
constexpr Band livery[] = {
    {-80, hull::vents},   {-62, hull::striped}, {-42, hull::lettered}, {-11, hull::dark}, {13, hull::plain},
    {32, hull::numbered}, {58, hull::dark},     {66, hull::striped},   {81, hull::plain}, {92, {}}};

// Between two grooves each band is painted along the ship, so that it reads from nose to tail.
Shape painted(Shape shape) {
    for (Face& face : shape.faces) {
        const Vec centre = faceCentre(shape, face);
        const Band* band = livery;
        while (centre.y > band[1].low) band++;
        const double land = std::floor(std::atan2(-centre.z, centre.x) / (2 * pi) * flutes);
        for (size_t i = 0; i < face.points.size(); i++) {
            const Vec p = shape.points[face.points[i]];
            const double turn =
                std::hypot(p.x, p.z) > 0.01 ? std::atan2(-p.z, p.x) / (2 * pi) * flutes - land : 0.5;
            const double across = turn - flutes * std::round((turn - 0.5) / flutes);
            const double along = (band[1].low - p.y) / (band[1].low - band->low);
            face.uvs[i] = {mix(band->patch.low.s, band->patch.high.s, along),
                           mix(band->patch.low.t, band->patch.high.t, across)};
        }
    }
    return shape;
}

Shape body() {
    const Outline plates =
        platedProfile({-80, -70, -62, -42, -30, -20, -11, -3, 5, 13, 22, 32, 46, 58, 66, 74, 81, 89.5},
                      {1.8, 1.6, 1.1, 9}, hullRadius);
    const Outline tail = {{0, -74}, {hullRadius(-80) - 4, -74}, {hullRadius(-80) - 3, -80}};
    const Outline profile = chained({tail, plates, {{0, 91}}});
    return painted(flutedLathe(profile, {flutes, 0.16, 1.4, -66, 62, 4}, 0));
}

// A lens-shaped spar along a path in the plane of x (outwards) and y; `chord` gives its width at 0..1 of the
// path, its thickness is a fixed part of that.
Shape spar(const std::vector<Vec>& path, const std::function<double(double)>& chord) {
    Sweep how;
    how.path = curveThrough(path, false, 5);
    how.up = {0, 0, 1};
    const double last = double(how.path.size() - 1);
    how.change = [&](int step, Outline lens) {
        const double width = chord(step / last);
        for (Flat& p : lens) p = {p.x * width, p.y * (1.2 + width * 0.17)};
        return lens;
    };
    // Sharp at the leading and trailing edge, domed between.
    const Outline lens = {{0.5, 0},  {0.42, 0.36},   {0.22, 0.6},   {0, 0.68},  {-0.22, 0.6}, {-0.42, 0.36},
                          {-0.5, 0}, {-0.42, -0.36}, {-0.22, -0.6}, {0, -0.68}, {0.22, -0.6}, {0.42, -0.36}};
    Shape shape = sweep(lens, how);
    // The stripes run along the spar on both its faces.
    for (Face& face : shape.faces) {
        for (Uv& uv : face.uvs) {
            const size_t point = size_t(std::lround(uv.s * lens.size())) % lens.size();
            uv = {uv.t, lens[point].x + 0.5};
        }
    }
    return painted(shape, hull::striped);
}

Shape blade() {
    const Shape sweptBack = spar(
        {{12, 47, 0}, {19, 36, 0}, {33, 4, 0}, {44, -30, 0}, {52, -60, 0}, {57.5, -90, 0}}, [](double k) {
            return k < 0.72 ? mix(9, 19, smoothStep(0, 0.72, k)) : mix(19, 0.6, (k - 0.72) / 0.28);
        });
    const Shape strut =
        spar({{24, -50, 0}, {34, -51, 0}, {47, -54, 0}}, [](double k) { return mix(13, 9, k); });
    return joined({sweptBack, strut});
}

Shape tailFin() {
    return spar({{18, -48, 0}, {28, -62, 0}, {36, -84, 0}}, [](double k) { return mix(15, 0.8, k * k); });
}

// A stubby nozzle along +x from the axis, its glowing mouth at `reach`.
Shape nozzle(double from, double reach, double size) {
    const Outline tube = {{size * 1.25, from},        {size * 1.25, reach - 5.4}, {size * 0.85, reach - 4.6},
                          {size * 0.85, reach - 3.4}, {size * 1.1, reach - 2.8},  {size * 1.1, reach - 0.5},
                          {size * 0.95, reach},       {size * 0.7, reach}};
    const Outline mouth = {{size * 0.7, reach}, {size * 0.55, reach - 1.6}, {0, reach - 0.9}};
    return turned(joined({painted(lathe(tube, 14), hull::plain), painted(lathe(mouth, 14), hull::coolLamp)}),
                  Axis::z, -pi / 2);
}

// The collar that six nozzles stand on, about the y axis at height 0.
Shape emitterRing(double reach, double size) {
    const double rim = reach - 5;
    const Shape collar = flutedLathe({{rim - 9, -6.5},
                                      {rim - 3, -6},
                                      {rim - 0.8, -4.6},
                                      {rim, -3},
                                      {rim, 3},
                                      {rim - 0.8, 4.6},
                                      {rim - 3, 6},
                                      {rim - 9, 6.5}},
                                     {12, 0.1, 1, -5, 5, 4}, pi / 12);
    return joined({painted(collar, hull::orange),
                   turned(around(nozzle(rim - 4, reach, size), 6, Axis::y), Axis::y, pi / 6)});
}

Shape engine() {
    const Outline bell = {{0, -60},      {7, -62},  {11, -70},   {13.5, -78}, {15, -85.6},
                          {14.8, -86.4}, {14, -86}, {11.5, -80}, {9, -72},    {4, -66}};
    const Outline pod = {{2, -60}, {4.2, -66}, {4.6, -80}, {4.2, -84.4}, {3.2, -84}, {2.4, -77}, {0, -76}};
    const Shape cone = lathe({{0, -82}, {2, -78}, {3, -72}, {0, -70}}, 12);
    const Shape pods = around(moved(insideOut(lathe(pod, 12)), {18.5, 0, 0}), 6, Axis::y);
    return joined({painted(insideOut(lathe(bell, 24)), hull::orange), painted(cone, hull::warmLamp),
                   painted(turned(pods, Axis::y, pi / 6), hull::plain)});
}

}  // namespace

Shape figures::ship() {
    const Shape standing =
        joined({body(), around(blade(), 3, Axis::y), turned(around(tailFin(), 3, Axis::y), Axis::y, pi / 3),
                moved(emitterRing(frontRing, 3.2), {0, emitterZ, 0}),
                moved(emitterRing(rearRing, 4.6), {0, -emitterZ, 0}), engine()});
    // From standing to lying: y becomes -z.
    return turned(standing, Axis::x, -pi / 2);
}

void makeShip(const char* path) {
    writeAml(path, {figures::ship()});
}
