// One segment of the tunnel, drawn and traced: a bore of long mirrors, most of them hidden, planks that stand
// out before dark walls and between hoops, and one lit ring. The next segment begins where it ends,
// towards -z, turned on.
#include <algorithm>

#include "effects/fitting.h"
#include "production/kit/model/aml.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

constexpr double halfLength = fitting::segmentLength / 2,
                 twist = fitting::twistPerSegment * fitting::twistRadians;
constexpr int columns = 12, split = 3;  // round edges have so many points to each column
// Each tooth of the bore widens away from the viewer, by as much as throws a beam ahead of the ship: after
// two or three walls it leaves along the tunnel, and the ship stays free. Nothing comes nearer than 283 to
// the axis: the heap's camera would pass through it, and see the backs of what is hidden.
constexpr int teeth = 7;
constexpr double narrow = 293, wide = 306.2;  // radius of the columns' joints
constexpr double ringRadius = 284, endRadius = 292.5;
// The round ends are one with the next segment's by turning this much along a segment: what is left of
// its twist after whole strips.
constexpr double leftTurn = twist - 5 * 2 * pi / (columns * split);

struct Station {
    double radius, z;
    bool round = false;  // or only the columns' joints
};

// Columns run backwards round z so that the front faces the axis.
Vec onBore(double column, const Station& station) {
    const double angle = -2 * pi * column / columns - leftTurn * station.z / (2 * halfLength);
    return {station.radius * std::cos(angle), station.radius * std::sin(angle), station.z};
}

// Columns with a smooth plate behind all their hidden teeth, so that its long edges are straight: the beams
// meet the teeth before it.
constexpr int planks[] = {3, 7, 11}, plankPieces = 2;
constexpr double plankRadius = 294.5, wallRadius = 306.8;
// A slat, not a wall: the glow on a beat makes a bright field of each that catches a light.
constexpr double plankMargin = 0.458;  // columns, on either side

// The lit riser behind so many teeth.
Patch hoop(int tooth) {
    const double up = double(tooth) / teeth;
    return {walls::rail.at(0, up), walls::rail.at(1, up)};
}

class Bore {
public:
    // One column between two stations, `low` nearer to -z. Hidden ones face outwards: they are culled, and
    // mirrors all the same.
    void add(int column, const Station& low, const Station& high, bool hidden, const Patch& patch) {
        std::vector<int> points;
        std::vector<Uv> uvs;
        addEdge(column, low, false, patch, points, uvs);
        addEdge(column, high, true, patch, points, uvs);
        if (hidden) {
            std::reverse(points.begin(), points.end());
            uvs.assign(uvs.size(), patch.low);
        }
        addFace(shape, points, uvs);
    }
    void addAll(const Station& low, const Station& high, bool hidden, const Patch& patch) {
        for (int column = 0; column < columns; column++) {
            if (!low.round || !high.round) {
                add(column, low, high, hidden, patch);
                continue;
            }
            for (int i = 0; i < split; i++) addStrip(column + double(i) / split, low, high, patch);
        }
    }

    // A strip behind the mirrors, where no beam meets it, from one column to another. Its back closes it like
    // all that is traced.
    void addBacked(double from, double to, const Station& low, const Station& high, const Patch& patch) {
        const int first = int(shape.points.size());
        for (const Vec& p : {onBore(from, low), onBore(to, low), onBore(to, high), onBore(from, high)})
            shape.points.push_back(p);
        const auto& [begin, end] = patch;
        addFace(shape, {first, first + 1, first + 2, first + 3},
                {begin, {end.x, begin.y}, end, {begin.x, end.y}});
        addFace(shape, {first, first + 3, first + 2, first + 1}, {begin, begin, begin, begin});
    }

