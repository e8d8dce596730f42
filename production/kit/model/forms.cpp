#include "production/kit/model/forms.h"

#include <algorithm>
#include <array>
#include <utility>

namespace model {

Shape grid(int columns, int rows, bool closedColumns, bool closedRows,
           const std::function<Vec(int column, int row)>& place) {
    Shape shape;
    for (int r = 0; r < rows; r++)
        for (int c = 0; c < columns; c++) shape.points.push_back(place(c, r));
    const int across = closedColumns ? columns : columns - 1, up = closedRows ? rows : rows - 1;
    auto uv = [&](int c, int r) { return Uv{double(c) / across, double(r) / up}; };
    auto point = [&](int c, int r) { return (r % rows) * columns + c % columns; };
    for (int r = 0; r < up; r++) {
        for (int c = 0; c < across; c++)
            addFace(shape, {point(c, r), point(c + 1, r), point(c + 1, r + 1), point(c, r + 1)},
                    {uv(c, r), uv(c + 1, r), uv(c + 1, r + 1), uv(c, r + 1)});
    }
    return shape;
}

Shape lathe(const Outline& profile, int sides) {
    return welded(grid(sides, int(profile.size()), true, false, [&](int c, int r) {
        const double angle = 2 * pi * c / sides;
        return Vec{profile[r].x * std::cos(angle), profile[r].y, -profile[r].x * std::sin(angle)};
    }));
}

Shape flutedLathe(const Outline& profile, const Flutes& flutes, double firstAngle) {
    struct Column {
        double angle;
        bool cut;
    };
    std::vector<Column> columns;
    const double turn = 2 * pi / flutes.count, half = flutes.width / 2, edge = flutes.width * 0.2;
    for (int i = 0; i < flutes.count; i++) {
        const double middle = firstAngle + turn * i;
        columns.push_back({middle - half + edge, true});
        columns.push_back({middle + half - edge, true});
        for (int k = 0; k <= flutes.land; k++)
            columns.push_back({middle + half + (turn - flutes.width) * k / flutes.land, false});
    }
    return welded(grid(int(columns.size()), int(profile.size()), true, false, [&](int c, int r) {
        const Flat p = profile[r];
        const bool cut = columns[c].cut && p.y >= flutes.low && p.y <= flutes.high;
        const double radius = std::max(0.0, p.x - (cut ? flutes.depth : 0));
        const double angle = columns[c].angle;
        return Vec{radius * std::cos(angle), p.y, -radius * std::sin(angle)};
    }));
}

Outline platedProfile(const std::vector<double>& cuts, const Plates& plates,
                      const std::function<double(double height)>& radius) {
    Outline profile;
    for (size_t i = 0; i + 1 < cuts.size(); i++) {
        const double low = cuts[i] + plates.gap / 2, high = cuts[i + 1] - plates.gap / 2;
        const double round = std::min(plates.bevel, (high - low) / 3);
        auto edge = [&](double y, double inwards) {
            const double r = radius(y + inwards * round);
            profile.push_back({r - plates.depth, y});
            profile.push_back({r - round * 0.4, y + inwards * round * 0.3});
            if (inwards < 0) std::swap(profile.end()[-1], profile.end()[-2]);
        };
        edge(low, 1);
        const int steps = std::max(1, int(std::lround((high - low - 2 * round) / plates.step)));
        for (int s = 0; s <= steps; s++) {
            const double y = mix(low + round, high - round, double(s) / steps);
            profile.push_back({radius(y), y});
        }
        edge(high, -1);
    }
    return profile;
}

namespace {

struct Frame {
    Vec right, up;
};

// The vector turned about a unit axis (Rodrigues' formula).
Vec turnedAbout(Vec v, Vec axis, double angle) {
    return v * std::cos(angle) + cross(axis, v) * std::sin(angle) +
           axis * (dot(axis, v) * (1 - std::cos(angle)));
}

Vec across(Vec v, Vec axis) {
    return normalized(v - axis * dot(v, axis));
}

Vec tangentAt(const std::vector<Vec>& path, size_t i, bool closed) {
    const size_t count = path.size();
    const size_t before = i > 0 ? i - 1 : (closed ? count - 1 : 0);
    const size_t after = i + 1 < count ? i + 1 : (closed ? 0 : count - 1);
    return normalized(path[after] - path[before]);
}

// Frames carried along the path by the smallest turn from tangent to tangent (Bishop 1975).
std::vector<Frame> framesAlong(const Sweep& how) {
    const size_t count = how.path.size();
    std::vector<Vec> tangents;
    for (size_t i = 0; i < count; i++) tangents.push_back(tangentAt(how.path, i, how.closedPath));
    Vec up = across(how.up, tangents[0]);
    if (length(up) < 0.5) up = across({0.31, 0.45, 0.84}, tangents[0]);
    std::vector<Vec> ups = {up};
    auto carry = [](Vec v, Vec from, Vec to) {
        const Vec axis = cross(from, to);
        const double size = length(axis);
        if (size > 1e-12) v = turnedAbout(v, axis * (1 / size), std::atan2(size, dot(from, to)));
        return across(v, to);
    };
    for (size_t i = 1; i < count; i++) ups.push_back(carry(ups.back(), tangents[i - 1], tangents[i]));
    if (how.closedPath) {
        const Vec end = carry(ups.back(), tangents.back(), tangents[0]);
        const double twist = std::atan2(dot(cross(end, ups[0]), tangents[0]), dot(end, ups[0]));
        for (size_t i = 0; i < count; i++) ups[i] = turnedAbout(ups[i], tangents[i], twist * i / count);
    }
    std::vector<Frame> frames;
    for (size_t i = 0; i < count; i++) frames.push_back({cross(ups[i], tangents[i]), ups[i]});
    return frames;
}

}  // namespace

Shape sweep(const Outline& outline, const Sweep& how) {
    const std::vector<Frame> frames = framesAlong(how);
    const int steps = int(how.path.size()), around = int(outline.size());
    std::vector<Outline> sections;
    for (int i = 0; i < steps; i++) sections.push_back(how.change ? how.change(i, outline) : outline);
    Shape shape = grid(around, steps, true, how.closedPath, [&](int c, int r) {
        return how.path[r] + frames[r].right * sections[r][c].x + frames[r].up * sections[r][c].y;
    });
    if (how.closedPath || !how.capped) return shape;
    std::vector<int> first, last;
    std::vector<Uv> firstUv, lastUv;
    for (int c = 0; c < around; c++) {
        last.push_back((steps - 1) * around + c);
        lastUv.push_back({sections.back()[c].x, sections.back()[c].y});
        first.push_back(around - 1 - c);
        firstUv.push_back({sections[0][around - 1 - c].x, sections[0][around - 1 - c].y});
    }
    addFace(shape, first, firstUv);
    addFace(shape, last, lastUv);
    return shape;
}

Outline insetBy(const Outline& outline, double distance) {
    const size_t count = outline.size();
    Outline inset;
    for (size_t i = 0; i < count; i++) {
        const Flat a = outline[(i + count - 1) % count], b = outline[i], c = outline[(i + 1) % count];
        const double in = std::hypot(b.x - a.x, b.y - a.y), out = std::hypot(c.x - b.x, c.y - b.y);
        const Flat n0 = {-(b.y - a.y) / in, (b.x - a.x) / in}, n1 = {-(c.y - b.y) / out, (c.x - b.x) / out};
        const double k = distance / std::max(0.2, 1 + n0.x * n1.x + n0.y * n1.y);
        inset.push_back({b.x + (n0.x + n1.x) * k, b.y + (n0.y + n1.y) * k});
    }
    return inset;
}

Shape extrude(const Outline& outline, double depth, double bevel) {
    const Outline rim = bevel > 0 ? insetBy(outline, bevel) : outline;
    struct Layer {
        const Outline* outline;
        double z;
    };
    std::vector<Layer> layers = {{&rim, 0}, {&outline, bevel}, {&outline, depth - bevel}, {&rim, depth}};
    if (bevel <= 0) layers = {{&outline, 0}, {&outline, depth}};
    const int around = int(outline.size()), rows = int(layers.size());
    Shape shape = grid(around, rows, true, false, [&](int c, int r) {
        const Flat p = (*layers[r].outline)[c];
        return Vec{p.x, p.y, layers[r].z};
    });
    std::vector<int> back, front;
    for (int c = 0; c < around; c++) {
        back.push_back(around - 1 - c);
        front.push_back((rows - 1) * around + c);
    }
    addFace(shape, back);
    addFace(shape, front);
    return shape;
}

namespace {

// The axes renamed: from x, y, z to y, z, x and so on.
Vec cycled(Vec p, int places) {
    if (places == 0) return p;
    return places == 1 ? Vec{p.z, p.x, p.y} : Vec{p.y, p.z, p.x};
}

}  // namespace

Shape box(Vec size, double bevel, int steps) {
    // Each side is a grid of its flat middle and half of each rounded edge around it. A line of the grid lies
    // at one end of the flat part, and on its edge the normal has turned away from the side's by so much.
    struct Line {
        double end, tangent;
    };
    std::vector<Line> lines;
    for (int i = 0; i <= steps; i++) lines.push_back({-1, -std::tan(pi / 4 * (steps - i) / steps)});
    for (int i = 0; i <= steps; i++) lines.push_back({1, std::tan(pi / 4 * i / steps)});
    const int count = int(lines.size());
    const Vec flat = size * 0.5 - Vec{bevel, bevel, bevel};
    std::vector<Shape> sides;
    for (int axis = 0; axis < 3; axis++) {
        for (const double front : {1.0, -1.0}) {
            sides.push_back(grid(count, count, false, false, [&](int c, int r) {
                const Line &across = lines[front > 0 ? c : count - 1 - c], &up = lines[r];
                const Vec end = cycled({front, across.end, up.end}, axis);
                const Vec round = cycled(normalized(Vec{front, across.tangent, up.tangent}) * bevel, axis);
                return Vec{end.x * flat.x, end.y * flat.y, end.z * flat.z} + round;
            }));
        }
    }
    return welded(joined(sides));
}

Shape icosphere(double radius, int level) {
    const double a = 0.5257311121191336, b = 0.8506508083520400;  // of the unit icosahedron's corners
    Shape shape;
    shape.points = {{-a, 0, b}, {a, 0, b},   {-a, 0, -b}, {a, 0, -b}, {0, b, a},  {0, b, -a},
                    {0, -b, a}, {0, -b, -a}, {b, a, 0},   {-b, a, 0}, {b, -a, 0}, {-b, -a, 0}};
    const std::array<std::array<int, 3>, 20> corners = {
        {{1, 4, 0}, {4, 9, 0},  {4, 5, 9},  {8, 5, 4},  {1, 8, 4},  {1, 10, 8}, {10, 3, 8},
         {8, 3, 5}, {3, 2, 5},  {3, 7, 2},  {3, 10, 7}, {10, 6, 7}, {6, 11, 7}, {6, 0, 11},
         {6, 1, 0}, {10, 1, 6}, {11, 0, 9}, {2, 11, 9}, {5, 2, 9},  {11, 2, 7}}};
    for (const auto& c : corners) addFace(shape, {c[0], c[1], c[2]});
    for (int i = 0; i < level; i++) {
        Shape finer;
        for (const Face& face : shape.faces) {
            const Vec p = shape.points[face.points[0]], q = shape.points[face.points[1]],
                      r = shape.points[face.points[2]];
            const int first = int(finer.points.size());
            for (const Vec& v : {p, q, r, mix(p, q, 0.5), mix(q, r, 0.5), mix(r, p, 0.5)})
                finer.points.push_back(normalized(v));
            for (const auto& [x, y, z] : {std::array{0, 3, 5}, {3, 1, 4}, {5, 4, 2}, {3, 4, 5}})
                addFace(finer, {first + x, first + y, first + z});
        }
        shape = welded(finer);
    }
    return scaled(shape, {radius, radius, radius});
}

Outline chained(const std::vector<Outline>& outlines) {
    Outline whole;
    for (const Outline& outline : outlines) whole.insert(whole.end(), outline.begin(), outline.end());
    return whole;
}

Outline polygon(int sides, double radius) {
    Outline outline;
    for (int i = 0; i < sides; i++) {
        const double angle = 2 * pi * i / sides;
        outline.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return outline;
}

std::vector<Vec> curveThrough(const std::vector<Vec>& points, bool closed, int steps) {
    const int count = int(points.size());
    auto at = [&](int i) {
        if (closed) return points[(i % count + count) % count];
        if (i < 0) return points[0] * 2 - points[1];
        if (i >= count) return points[count - 1] * 2 - points[count - 2];
        return points[i];
    };
    std::vector<Vec> curve;
    for (int i = 0; i < (closed ? count : count - 1); i++) {
        const Vec a = at(i - 1), b = at(i), c = at(i + 1), d = at(i + 2);
        for (int s = 0; s < steps; s++) {
            curve.push_back(curveBetween(a, b, c, d, double(s) / steps));
        }
    }
    if (!closed) curve.push_back(points.back());
    return curve;
}

}  // namespace model
