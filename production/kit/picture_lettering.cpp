#include "production/kit/picture_lettering.h"

#include <array>
#include <map>

namespace {

// The strokes of a letter. Coordinates are in capital heights, y up from the baseline; a breadth factor of 1
// is the thick stroke. Straight strokes that end on the baseline or the cap line run on and are cut there.
enum class Pen {
    Thick,   // straight, from (a, b) to (c, d)
    Thin,    // the same, thin
    Streak,  // a blade from (a, b), broad, to (c, d), a needle
    Bowl,    // an arc round (a, b), radii c and d, from `from` to `to` degrees: thick at its sides, thin
             // elsewhere
    Hook,    // the same arc, running evenly from thick at `from` to thin at `to`
    Spine,   // a smooth double bend for S, thick in its middle: no coordinates of its own
    Dot,     // a round dot at (a, b)
};

struct Stroke {
    Pen pen;
    float a = 0, b = 0, c = 0, d = 0, from = 0, to = 0;
};

using Outline = std::vector<Point>;

struct Glyph {
    std::vector<Outline> parts;
    bool blank = false;
    bool boxed = false;  // spaced as if it were full height: signs, which would slip into hollows
};

// clang-format off
const std::map<char32_t, std::vector<Stroke>> alphabet = {
    {U'A', {{Pen::Thin, 0.05f, 0, 0.42f, 1}, {Pen::Thick, 0.42f, 1, 0.81f, 0}, {Pen::Streak, 0.66f, 0.27f, -0.02f, 0.27f}}},
    {U'B', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Thin, 0.08f, 1, 0.28f, 1}, {Pen::Thin, 0.08f, 0.53f, 0.30f, 0.53f}, {Pen::Thin, 0.08f, 0, 0.30f, 0},
            {Pen::Bowl, 0.27f, 0.755f, 0.24f, 0.245f, -90, 90}, {Pen::Bowl, 0.29f, 0.275f, 0.29f, 0.275f, -90, 90}}},
    {U'C', {{Pen::Bowl, 0.48f, 0.5f, 0.42f, 0.5f, 48, 312}}},
    {U'D', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Thin, 0.08f, 1, 0.32f, 1}, {Pen::Thin, 0.08f, 0, 0.32f, 0}, {Pen::Bowl, 0.30f, 0.5f, 0.46f, 0.5f, -90, 90}}},
    {U'E', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Streak, 0.08f, 1, 0.62f, 1}, {Pen::Streak, 0.08f, 0.53f, 0.56f, 0.53f}, {Pen::Streak, 0.08f, 0, 0.66f, 0}}},
    {U'F', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Streak, 0.08f, 1, 0.62f, 1}, {Pen::Streak, 0.08f, 0.50f, 0.55f, 0.50f}}},
    {U'G', {{Pen::Bowl, 0.48f, 0.5f, 0.42f, 0.5f, 48, 318}, {Pen::Thick, 0.79f, 0.12f, 0.79f, 0.45f}, {Pen::Streak, 0.87f, 0.42f, 0.44f, 0.42f}}},
    {U'H', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Thick, 0.74f, 0, 0.74f, 1}, {Pen::Streak, 0.08f, 0.52f, 0.74f, 0.52f}}},
    {U'I', {{Pen::Thick, 0.08f, 0, 0.08f, 1}}},
    {U'J', {{Pen::Thick, 0.46f, 1, 0.46f, 0.32f}, {Pen::Hook, 0.20f, 0.33f, 0.26f, 0.33f, 360, 196}}},
    {U'K', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Thin, 0.12f, 0.38f, 0.66f, 1}, {Pen::Thick, 0.28f, 0.59f, 0.74f, 0}}},
    {U'L', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Streak, 0.08f, 0, 0.68f, 0}}},
    {U'M', {{Pen::Thin, 0.06f, 0, 0.10f, 1}, {Pen::Thick, 0.11f, 1, 0.48f, 0}, {Pen::Thin, 0.48f, 0, 0.85f, 1}, {Pen::Thick, 0.86f, 1, 0.90f, 0}}},
    {U'N', {{Pen::Thin, 0.06f, 0, 0.06f, 1}, {Pen::Thick, 0.08f, 1, 0.72f, 0}, {Pen::Thin, 0.74f, 0, 0.74f, 1}}},
    {U'O', {{Pen::Bowl, 0.50f, 0.5f, 0.44f, 0.5f, 85, 275}, {Pen::Bowl, 0.50f, 0.5f, 0.44f, 0.5f, -95, 95}}},
    {U'P', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Thin, 0.08f, 1, 0.30f, 1}, {Pen::Thin, 0.08f, 0.48f, 0.30f, 0.48f}, {Pen::Bowl, 0.28f, 0.725f, 0.29f, 0.275f, -90, 90}}},
    {U'Q', {{Pen::Bowl, 0.50f, 0.5f, 0.44f, 0.5f, 85, 275}, {Pen::Bowl, 0.50f, 0.5f, 0.44f, 0.5f, -95, 95}, {Pen::Streak, 0.52f, 0.20f, 1.04f, -0.12f}}},
    {U'R', {{Pen::Thick, 0.08f, 0, 0.08f, 1}, {Pen::Thin, 0.08f, 1, 0.30f, 1}, {Pen::Thin, 0.08f, 0.50f, 0.30f, 0.50f}, {Pen::Bowl, 0.28f, 0.735f, 0.27f, 0.265f, -90, 90},
            {Pen::Thick, 0.32f, 0.47f, 0.68f, 0}}},
    {U'S', {{Pen::Spine}}},
    {U'T', {{Pen::Thick, 0.38f, 0, 0.38f, 1}, {Pen::Streak, 0.02f, 1, 0.80f, 1}}},
    {U'U', {{Pen::Thick, 0.08f, 1, 0.08f, 0.36f}, {Pen::Thin, 0.66f, 1, 0.66f, 0.36f}, {Pen::Hook, 0.37f, 0.37f, 0.29f, 0.37f, 180, 360}}},
    {U'V', {{Pen::Thick, 0.04f, 1, 0.42f, 0}, {Pen::Thin, 0.42f, 0, 0.79f, 1}}},
    {U'W', {{Pen::Thick, 0.04f, 1, 0.33f, 0}, {Pen::Thin, 0.33f, 0, 0.60f, 1}, {Pen::Thick, 0.60f, 1, 0.89f, 0}, {Pen::Thin, 0.89f, 0, 1.16f, 1}}},
    {U'X', {{Pen::Thick, 0.06f, 1, 0.70f, 0}, {Pen::Thin, 0.08f, 0, 0.68f, 1}}},
    {U'Y', {{Pen::Thick, 0.04f, 1, 0.39f, 0.44f}, {Pen::Thin, 0.37f, 0.44f, 0.74f, 1}, {Pen::Thick, 0.38f, 0, 0.38f, 0.50f}}},
    {U'Z', {{Pen::Streak, 0.70f, 1, 0.02f, 1}, {Pen::Thick, 0.62f, 1, 0.10f, 0}, {Pen::Streak, 0.02f, 0, 0.76f, 0}}},
    {U'0', {{Pen::Bowl, 0.40f, 0.5f, 0.32f, 0.5f, 85, 275}, {Pen::Bowl, 0.40f, 0.5f, 0.32f, 0.5f, -95, 95}}},
    {U'1', {{Pen::Thick, 0.30f, 0, 0.30f, 1}, {Pen::Thin, 0.30f, 0.98f, 0.06f, 0.78f}}},
    {U'2', {{Pen::Bowl, 0.33f, 0.71f, 0.26f, 0.29f, -28, 165}, {Pen::Thin, 0.55f, 0.60f, 0.06f, 0}, {Pen::Streak, 0.02f, 0, 0.68f, 0}}},
    {U'3', {{Pen::Bowl, 0.30f, 0.755f, 0.24f, 0.245f, -90, 150}, {Pen::Bowl, 0.30f, 0.275f, 0.28f, 0.275f, -150, 90}}},
    {U'4', {{Pen::Thick, 0.54f, 0, 0.54f, 1}, {Pen::Thin, 0.52f, 1, 0.04f, 0.28f}, {Pen::Streak, 0.02f, 0.27f, 0.76f, 0.27f}}},
    {U'5', {{Pen::Thin, 0.12f, 1, 0.10f, 0.50f}, {Pen::Streak, 0.10f, 1, 0.62f, 1}, {Pen::Bowl, 0.30f, 0.31f, 0.28f, 0.31f, -150, 135}}},
    {U'6', {{Pen::Bowl, 0.36f, 0.31f, 0.28f, 0.31f, 85, 275}, {Pen::Bowl, 0.36f, 0.31f, 0.28f, 0.31f, -95, 95}, {Pen::Hook, 0.60f, 0.30f, 0.52f, 0.70f, 180, 92}}},
    {U'7', {{Pen::Streak, 0.64f, 1, 0.00f, 1}, {Pen::Thick, 0.60f, 1, 0.22f, 0}}},
    {U'8', {{Pen::Bowl, 0.36f, 0.755f, 0.24f, 0.245f, 85, 275}, {Pen::Bowl, 0.36f, 0.755f, 0.24f, 0.245f, -95, 95},
            {Pen::Bowl, 0.36f, 0.275f, 0.28f, 0.275f, 85, 275}, {Pen::Bowl, 0.36f, 0.275f, 0.28f, 0.275f, -95, 95}}},
    {U'9', {{Pen::Bowl, 0.36f, 0.69f, 0.28f, 0.31f, 85, 275}, {Pen::Bowl, 0.36f, 0.69f, 0.28f, 0.31f, -95, 95}, {Pen::Hook, 0.12f, 0.70f, 0.52f, 0.70f, 0, -88}}},
    {U'.', {{Pen::Dot, 0.10f, 0.07f}}},
    {U',', {{Pen::Dot, 0.10f, 0.07f}, {Pen::Thin, 0.13f, 0.06f, 0.05f, -0.12f}}},
    {U':', {{Pen::Dot, 0.10f, 0.07f}, {Pen::Dot, 0.10f, 0.55f}}},
    {U';', {{Pen::Dot, 0.10f, 0.55f}, {Pen::Dot, 0.10f, 0.07f}, {Pen::Thin, 0.13f, 0.06f, 0.05f, -0.12f}}},
    {U'!', {{Pen::Dot, 0.10f, 0.07f}, {Pen::Streak, 0.10f, 1, 0.10f, 0.24f}}},
    {U'?', {{Pen::Dot, 0.28f, 0.07f}, {Pen::Bowl, 0.30f, 0.73f, 0.25f, 0.27f, -70, 160}, {Pen::Thin, 0.34f, 0.49f, 0.28f, 0.24f}}},
    {U'\'', {{Pen::Streak, 0.08f, 1, 0.08f, 0.66f}}},
    {U'-', {{Pen::Streak, 0.04f, 0.46f, 0.48f, 0.46f}}},
    {U'+', {{Pen::Thin, 0.06f, 0.46f, 0.56f, 0.46f}, {Pen::Thin, 0.31f, 0.21f, 0.31f, 0.71f}}},
    {U'/', {{Pen::Thin, 0.04f, -0.08f, 0.46f, 1.08f}}},
    {U'(', {{Pen::Hook, 0.50f, 0.5f, 0.40f, 0.68f, 180, 120}, {Pen::Hook, 0.50f, 0.5f, 0.40f, 0.68f, 180, 240}}},
    {U')', {{Pen::Hook, -0.10f, 0.5f, 0.40f, 0.68f, 0, 60}, {Pen::Hook, -0.10f, 0.5f, 0.40f, 0.68f, 0, -60}}},
    {U'&', {{Pen::Bowl, 0.36f, 0.77f, 0.18f, 0.23f, 85, 275}, {Pen::Bowl, 0.36f, 0.77f, 0.18f, 0.23f, -95, 95},
            {Pen::Bowl, 0.34f, 0.28f, 0.26f, 0.28f, 90, 330}, {Pen::Thick, 0.24f, 0.68f, 0.80f, 0}, {Pen::Thin, 0.56f, 0.12f, 0.76f, 0.46f}}},
};
// clang-format on