    Shape shape;

private:
    void addEdge(int column, const Station& station, bool back, const Patch& patch, std::vector<int>& points,
                 std::vector<Uv>& uvs) {
        const int steps = station.round ? split : 1;
        for (int i = 0; i <= steps; i++) {
            const double across = double(back ? steps - i : i) / steps;
            points.push_back(int(shape.points.size()));
            shape.points.push_back(onBore(column + across, station));
            uvs.push_back(patch.at(across, back ? 1 : 0));
        }
    }
    void addStrip(double column, const Station& low, const Station& high, const Patch& patch) {
        const int first = int(shape.points.size());
        const double next = column + 1.0 / split;
        for (const Vec& p :
             {onBore(column, low), onBore(next, low), onBore(next, high), onBore(column, high)})
            shape.points.push_back(p);
        const auto& [from, to] = patch;
        addFace(shape, {first, first + 1, first + 2, first + 3}, {from, {to.x, from.y}, to, {from.x, to.y}});
    }
};

}  // namespace

void makeTunnel(const char* path) {
    Bore bore, frame, walling;
    const double end = -halfLength + 4, begin = halfLength - 24, length = (begin - end) / teeth;
    bore.addAll({endRadius, -halfLength, true}, {wide, end, false}, true, walls::rib);
    for (int tooth = 0; tooth < teeth; tooth++) {
        const double low = end + length * tooth, high = low + length;
        const Station from = {wide, low, false}, to = {narrow, high - 2, false}, next = {wide, high, false};
        for (int column = 0; column < columns; column++) {
            bore.add(column, from, to, true, walls::panel);
            // All but one are hidden, so that the far end of the tunnel is no pale haze.
            frame.add(column, to, next, tooth != 3, hoop(tooth + 1));
        }
    }
    for (const int column : planks)
        for (int i = 0; i < plankPieces; i++) {
            const double from = double(i) / plankPieces, to = double(i + 1) / plankPieces;
            bore.addBacked(column + plankMargin, column + 1 - plankMargin,
                           {plankRadius, mix(end, begin, from)}, {plankRadius, mix(end, begin, to)},
                           {walls::panel.at(0, from), walls::panel.at(1, to)});
        }
    // Only every third is lit, since the glow on a beat lifts all that is: between them it is night.
    for (int column = 0; column < columns; column++)
        walling.addBacked(column, column + 1, {wallRadius, end}, {wallRadius, begin},
                          column % 3 == 0 ? walls::wall : Patch{walls::rib.low, walls::rib.low});
    // The ring, before the segment's other end. Its near flank is hidden: on a beat its sheen filled the
    // screen.
    bore.addAll({wide, begin, false}, {ringRadius + 2, begin + 1, true}, false, walls::rib);
    bore.addAll({ringRadius + 2, begin + 1, true}, {ringRadius, begin + 11, true}, false, walls::light);
    bore.addAll({ringRadius, begin + 11, true}, {narrow, begin + 18, false}, false, walls::rib);
    bore.addAll({narrow, begin + 18, false}, {endRadius, halfLength, true}, true, walls::rib);

    // Shaded so that who looks at the ship finds little of what lies beyond a thing thrown back: that is what
    // lights outlines, and would fill the screen.
    const auto leaning = [](Vec p, double angle) {
        const double lean = degrees(angle);
        return normalized(Vec{-p.x, -p.y, 0}) * std::cos(lean) + Vec{0, 0, 1} * std::sin(lean);
    };
    const Shape lit = shaded(welded(bore.shape), [&](Vec p, Vec normal) {
        const bool ring = std::hypot(p.x, p.y) < ringRadius + 4;
        return leaning(p, normal.z < -0.3 ? (ring ? -100 : -112) : ring ? 60 : 30);
    });
    // The frame is turned away from the corridor's light, so that its paint stands out before the stripes
    // only, where nothing is lit.
    const Shape dim = shaded(welded(frame.shape), [&](Vec p, Vec) { return leaning(p, -100); });
    // Walls look along the tunnel and a little aside, where viewers find next to nothing thrown back from
    // ahead and from behind: what shows is their paint, in the light that falls along it.
    const Shape dark = shaded(welded(walling.shape), [&](Vec p, Vec) {
        const double lean = degrees(73), aside = degrees(-68);
        const Vec inward = normalized(Vec{-p.x, -p.y, 0}), along = {inward.y * -1, inward.x, 0};
        return (inward * std::cos(aside) + along * std::sin(aside)) * std::cos(lean) +
               Vec{0, 0, std::sin(lean)};
    });
    writeAml(path, {joined({lit, dim, dark})});
}
