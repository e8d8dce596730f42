// The ship of the laser corridor: a dart of plates between two rings of emitters, nose towards -z, since the
// tunnel streams to +z. Six beams leave each ring at 30, 90, 150 ... degrees round the z axis.
#include <algorithm>

#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
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

Shape hull() {
    const Outline plates =
        platedProfile({-80, -70, -62, -42, -30, -20, -11, -3, 5, 13, 22, 32, 46, 58, 66, 74, 81, 89.5},
                      {1.8, 1.6, 1.1, 9}, hullRadius);
    Outline profile = {{0, -74}, {hullRadius(-80) - 4, -74}, {hullRadius(-80) - 3, -80}};
    profile.insert(profile.end(), plates.begin(), plates.end());
    profile.push_back({0, 91});
    return flutedLathe(profile, {6, 0.16, 1.4, -66, 62, 4}, 0);
}

// A lens-shaped spar along a path in the plane of x (outwards) and y; `chord` gives its width at 0..1 of the
// path, its thickness is a fixed part of that.
Shape spar(const std::vector<Vec>& path, const std::function<double(double)>& chord) {
    Sweep how;
    how.path = curveThrough(path, false, 5);
    how.up = {0, 0, 1};
    const double last = static_cast<double>(how.path.size() - 1);
    how.change = [&](int step, Outline lens) {
        const double width = chord(step / last);
        for (Flat& p : lens) p = {p.x * width, p.y * (1.2 + width * 0.17)};
        return lens;
    };
    // Sharp at the leading and trailing edge, domed between.
    return sweep({{0.5, 0},
                  {0.42, 0.36},
                  {0.22, 0.6},
                  {0, 0.68},
                  {-0.22, 0.6},
                  {-0.42, 0.36},
                  {-0.5, 0},
                  {-0.42, -0.36},
                  {-0.22, -0.6},
                  {0, -0.68},
                  {0.22, -0.6},
                  {0.42, -0.36}},
                 how);
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

// A stubby nozzle along +x from the axis, its mouth at `reach`.
Shape nozzle(double from, double reach, double size) {
    const Outline profile = {{size * 1.25, from},        {size * 1.25, reach - 5.4},
                             {size * 0.85, reach - 4.6}, {size * 0.85, reach - 3.4},
                             {size * 1.1, reach - 2.8},  {size * 1.1, reach - 0.5},
                             {size * 0.95, reach},       {size * 0.7, reach},
                             {size * 0.55, reach - 1.6}, {0, reach - 0.9}};
    return turned(lathe(profile, 14), Axis::z, -pi / 2);
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
    return joined({collar, turned(around(nozzle(rim - 4, reach, size), 6, Axis::y), Axis::y, pi / 6)});
}

Shape engine() {
    const Outline bell = {{4, -66},    {9, -72},    {11.5, -80}, {14, -86}, {14.8, -86.4},
                          {15, -85.6}, {13.5, -78}, {11, -70},   {7, -62},  {0, -60}};
    const Outline pod = {{0, -76}, {2.4, -77}, {3.2, -84}, {4.2, -84.4}, {4.6, -80}, {4.2, -66}, {2, -60}};
    return joined({lathe({bell.rbegin(), bell.rend()}, 24),
                   lathe({{0, -70}, {3, -72}, {2, -78}, {0, -82}}, 12),
                   turned(around(moved(lathe(pod, 12), {18.5, 0, 0}), 6, Axis::y), Axis::y, pi / 6)});
}

}  // namespace

void makeShip(const char* path) {
    const Shape whole =
        joined({hull(), around(blade(), 3, Axis::y), turned(around(tailFin(), 3, Axis::y), Axis::y, pi / 3),
                moved(emitterRing(frontRing, 3.2), {0, emitterZ, 0}),
                moved(emitterRing(rearRing, 4.6), {0, -emitterZ, 0}), engine()});
    // From standing to lying: y becomes -z, and a corner of the emitter hexagon comes to 90 degrees.
    writeAml(path, {mappedBox(turned(turned(whole, Axis::x, -pi / 2), Axis::z, pi / 2), 48)});
}
