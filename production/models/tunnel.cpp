// One segment of the tunnel, drawn and traced: a bore of long mirrors that nobody sees, before the painted
// bays of an arcade, and a broad rib that carries lamps. The next segment begins where it ends, towards -z,
// turned on.
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
constexpr int teeth = 6;
constexpr double narrow = 293, wide = 306.2, wallRadius = 306.8;  // radius of the columns' joints
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

// More than half of it is night, which winds round the ship with the turn of the segments: the glow on a beat
// lifts all that is lit, and its surroundings.
constexpr bool isLit(int column) {
    return (column + 5) % columns < 5;
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
    // In the night all is hidden: even black throws back lamps.
    void addAll(const Station& low, const Station& high, bool hidden, const Patch& patch) {
        for (int column = 0; column < columns; column++) {
            const bool unseen = hidden || !isLit(column);
            if (!low.round || !high.round) {
                add(column, low, high, unseen, patch);
                continue;
            }
            for (int i = 0; i < split; i++) {
                const double from = double(i) / split, to = double(i + 1) / split;
                addStrip(column + from, low, high, unseen, {patch.at(from, 0), patch.at(to, 1)});
            }
        }
    }

    // The step from one mirror to the next. Whoever looks from ahead of the ship sees its back stand before
    // the bays: what it hides of them is painted on it, the other way round, which bays don't show.
    void addStep(int column, const Station& low, const Station& high, const Patch& patch) {
        std::vector<int> points;
        std::vector<Uv> uvs;
        addEdge(column, low, false, {patch.at(1, 0), patch.at(0, 1)}, points, uvs);
        addEdge(column, high, true, {patch.at(1, 0), patch.at(0, 1)}, points, uvs);
        std::reverse(points.begin(), points.end()), std::reverse(uvs.begin(), uvs.end());
        addFace(shape, points, uvs);
    }

    // A strip behind the mirrors, where no beam meets it. Its back closes it like all that is traced.
    void addBacked(int column, const Station& low, const Station& high, const Patch& patch) {
        add(column, low, high, false, patch);
        add(column, low, high, true, walls::black);
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
    void addStrip(double column, const Station& low, const Station& high, bool hidden, const Patch& patch) {
        const int first = int(shape.points.size());
        const double next = column + 1.0 / split;
        for (const Vec& p :
             {onBore(column, low), onBore(next, low), onBore(next, high), onBore(column, high)})
            shape.points.push_back(p);
        const auto& [from, to] = patch;
        std::vector<int> points = {first, first + 1, first + 2, first + 3};
        if (hidden) std::reverse(points.begin(), points.end());
        addFace(shape, points, {from, {to.x, from.y}, to, {from.x, to.y}});
    }
};

constexpr double end = -halfLength + 4, begin = halfLength - 63;  // of the bays

Patch bayBetween(int column, double low, double high) {
    const Patch& bay = column % 2 == 0 ? walls::bay : walls::gallery;
    const auto up = [](double z) { return std::min(1.0, (z - end) / (begin - end)); };
    return {bay.at(0, up(low)), bay.at(1, up(high))};
}

}  // namespace

void makeTunnel(const char* path) {
    Bore bore;
    constexpr double length = (begin - end) / teeth;
    bore.addAll({endRadius, -halfLength, true}, {wide, end, false}, true, walls::black);
    for (int tooth = 0; tooth < teeth; tooth++) {
        const double low = end + length * tooth, high = low + length;
        const Station from = {wide, low, false}, to = {narrow, high - 2, false}, next = {wide, high, false};
        bore.addAll(from, to, true, walls::black);
        for (int column = 0; column < columns; column++)
            if (isLit(column))
                bore.addStep(column, to, next, bayBetween(column, high, high + 16));
            else
                bore.add(column, to, next, true, walls::black);
    }
    for (int column = 0; column < columns; column++)
        if (isLit(column))
            bore.addBacked(column, {wallRadius, end}, {wallRadius, begin}, bayBetween(column, end, begin));
    // The rib, before the segment's other end. Its near flank is hidden: on a beat its sheen filled the
    // screen.
    bore.addAll({wide, begin, false}, {ringRadius + 2, begin + 1, true}, true, walls::black);
    bore.addAll({ringRadius + 2, begin + 1, true}, {ringRadius, halfLength - 13, true}, false, walls::rib);
    bore.addAll({ringRadius, halfLength - 13, true}, {narrow, halfLength - 6, false}, false, walls::black);
    bore.addAll({narrow, halfLength - 6, false}, {endRadius, halfLength, true}, true, walls::black);

    // All of a kind is lit as if it looked one way, mostly along the tunnel, which was found by search:
    // viewers find little thrown back there, and no facet shows. All shading is paint.
    const auto lit = [](const Bore& part, double leaning, double turned) {
        const double lean = degrees(leaning), aside = degrees(turned);
        return litAs(welded(part.shape), [=](Vec p) {
            const Vec inward = normalized(Vec{-p.x, -p.y, 0}), along = {inward.y * -1, inward.x, 0};
            return (inward * std::cos(aside) + along * std::sin(aside)) * std::cos(lean) +
                   Vec{0, 0, std::sin(lean)};
        });
    };
    writeAml(path, {lit(bore, 73, -68)});
}
