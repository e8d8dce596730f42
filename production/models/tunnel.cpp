// One segment of the tunnel, drawn and traced: twelve columns of coffers and wedges in two bays between ribs.
// Segments follow each other 300 units apart along z, each turned 0.8 radian against the last towards -z; the
// columns wind by just that much, so that they run on from segment to segment as one rifled bore.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr double halfLength = 150;
constexpr double turnPerUnit = -0.8 / 300;  // radians along z
constexpr int columns = 12;
constexpr int split = 2;  // flat strips of a rib to each column
constexpr double wallRadius = 286;
constexpr double ribRadius = 270;

// Where a ring of the wall meets column `c` (of `columns` x `split`), columns running backwards round z so
// that the front faces the axis.
Vec onBore(double column, double radius, double z) {
    const double angle = -2 * pi * column / columns;
    return {radius * std::cos(angle), radius * std::sin(angle), z};
}

struct Station {
    double radius, z;
};

// A band of the bore from station to station.
Shape band(const std::vector<Station>& stations) {
    return grid(columns * split, int(stations.size()), true, false,
                [&](int c, int r) { return onBore(double(c) / split, stations[r].radius, stations[r].z); });
}

// One panel between two ribs: an outline at the wall, and an inner plate whose corners stand at radii of
// their own, so that it tilts and throws beams out of their plane. The outline's ends bend where the ribs do.
Shape panel(int column, double low, double high, const double (&plate)[4]) {
    const double edgeAcross = 0.17, edgeAlong = 19;
    Shape shape;
    auto addPoint = [&](double across, double radius, double z) {
        shape.points.push_back(onBore(column + across, radius, z));
    };
    for (int i = 0; i <= split; i++) addPoint(double(i) / split, wallRadius, low);
    for (int i = split; i >= 0; i--) addPoint(double(i) / split, wallRadius, high);
    addPoint(edgeAcross, plate[0], low + edgeAlong);
    addPoint(1 - edgeAcross, plate[1], low + edgeAlong);
    addPoint(1 - edgeAcross, plate[2], high - edgeAlong);
    addPoint(edgeAcross, plate[3], high - edgeAlong);
    const int highLeft = 2 * split + 1, lowPlate = highLeft + 1;
    addFace(shape, {0, 1, 2, lowPlate + 1, lowPlate});
    addFace(shape, {split, split + 1, lowPlate + 2, lowPlate + 1});
    addFace(shape, {split + 1, split + 2, highLeft, lowPlate + 3, lowPlate + 2});
    addFace(shape, {highLeft, 0, lowPlate, lowPlate + 3});
    addFace(shape, {lowPlate, lowPlate + 1, lowPlate + 2, lowPlate + 3});
    return shape;
}

// Each column of faces shows the picture's left half, where the tunnel's plates are.
Shape inLeftHalf(Shape shape) {
    for (Face& face : shape.faces) {
        double first = face.uvs[0].s;
        for (const Uv& uv : face.uvs) first = std::min(first, uv.s);
        for (Uv& uv : face.uvs) uv.s = (uv.s - std::floor(first + 1e-6)) / 2;
    }
    return shape;
}

}  // namespace

void makeTunnel(const char* path) {
    std::vector<Shape> parts;
    // Coffers lean one way and wedges the other, and the second bay is the first turned over.
    const double coffer[4] = {299, 299, 292, 292}, wedge[4] = {276, 276, 264, 264};
    const double cofferBack[4] = {292, 292, 299, 299}, wedgeBack[4] = {264, 264, 276, 276};
    for (int column = 0; column < columns; column++) {
        parts.push_back(panel(column, -134, -8, column % 2 ? wedge : coffer));
        parts.push_back(panel(column, 8, 134, column % 2 ? cofferBack : wedgeBack));
    }
    parts.push_back(band({{wallRadius, -8}, {ribRadius + 6, -4}, {ribRadius + 6, 4}, {wallRadius, 8}}));
    parts.push_back(band({{ribRadius, -halfLength}, {ribRadius, -142}, {wallRadius, -134}}));
    parts.push_back(band({{wallRadius, 134}, {ribRadius, 142}, {ribRadius, halfLength}}));
    // Wound after it is mapped, so that the texture winds along and meets the next segment's.
    const Shape straight =
        smoothed(inLeftHalf(mappedCylinder(joined(parts), Axis::z, columns, halfLength)), 0.9);
    const Shape wound = bent(straight, [](Vec p) {
        const double c = std::cos(turnPerUnit * p.z), s = std::sin(turnPerUnit * p.z);
        return Vec{c * p.x - s * p.y, s * p.x + c * p.y, p.z};
    });
    // Shaded as if plates looked along the tunnel: at their flat angle they would throw back what lies beyond
    // them, which is what lights outlines, and fill the screen with it.
    writeAml(path, {shaded(wound, [](Vec, Vec normal) { return Vec{0, 0, -1} + normal * 0.2; })});
}
