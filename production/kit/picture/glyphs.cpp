#include "production/kit/picture/glyphs.h"

#include <map>

namespace picture {
namespace {

// The strokes of a letter. Coordinates are in capital heights, y up from the baseline; a breadth factor of 1
// is the thick stroke. Straight strokes that end on the baseline or the cap line run on and are cut there.
enum class Pen {
    Thick,   // straight, from (a, b) to (c, d)
    Thin,    // the same, thin
    Streak,  // a blade from (a, b), broad, to (c, d), a needle
    Bowl,    // an arc round (a, b), radii c and d, from `from` to `to` degrees: thick at its sides, thin
             // elsewhere
    Ring,    // a closed bowl
    Hook,    // the same arc, running evenly from thick at `from` to thin at `to`
    Spine,   // a smooth double bend for S, thick in its middle: no coordinates of its own
    Neck,    // that of 2, thick at its right side: no coordinates either
    Dot,     // a round dot at (a, b)
};

using enum Pen;

struct Stroke {
    Pen pen;
    float a = 0, b = 0, c = 0, d = 0, from = 0, to = 0;
};

const std::map<char32_t, std::vector<Stroke>> alphabet = {
    {U'A', {{Thin, 0.05, 0, 0.42, 1}, {Thick, 0.42, 1, 0.81, 0}, {Streak, 0.66, 0.27, -0.02, 0.27}}},
    {U'B',
     {{Thick, 0.08, 0, 0.08, 1},
      {Thin, 0.08, 1, 0.28, 1},
      {Thin, 0.08, 0.53, 0.3, 0.53},
      {Thin, 0.08, 0, 0.3, 0},
      {Bowl, 0.27, 0.755, 0.24, 0.245, -90, 90},
      {Bowl, 0.29, 0.275, 0.29, 0.275, -90, 90}}},
    {U'C', {{Bowl, 0.48, 0.5, 0.42, 0.5, 48, 312}}},
    {U'D',
     {{Thick, 0.08, 0, 0.08, 1},
      {Thin, 0.08, 1, 0.32, 1},
      {Thin, 0.08, 0, 0.32, 0},
      {Bowl, 0.3, 0.5, 0.46, 0.5, -90, 90}}},
    {U'E',
     {{Thick, 0.08, 0, 0.08, 1},
      {Streak, 0.08, 1, 0.62, 1},
      {Streak, 0.08, 0.53, 0.56, 0.53},
      {Streak, 0.08, 0, 0.66, 0}}},
    {U'F', {{Thick, 0.08, 0, 0.08, 1}, {Streak, 0.08, 1, 0.62, 1}, {Streak, 0.08, 0.5, 0.55, 0.5}}},
    {U'G',
     {{Bowl, 0.48, 0.5, 0.42, 0.5, 48, 318},
      {Thick, 0.79, 0.12, 0.79, 0.45},
      {Streak, 0.87, 0.42, 0.44, 0.42}}},
    {U'H', {{Thick, 0.08, 0, 0.08, 1}, {Thick, 0.74, 0, 0.74, 1}, {Streak, 0.08, 0.52, 0.74, 0.52}}},
    {U'I', {{Thick, 0.08, 0, 0.08, 1}}},
    {U'J', {{Thick, 0.46, 1, 0.46, 0.32}, {Hook, 0.2, 0.33, 0.26, 0.33, 360, 196}}},
    {U'K', {{Thick, 0.08, 0, 0.08, 1}, {Thin, 0.12, 0.38, 0.66, 1}, {Thick, 0.28, 0.59, 0.74, 0}}},
    {U'L', {{Thick, 0.08, 0, 0.08, 1}, {Streak, 0.08, 0, 0.68, 0}}},
    {U'M',
     {{Thin, 0.06, 0, 0.1, 1},
      {Thick, 0.11, 1, 0.48, 0},
      {Thin, 0.48, 0, 0.85, 1},
      {Thick, 0.86, 1, 0.9, 0}}},
    {U'N', {{Thin, 0.06, 0, 0.06, 1}, {Thick, 0.08, 1, 0.72, 0}, {Thin, 0.74, 0, 0.74, 1}}},
    {U'O', {{Ring, 0.5, 0.5, 0.44, 0.5}}},
    {U'P',
     {{Thick, 0.08, 0, 0.08, 1},
      {Thin, 0.08, 1, 0.3, 1},
      {Thin, 0.08, 0.48, 0.3, 0.48},
      {Bowl, 0.28, 0.725, 0.29, 0.275, -90, 90}}},
    {U'Q', {{Ring, 0.5, 0.5, 0.44, 0.5}, {Streak, 0.52, 0.2, 1.04, -0.12}}},
    {U'R',
     {{Thick, 0.08, 0, 0.08, 1},
      {Thin, 0.08, 1, 0.3, 1},
      {Thin, 0.08, 0.5, 0.3, 0.5},
      {Bowl, 0.28, 0.735, 0.27, 0.265, -90, 90},
      {Thick, 0.32, 0.47, 0.68, 0}}},
    {U'S', {{Spine}}},
    {U'T', {{Thick, 0.38, 0, 0.38, 1}, {Streak, 0.02, 1, 0.8, 1}}},
    {U'U',
     {{Thick, 0.08, 1, 0.08, 0.36}, {Thin, 0.66, 1, 0.66, 0.36}, {Hook, 0.37, 0.37, 0.29, 0.37, 180, 360}}},
    {U'V', {{Thick, 0.04, 1, 0.42, 0}, {Thin, 0.42, 0, 0.79, 1}}},
    {U'W',
     {{Thick, 0.04, 1, 0.33, 0},
      {Thin, 0.33, 0, 0.6, 1},
      {Thick, 0.6, 1, 0.89, 0},
      {Thin, 0.89, 0, 1.16, 1}}},
    {U'X', {{Thick, 0.06, 1, 0.7, 0}, {Thin, 0.08, 0, 0.68, 1}}},
    {U'Y', {{Thick, 0.04, 1, 0.39, 0.44}, {Thin, 0.37, 0.44, 0.74, 1}, {Thick, 0.38, 0, 0.38, 0.5}}},
    {U'Z', {{Streak, 0.7, 1, 0.02, 1}, {Thick, 0.62, 1, 0.1, 0}, {Streak, 0.02, 0, 0.76, 0}}},
    {U'0', {{Ring, 0.4, 0.5, 0.32, 0.5}}},
    {U'1', {{Thick, 0.3, 0, 0.3, 1}, {Thin, 0.3, 0.98, 0.06, 0.78}}},
    {U'2', {{Neck}, {Streak, 0.02, 0, 0.68, 0}}},
    {U'3', {{Bowl, 0.3, 0.755, 0.24, 0.245, -90, 150}, {Bowl, 0.3, 0.275, 0.28, 0.275, -150, 90}}},
    {U'4', {{Thick, 0.54, 0, 0.54, 1}, {Thin, 0.52, 1, 0.04, 0.28}, {Streak, 0.02, 0.27, 0.76, 0.27}}},
    {U'5', {{Thin, 0.12, 1, 0.1, 0.5}, {Streak, 0.1, 1, 0.62, 1}, {Bowl, 0.3, 0.31, 0.28, 0.31, -150, 135}}},
    {U'6', {{Ring, 0.36, 0.31, 0.28, 0.31}, {Hook, 0.6, 0.3, 0.52, 0.7, 180, 92}}},
    {U'7', {{Streak, 0.64, 1, 0, 1}, {Thick, 0.6, 1, 0.22, 0}}},
    {U'8', {{Ring, 0.36, 0.755, 0.24, 0.245}, {Ring, 0.36, 0.275, 0.28, 0.275}}},
    {U'9', {{Ring, 0.36, 0.69, 0.28, 0.31}, {Hook, 0.12, 0.7, 0.52, 0.7, 0, -88}}},
    {U'.', {{Dot, 0.1, 0.07}}},
    {U',', {{Dot, 0.1, 0.07}, {Thin, 0.13, 0.06, 0.05, -0.12}}},
    {U':', {{Dot, 0.1, 0.07}, {Dot, 0.1, 0.55}}},
    {U';', {{Dot, 0.1, 0.55}, {Dot, 0.1, 0.07}, {Thin, 0.13, 0.06, 0.05, -0.12}}},
    {U'!', {{Dot, 0.1, 0.07}, {Streak, 0.1, 1, 0.1, 0.24}}},
    {U'?', {{Dot, 0.28, 0.07}, {Bowl, 0.3, 0.73, 0.25, 0.27, -70, 160}, {Thin, 0.34, 0.49, 0.28, 0.24}}},
    {U'\'', {{Streak, 0.08, 1, 0.08, 0.66}}},
    {U'-', {{Streak, 0.04, 0.46, 0.48, 0.46}}},
    {U'+', {{Thin, 0.06, 0.46, 0.56, 0.46}, {Thin, 0.31, 0.21, 0.31, 0.71}}},
    {U'/', {{Thin, 0.04, -0.08, 0.46, 1.08}}},
    {U'(', {{Hook, 0.5, 0.5, 0.4, 0.68, 180, 120}, {Hook, 0.5, 0.5, 0.4, 0.68, 180, 240}}},
    {U')', {{Hook, -0.1, 0.5, 0.4, 0.68, 0, 60}, {Hook, -0.1, 0.5, 0.4, 0.68, 0, -60}}},
    {U'&',
     {{Ring, 0.36, 0.77, 0.18, 0.23},
      {Bowl, 0.34, 0.28, 0.26, 0.28, 90, 330},
      {Thick, 0.24, 0.68, 0.8, 0},
      {Thin, 0.56, 0.12, 0.76, 0.46}}},
};

// Sutherland and Hodgman, "Reentrant polygon clipping", 1974: keeps what lies below (or above) a level.
Contour clippedAt(const Contour& outline, float level, bool keepBelow) {
    Contour kept;
    auto side = [&](Point p) { return keepBelow ? level - p.y : p.y - level; };
    for (size_t i = 0; i < outline.size(); i++) {
        const Point from = outline[i], to = outline[(i + 1) % outline.size()];
        if (side(from) >= 0) kept.push_back(from);
        if ((side(from) >= 0) != (side(to) >= 0))
            kept.push_back(from + (to - from) * (side(from) / (side(from) - side(to))));
    }
    return kept;
}

bool onLine(float y) {
    return y == 0 || y == 1;
}

Contour straight(const Stroke& stroke, float halfFrom, float halfTo) {
    Point from = {stroke.a, stroke.b}, to = {stroke.c, stroke.d};
    Point along = (to - from) * (1 / length(to - from));
    const bool lying = from.y == to.y;
    if (lying && onLine(from.y)) halfFrom *= 2, halfTo *= 2;
    const float runOn = lying ? 0 : 0.3f;
    if (onLine(stroke.b)) from = from - along * runOn;
    if (onLine(stroke.d)) to = to + along * runOn;
    const Point across = {-along.y, along.x};
    Contour outline = {from + across * halfFrom, to + across * halfTo, to - across * halfTo,
                       from - across * halfFrom};
    if (onLine(stroke.b) || onLine(stroke.d)) outline = clippedAt(clippedAt(outline, 1, true), 0, false);
    return outline;
}

// A band along a chain of points, of the half breadth given at each.
Contour band(const std::vector<Point>& chain, const std::vector<float>& half) {
    Contour left, right;
    for (size_t i = 0; i < chain.size(); i++) {
        const Point along = chain[std::min(i + 1, chain.size() - 1)] - chain[i > 0 ? i - 1 : 0];
        const Point across = Point{-along.y, along.x} * (half[i] / length(along));
        left.push_back(chain[i] + across);
        right.push_back(chain[i] - across);
    }
    left.insert(left.end(), right.rbegin(), right.rend());
    return left;
}

Contour arc(const Stroke& stroke, Cut cut) {
    const int steps = 28;
    std::vector<Point> chain;
    std::vector<float> half;
    for (int i = 0; i <= steps; i++) {
        const float k = float(i) / steps;
        const float angle = mix(stroke.from, stroke.to, k) * degree;
        const float c = std::cos(angle), s = std::sin(angle);
        const float thickness = stroke.pen == Hook ? 1 - smoothstep(0, 1, k) : std::pow(std::fabs(c), 1.4f);
        half.push_back(mix(cut.thin, cut.thick, thickness));
        // The outer edge keeps to the height whatever the breadth; the sides keep their middle line.
        const float inset = stroke.pen == Hook ? half.back() : cut.thin;
        chain.push_back({stroke.a + stroke.c * c, stroke.b + (stroke.d - inset) * s});
    }
    return band(chain, half);
}

// A place that a smooth stroke goes through, and how thick it is there, 0 to 1.
struct Knot {
    Point place;
    float thickness;
};

// Two three-quarter bends of an S that meet in its thick middle.
const std::vector<Knot> spine = {
    {{0.58f, 0.83f}, 0.25f},  {{0.50f, 0.945f}, 0.15f}, {{0.35f, 1}, 0},       {{0.175f, 0.935f}, 0.25f},
    {{0.115f, 0.775f}, 0.7f}, {{0.19f, 0.625f}, 0.95f}, {{0.355f, 0.515f}, 1}, {{0.53f, 0.40f}, 0.95f},
    {{0.60f, 0.24f}, 0.7f},   {{0.53f, 0.07f}, 0.25f},  {{0.34f, 0}, 0},       {{0.165f, 0.05f}, 0.15f},
    {{0.06f, 0.19f}, 0.25f}};
// A bowl that runs out into a straight stroke to the foot.
const std::vector<Knot> neck = {{{0.08f, 0.78f}, 0.7f},   {{0.165f, 0.935f}, 0.3f}, {{0.33f, 1}, 0},
                                {{0.515f, 0.925f}, 0.5f}, {{0.585f, 0.74f}, 0.95f}, {{0.53f, 0.555f}, 0.8f},
                                {{0.41f, 0.40f}, 0.45f},  {{0.24f, 0.20f}, 0.1f},   {{0.085f, 0.015f}, 0}};

Contour smooth(const std::vector<Knot>& knots, Cut cut) {
    std::vector<Point> chain;
    std::vector<float> half;
    const int last = int(knots.size()) - 1, steps = 6;
    auto knot = [&](int i) {
        Point p = knots[std::clamp(i, 0, last)].place;
        p.y = mix(cut.thin, 1 - cut.thin, p.y);
        return p;
    };
    for (int i = 0; i < last * steps; i++) {
        const int k = i / steps;
        const float u = float(i % steps) / steps;
        chain.push_back(curveBetween(knot(k - 1), knot(k), knot(k + 1), knot(k + 2), u));
        half.push_back(mix(cut.thin, cut.thick, mix(knots[k].thickness, knots[k + 1].thickness, u)));
    }
    chain.push_back(knot(last));
    half.push_back(mix(cut.thin, cut.thick, knots[last].thickness));
    return band(chain, half);
}

Contour dot(const Stroke& stroke, Cut cut) {
    Contour outline;
    for (int i = 0; i < 20; i++)
        outline.push_back(Point{stroke.a, stroke.b} +
                          turned({std::fmax(cut.thick, 0.07f) * 1.05f, 0}, i * pi / 10));
    return outline;
}

// A ring is two halves that overlap, so that no seam shows in the distances.
void addStroke(std::vector<Contour>& outlines, const Stroke& s, Cut cut) {
    const auto add = [&](Contour outline) { outlines.push_back(std::move(outline)); };
    if (s.pen == Thick) add(straight(s, cut.thick, cut.thick));
    if (s.pen == Thin) add(straight(s, cut.thin, cut.thin));
    if (s.pen == Streak) add(straight(s, mix(cut.thin, cut.thick, 0.45f), cut.thin * 0.35f));
    if (s.pen == Bowl || s.pen == Hook) add(arc(s, cut));
    if (s.pen == Ring) add(arc({Bowl, s.a, s.b, s.c, s.d, 85, 275}, cut));
    if (s.pen == Ring) add(arc({Bowl, s.a, s.b, s.c, s.d, -95, 95}, cut));
    if (s.pen == Spine) add(smooth(spine, cut));
    if (s.pen == Neck) add(smooth(neck, cut));
    if (s.pen == Dot) add(dot(s, cut));
}

}  // namespace

Glyph glyphOf(char32_t letter, Cut cut) {
    Glyph glyph;
    const char32_t base = letter == U'Ä' || letter == U'Å' ? U'A' : letter == U'Ö' ? U'O' : letter;
    const auto known = alphabet.find(base);
    glyph.blank = known == alphabet.end();
    if (glyph.blank) return glyph;
    glyph.boxed = !(base >= U'0' && base <= U'9') && !(base >= U'A' && base <= U'Z');
    for (const Stroke& stroke : known->second) addStroke(glyph.parts, stroke, cut);
    const float middle = base == U'A' ? 0.43f : 0.50f;
    if (letter == U'Å') {
        addStroke(glyph.parts, {Ring, middle, 1.20, 0.10, 0.12}, {cut.thin, cut.thin});
    } else if (base != letter) {
        for (float side : {-0.17f, 0.17f}) addStroke(glyph.parts, {Dot, middle + side, 1.20}, cut);
    }
    return glyph;
}

}  // namespace picture
