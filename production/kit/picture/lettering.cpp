#include "production/kit/picture/lettering.h"

#include <array>

#include "production/kit/picture/glyphs.h"

namespace picture {
namespace {

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
    for (const Contour& outline : glyph.parts) {
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
            sum += std::fmin(depth, second.left[level] + shift - first.right[level]);
            // Against the neighbouring heights too, so that no needle slips under a bowl.
            for (int other = std::max(0, level - 2); other <= std::min(levels - 1, level + 2); other++)
                least = std::fmin(least, second.left[other] + shift - first.right[level]);
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

void addOutline(LetteringField& field, const Contour& outline, float pixelAspect) {
    float left = 1e6f, right = -1e6f, top = 1e6f, bottom = -1e6f;
    for (Point p : outline) {
        left = std::fmin(left, p.x), right = std::fmax(right, p.x);
        top = std::fmin(top, p.y), bottom = std::fmax(bottom, p.y);
    }
    const int x0 = std::max(0, int((left - field.reach) / pixelAspect));
    const int x1 = std::min(field.width, int((right + field.reach) / pixelAspect) + 2);
    const int y0 = std::max(0, int(top - field.reach));
    const int y1 = std::min(field.height, int(bottom + field.reach) + 2);
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

void setText(LetteringField& field, const Lettering& style, const TextLine& line) {
    const SetLine set = arranged(line.text, style);
    const float before = line.align == Align::Centre ? set.width / 2 : 0;
    // Distances are taken where the picture is shown, in pixel heights, so that strokes keep their breadth.
    const float start = line.x * style.pixelAspect - before * style.height;
    for (const SetGlyph& letter : set.glyphs) {
        for (const Contour& part : letter.glyph.parts) {
            Contour outline;
            for (Point p : part)
                outline.push_back(
                    {start + (letter.origin + p.x) * style.height, line.baseline - p.y * style.height});
            addOutline(field, outline, style.pixelAspect);
        }
    }
}

float bevelFacing(const LetteringField& text, int x, int y, float pixelAspect) {
    // Sobel's weights keep the ridges of slanting strokes from stepping.
    float slopeX = 0, slopeY = 0;
    for (int i = -1; i <= 1; i++) {
        const float weight = i == 0 ? 0.25f : 0.125f;
        slopeX += weight * (text.at(x + 1, y + i) - text.at(x - 1, y + i));
        slopeY += weight * (text.at(x + i, y + 1) - text.at(x + i, y - 1));
    }
    return -(0.45f * slopeX / pixelAspect + 0.75f * slopeY);
}

}  // namespace picture