struct Cut {
    float thick, thin;  // half breadths in capital heights
};

// Sutherland and Hodgman, "Reentrant polygon clipping", 1974: keeps what lies below (or above) a level.
Outline clippedAt(const Outline& outline, float level, bool keepBelow) {
    Outline kept;
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

Outline straight(const Stroke& stroke, float halfFrom, float halfTo) {
    Point from = {stroke.a, stroke.b}, to = {stroke.c, stroke.d};
    Point along = (to - from) * (1 / length(to - from));
    const bool lying = from.y == to.y;
    if (lying && onLine(from.y)) halfFrom *= 2, halfTo *= 2;
    const float runOn = lying ? 0 : 0.3f;
    if (onLine(stroke.b)) from = from - along * runOn;
    if (onLine(stroke.d)) to = to + along * runOn;
    const Point across = {-along.y, along.x};
    Outline outline = {from + across * halfFrom, to + across * halfTo, to - across * halfTo,
                       from - across * halfFrom};
    if (onLine(stroke.b) || onLine(stroke.d)) outline = clippedAt(clippedAt(outline, 1, true), 0, false);
    return outline;
}

// A band along a chain of points, of the half breadth given at each.
Outline band(const std::vector<Point>& chain, const std::vector<float>& half) {
    Outline left, right;
    for (size_t i = 0; i < chain.size(); i++) {
        const Point along = chain[std::min(i + 1, chain.size() - 1)] - chain[i > 0 ? i - 1 : 0];
        const Point across = Point{-along.y, along.x} * (half[i] / length(along));
        left.push_back(chain[i] + across);
        right.push_back(chain[i] - across);
    }
    left.insert(left.end(), right.rbegin(), right.rend());
    return left;
}

Outline arc(const Stroke& stroke, Cut cut) {
    const int steps = 28;
    std::vector<Point> chain;
    std::vector<float> half;
    for (int i = 0; i <= steps; i++) {
        const float k = static_cast<float>(i) / steps;
        const float angle = mix(stroke.from, stroke.to, k) * 0.017453293f;
        const float c = std::cos(angle), s = std::sin(angle);
        const float thickness =
            stroke.pen == Pen::Hook ? 1 - smoothstep(0, 1, k) : std::pow(std::fabs(c), 1.4f);
        half.push_back(mix(cut.thin, cut.thick, thickness));
        // The outer edge keeps to the height whatever the breadth; the sides keep their middle line.
        const float inset = stroke.pen == Pen::Hook ? half.back() : cut.thin;
        chain.push_back({stroke.a + stroke.c * c, stroke.b + (stroke.d - inset) * s});
    }
    return band(chain, half);
}

Outline spine(Cut cut) {
    // Two three-quarter bends of an S that meet in its thick middle.
    const std::vector<Point> knots = {{0.58f, 0.83f},   {0.50f, 0.945f}, {0.35f, 1},       {0.175f, 0.935f},
                                      {0.115f, 0.775f}, {0.19f, 0.625f}, {0.355f, 0.515f}, {0.53f, 0.40f},
                                      {0.60f, 0.24f},   {0.53f, 0.07f},  {0.34f, 0},       {0.165f, 0.05f},
                                      {0.06f, 0.19f}};
    const float thickness[] = {0.25f, 0.15f, 0, 0.25f, 0.7f, 0.95f, 1, 0.95f, 0.7f, 0.25f, 0, 0.15f, 0.25f};
    std::vector<Point> chain;
    std::vector<float> half;
    const int last = static_cast<int>(knots.size()) - 1, steps = 6;
    auto knot = [&](int i) {
        Point p = knots[std::clamp(i, 0, last)];
        p.y = mix(cut.thin, 1 - cut.thin, p.y);
        return p;
    };
    for (int i = 0; i < last * steps; i++) {
        const int k = i / steps;
        const float u = static_cast<float>(i % steps) / steps;
        // Catmull-Rom.
        const Point p = knot(k - 1), q = knot(k), r = knot(k + 1), s = knot(k + 2);
        chain.push_back((q * 2 + (r - p) * u + (p * 2 - q * 5 + r * 4 - s) * (u * u) +
                         (q * 3 - p - r * 3 + s) * (u * u * u)) *
                        0.5f);
        half.push_back(mix(cut.thin, cut.thick, mix(thickness[k], thickness[k + 1], u)));
    }
    chain.push_back(knot(last));
    half.push_back(mix(cut.thin, cut.thick, thickness[last]));
    return band(chain, half);
}

Outline dot(const Stroke& stroke, Cut cut) {
    Outline outline;
    for (int i = 0; i < 20; i++)
        outline.push_back(Point{stroke.a, stroke.b} +
                          turned({std::fmax(cut.thick, 0.07f) * 1.05f, 0}, i * 0.31415927f));
    return outline;
}

Outline outlineOf(const Stroke& stroke, Cut cut) {
    switch (stroke.pen) {
        case Pen::Thick:
            return straight(stroke, cut.thick, cut.thick);
        case Pen::Thin:
            return straight(stroke, cut.thin, cut.thin);
        case Pen::Streak:
            return straight(stroke, mix(cut.thin, cut.thick, 0.45f), cut.thin * 0.35f);
        case Pen::Bowl:
        case Pen::Hook:
            return arc(stroke, cut);
        case Pen::Spine:
            return spine(cut);
        case Pen::Dot:
            return dot(stroke, cut);
    }
    return {};
}

Glyph glyphOf(char32_t letter, Cut cut) {
    Glyph glyph;
    const char32_t base = letter == U'Ä' || letter == U'Å' ? U'A' : letter == U'Ö' ? U'O' : letter;
    const auto known = alphabet.find(base);
    glyph.blank = known == alphabet.end();
    if (glyph.blank) return glyph;
    for (const Stroke& stroke : known->second) glyph.parts.push_back(outlineOf(stroke, cut));
    glyph.boxed = base < U'0' || base > U'Z' || (base > U'9' && base < U'A');
    if (base == letter) return glyph;
    const float middle = base == U'A' ? 0.43f : 0.50f;
    if (letter == U'Å') {
        glyph.parts.push_back(
            outlineOf({Pen::Bowl, middle, 1.20f, 0.10f, 0.12f, 85, 275}, {cut.thin, cut.thin}));
        glyph.parts.push_back(
            outlineOf({Pen::Bowl, middle, 1.20f, 0.10f, 0.12f, -95, 95}, {cut.thin, cut.thin}));
    } else {
        for (float side : {-0.17f, 0.17f})
            glyph.parts.push_back(outlineOf({Pen::Dot, middle + side, 1.20f}, cut));
    }
    return glyph;
}

std::u32string decoded(const std::string& text) {
    std::u32string letters;
    for (size_t i = 0; i < text.size(); i++) {
        const unsigned char byte = text[i];
        char32_t letter = byte;
        if (byte == 0xc3 && i + 1 < text.size())
            letter = 0xc0 + (static_cast<unsigned char>(text[++i]) & 0x3f);
        if ((letter >= U'a' && letter <= U'z') || letter == U'ä' || letter == U'ö' || letter == U'å')
            letter -= 32;
        letters.push_back(letter);
    }
    return letters;
}

// How far a letter reaches at each of some heights, for spacing by eye: `left` and `right` of its own origin.
constexpr int levels = 25;
struct Profile {
    std::array<float, levels> left, right;
};

Profile profileOf(const Glyph& glyph) {
    Profile profile;
    profile.left.fill(1e3f);
    profile.right.fill(-1e3f);
    for (const Outline& outline : glyph.parts) {
        for (size_t i = 0; i < outline.size(); i++) {
            const Point from = outline[i], to = outline[(i + 1) % outline.size()];
            for (int level = 0; level < levels; level++) {
                const float y = mix(0.004f, 0.996f, level / (levels - 1.0f));
                if ((from.y > y) == (to.y > y)) continue;
                const float x = from.x + (to.x - from.x) * (y - from.y) / (to.y - from.y);
                profile.left[level] = std::fmin(profile.left[level], x);
                profile.right[level] = std::fmax(profile.right[level], x);
            }
        }
    }
    if (glyph.boxed) {
        profile.left.fill(*std::min_element(profile.left.begin(), profile.left.end()));
        profile.right.fill(*std::max_element(profile.right.begin(), profile.right.end()));
    }
    return profile;
}

// The advance from one letter's origin to the next one's that leaves a mean clear space of `gap`: hollows
// count up to a depth, so that V and A move together without touching.
float advance(const Profile& first, const Profile& second, float gap) {
    const float depth = gap * 2.4f;
    float low = -1, high = 3;
    for (int i = 0; i < 24; i++) {
        const float shift = (low + high) / 2;
        float sum = 0, least = depth;
        for (int level = 0; level < levels; level++) {
            const float space = std::fmin(depth, second.left[level] + shift - first.right[level]);
            sum += space;
            least = std::fmin(least, space);
        }
        (sum / levels < gap || least < gap * 0.45f ? low : high) = shift;
    }
    return high;
}

struct SetGlyph {
    Glyph glyph;
    float origin;  // in capital heights from the line's left end
};

struct SetLine {
    std::vector<SetGlyph> glyphs;
    float width = 0;
};

SetLine arranged(const std::string& text, const Lettering& style) {
    const float thick = style.weight / 2;
    const Cut cut = {thick, thick * (1 - style.contrast)};
    const float wordSpace = 0.36f + style.gap;
    SetLine line;
    Profile last;
    bool first = true;
    float origin = 0, spaces = 0;
    for (char32_t letter : decoded(text)) {
        Glyph glyph = glyphOf(letter, cut);
        if (glyph.blank) {
            spaces += wordSpace;
            continue;
        }
        const Profile profile = profileOf(glyph);
        float left = 1e3f, right = -1e3f;
        for (int level = 0; level < levels; level++) {
            left = std::fmin(left, profile.left[level]);
            right = std::fmax(right, profile.right[level]);
        }
        origin = first ? -left : origin + advance(last, profile, style.gap) + spaces;
        line.width = origin + right;
        line.glyphs.push_back({std::move(glyph), origin});
        last = profile;
        first = false;
        spaces = 0;
    }
    return line;
}

void addOutline(LetteringField& field, const Outline& outline, float pixelAspect) {
    float left = 1e6f, right = -1e6f, top = 1e6f, bottom = -1e6f;
    for (Point p : outline) {
        left = std::fmin(left, p.x), right = std::fmax(right, p.x);
        top = std::fmin(top, p.y), bottom = std::fmax(bottom, p.y);
    }
    const int x0 = std::max(0, static_cast<int>((left - field.reach) / pixelAspect));
    const int x1 = std::min(field.width, static_cast<int>((right + field.reach) / pixelAspect) + 2);
    const int y0 = std::max(0, static_cast<int>(top - field.reach));
    const int y1 = std::min(field.height, static_cast<int>(bottom + field.reach) + 2);
    for (int y = y0; y < y1; y++) {
        for (int x = x0; x < x1; x++) {
            float& distance = field.distances[size_t(y) * field.width + x];
            distance = std::fmin(distance, polygon({(x + 0.5f) * pixelAspect, y + 0.5f}, outline));
        }
    }
}

}  // namespace

float textWidth(const std::string& text, const Lettering& style) {
    return arranged(text, style).width * style.height / style.pixelAspect;
}

void setText(LetteringField& field, const std::string& text, const Lettering& style, float x, float baseline,
             Align align) {
    const SetLine line = arranged(text, style);
    const float before = align == Align::Left ? 0 : align == Align::Centre ? line.width / 2 : line.width;
    // Distances are taken where the picture is shown, in pixel heights, so that strokes keep their breadth.
    const float start = x * style.pixelAspect - before * style.height;
    for (const SetGlyph& set : line.glyphs) {
        for (const Outline& part : set.glyph.parts) {
            Outline outline;
            for (Point p : part)
                outline.push_back({start + (set.origin + p.x) * style.height, baseline - p.y * style.height});
            addOutline(field, outline, style.pixelAspect);
        }
    }
}
