// "greetsit": the greetings, drawn four screens wide and added to the picture while they scroll past, top row
// first. Three panels, each of a drawing in fine lines of light and the words that belong to it: an owl's
// eyes, a listing, a heart. A panel stands whole in the middle of the screen where a pair of bars begins;
// under all of them runs a pulse, whose beats cross the middle with the music's. They are signed with the
// show's name, alone in a night that falls before the hall fades in.
//
// What stands behind the screen is blurred light. The picture's alpha is how much of it a place hides, which
// "boom" heeds: panels are plates of dark glass, and letters are cut out of them, lit by what is behind.
#include <string>
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/kit/picture/noise.h"
#include "production/pictures/pictures.h"
#include "script/greetings_scroll.h"

using namespace picture;

namespace {

constexpr int width = 4096, height = 1024;
constexpr float pixelAspect = 4.0f / 3;  // a screen is as many columns as rows of it
// Lengths are in rows of a picture of 512, where the screen is 683 by 512.
constexpr float fine = height / 512.0f;  // pixels a row
constexpr float pictureEnd = width * pixelAspect / fine, rowsPerUnit = pictureEnd / 8;

// How far right of the picture's left edge lies what crosses the screen's middle on a beat.
float crossingOn(double beat) {
    const double seconds =
        showtime::beatZero.seconds() + beat * 60.0 / showtime::beatsPerMinute - showtime::greetings.seconds();
    return (4 - greetingsAt(float(seconds))) * rowsPerUnit;
}

// How much of a pixel a shape covers, and a line along its edge; `distance` and `breadth` in rows.
float inked(float distance) {
    return coverage(distance * fine);
}
float lined(float distance, float breadth) {
    return outline(distance * fine, breadth * fine);
}

const Rgba cream = opaque(1, 0.97f, 0.90f), gold = opaque(0.98f, 0.74f, 0.36f), ice = opaque(0.50f, 0.80f, 1),
           violet = opaque(0.74f, 0.52f, 1), coral = opaque(1, 0.42f, 0.22f), mint = opaque(0.46f, 1, 0.76f),
           moon = opaque(0.85f, 0.92f, 0.93f);

struct Words {
    struct Line {
        float left, right, top, bottom;
    };
    LetteringField field;
    std::vector<Line> lines;
    explicit Words(float reach) : field(width, height, reach * fine) {}

    // `place` in rows from the picture's upper left: where a line begins or its middle, and its baseline.
    // `style.pixelAspect` is how narrow the letters are.
    void set(const std::string& text, Lettering style, Point place, Align align = Align::Left);
    float at(Point place) const {
        return field.at(int(place.x / pixelAspect * fine), int(place.y * fine)) / fine;
    }
    // How much of a pixel lies further inside of the letters than `depth`. Looked for round it, as within a
    // letter the distances are those of its strokes, which meet in seams.
    float coreAt(Point p, float depth) const {
        float farthest = -99;
        for (int i = 0; i < 20; i++)
            farthest =
                std::fmax(farthest, at(p + Point{std::cos(i * pi / 10), std::sin(i * pi / 10)} * depth));
        return inked(farthest - 0.5f);
    }
    // How far down in its line a place is, 0 to 1.
    float footAt(Point p) const {
        for (const Line& line : lines)
            if (p.x > line.left - 4 && p.x < line.right + 4 && p.y > line.top - 4 && p.y < line.bottom + 4)
                return unit((p.y - line.top) / (line.bottom - line.top));
        return 0;
    }
};

Lettering filling(const std::string& text, Lettering style, float breadth) {
    for (int i = 0; i < 4; i++) style.height *= breadth / textWidth(text, style);
    return style;
}

void Words::set(const std::string& text, Lettering style, Point place, Align align) {
    const float breadth = textWidth(text, style),
                left = align == Align::Centre ? place.x - breadth / 2 : place.x;
    lines.push_back({left, left + breadth, place.y - style.height, place.y});
    style.height *= fine;
    style.pixelAspect *= pixelAspect;
    setText(field, style, {text, place.x / pixelAspect * fine, place.y * fine, align});
}

// Where the panels have their middles; their drawings take places from there, across, and from the top.
const float owlMiddle = crossingOn(228), listingMiddle = crossingOn(236), youMiddle = crossingOn(244),
            signMiddle = crossingOn(251.6), nightFalls = crossingOn(252.4);
constexpr float panelHalf = 345;

const Lettering heavy = {.height = 100, .weight = 0.185f, .contrast = 0.45f, .gap = 0.15f};
const Lettering wide = {.height = 46, .weight = 0.19f, .contrast = 0.4f, .gap = 0.42f};

// An owl's face: two eyes as an engraver would lay them, under a brow.

constexpr Point owlEye = {150, 212};
constexpr float owlHalf = 338;  // of its width, at the brow
constexpr float owlRadius = 128;

void setOwlWords(Words& words) {
    words.set("Night owls", filling("Night owls", heavy, 570), {owlMiddle, 460}, Align::Centre);
    words.set("Hello", wide, {owlMiddle, 84}, Align::Centre);
}

// Lines that leave a middle, of which every one has its own length: how far from the nearest of `count`, in
// rows, and which that is.
struct Ray {
    float away;
    int number;
};
Ray nearestRay(Point p, int count) {
    const float pitch = 2 * pi / count, turn = arcTan(p.y, p.x);
    return {std::remainder(turn, pitch) * length(p), int(std::floor(turn / pitch + 0.5f))};
}

Rgba irisAt(Point q, bool left) {
    const float r = length(q);
    float white = lined(r - owlRadius, 5);
    const float blue =
        std::fmax(0.8f * lined(r - (owlRadius - 9), 1.4f), 0.6f * lined(r - (owlRadius - 15), 1));
    float warm = std::fmax(lined(r - 50, 3), 0.7f * lined(r - 43, 1.2f));
    const auto [away, number] = nearestRay(q, 96);
    const float from = 54, whole = owlRadius - 22 - from;
    const float k = (r - from) / (whole * (number % 4 == 0 ? 1 : number % 2 ? 0.42f : 0.72f));
    if (k > 0 && k < 1) warm = std::fmax(warm, (0.95f - 0.4f * k) * lined(away, 2.5f - 1.9f * k));
    // The light in the pupil, and what it mirrors.
    const Point look = {left ? -q.x : q.x, q.y};
    white = std::fmax(white, inked(circle(look, {-14, -15}, 11)));
    white = std::fmax(white, 0.8f * inked(circle(look, {12, 14}, 4)));
    return ice * (0.85f * blue) + gold * (0.9f * warm) + moon * (0.95f * white);
}

// Feathers round an eye, longest towards the ears.
float feathersAt(Point q) {
    const float r = length(q), from = owlRadius + 8;
    const auto [away, number] = nearestRay(q, 120);
    const float ear = std::pow(0.5f + 0.5f * std::cos(arcTan(q.y, q.x) + 0.72f), 3.0f);
    const float k = (r - from) / (number % 2 ? 14 + 66 * ear : 22 + 100 * ear);
    return k > 0 && k < 1 ? (0.95f - 0.75f * k) * lined(away, 2.7f - 2.2f * k) : 0;
}

Rgba owlAt(Point p) {
    if (std::fabs(p.x) > panelHalf) return {};
    const Point side = {std::fabs(p.x), p.y};
    const Point q = side - owlEye;
    const float belowBrow = 0.9f * (p.y - (176 - 0.40f * side.x - 0.00022f * side.x * side.x));
    Rgba sum = irisAt(q, p.x < 0) * smoothstep(14, 17, belowBrow);
    const float apart = smoothstep(7, 13, std::fabs(belowBrow)) *
                        smoothstep(110, 170, side.x + 2.2f * std::fmax(belowBrow, 0.0f));
    if (side.x > 18) sum = sum + ice * (0.85f * apart * feathersAt(q) * smoothstep(owlHalf, 300, side.x));
    const float broad = 10 * std::pow(unit(1 - side.x / owlHalf), 0.7f);
    if (side.x < owlHalf)
        sum = sum + moon * (0.95f * inked(std::fabs(belowBrow) - broad)) +
              ice * (0.75f * lined(belowBrow - broad - 5, 1.6f) * smoothstep(300, 200, side.x));
    const float beak = polygon(side, {{0, 226}, {17, 262}, {0, 326}, {-17, 262}});
    return sum + gold * (0.9f * (lined(beak + 1, 2.6f) + inked(beak + 7)));
}

// A listing, whose words grow until the last is made of code itself.

struct CodeLine {
    float indent;
    const char *word, *rest;
};
constexpr CodeLine codeLines[] = {{0, "for", "(;;)"},
                                  {24, "listen", "(to.the, beat);"},
                                  {24, "if", "(it.is(dark))"},
                                  {48, "draw", "(a.streak, of.light);"}};
constexpr float codeTop = 48, codeLeading = 22;
constexpr float listingLeft = -254, listingBreadth = 550, gutter = -272;
constexpr float readersLine = 249, ofTheRow = 281, sourceLine = 452;

struct Listing {
    Words keys{6}, rest{6}, numbers{6}, source{8};
};

void setListing(Listing& listing, Words& words) {
    const Lettering code = {.height = 13, .weight = 0.16f, .contrast = 0.2f, .gap = 0.36f};
    const float left = listingMiddle + listingLeft, middle = left + listingBreadth / 2;
    std::vector<float> baselines;
    for (const CodeLine& line : codeLines) {
        const float baseline = codeTop + codeLeading * baselines.size(), begin = left + line.indent;
        listing.keys.set(line.word, code, {begin, baseline});
        listing.rest.set(line.rest, code, {begin + textWidth(line.word, code) + 10, baseline});
        baselines.push_back(baseline);
    }
    Lettering narrow = heavy;
    narrow.weight = 0.2f;
    narrow.pixelAspect = 1.2f;
    words.set("Readers", filling("Readers", narrow, listingBreadth), {left, readersLine});
    words.set("of the", {.height = 24, .weight = 0.19f, .contrast = 0.3f, .gap = 0.5f},
              {middle, ofTheRow + 12}, Align::Centre);
    listing.source.set(
        "Source",
        filling("Source",
                {.height = 145, .weight = 0.27f, .contrast = 0.25f, .gap = 0.12f, .pixelAspect = 1.3f},
                listingBreadth),
        {left, sourceLine});
    baselines.insert(baselines.end(), {readersLine, ofTheRow + 6, sourceLine});
    for (size_t i = 0; i < baselines.size(); i++) {
        const std::string number = std::to_string(124 + i);  // the second that it comes in
        listing.numbers.set(number, code,
                            {listingMiddle + gutter - 10 - textWidth(number, code), baselines[i]});
    }
}

// Lines of code, too small to be read: dashes for their words, coloured as an editor would.
Rgba codeAt(Point p) {
    constexpr float pitch = 6;
    const int row = int(std::floor(p.y / pitch));
    float left = -panelHalf - 60 * randomAt(row, 7, 5);
    for (int i = 0;; i++) {
        const float dash = 14 + 70 * std::pow(randomAt(row, i, 11), 1.5f);
        if (p.x < left + dash) {
            const float hue = randomAt(row, i, 17);
            const Rgba ink = hue < 0.2f ? violet : hue < 0.4f ? mint : hue < 0.55f ? gold : cream;
            return ink * (inked(left - p.x) * lined(p.y - (row + 0.5f) * pitch, 3.6f));
        }
        left += dash + 6;
    }
}

// It stands on a pane of its own: how far outside of that a place is.
float listingEdge(Point p) {
    return box(p, {-6, 246}, {322, 226}, 18);
}

Rgba listingAt(Point place, const Listing& listing) {
    const Point p = place - Point{listingMiddle, 0};
    if (std::fabs(p.x) > panelHalf) return {};
    const float edge = listingEdge(p);
    const float rule = std::fabs(std::fabs(p.x - listingLeft - listingBreadth / 2) - 185) - 85;
    Rgba sum = violet * (0.7f * lined(p.x - gutter, 1.4f) * inked(std::fabs(p.y - 246) - 212)) +
               mix(violet, ice, p.y / 512) * (0.8f * lined(edge + 1, 1.6f)) +
               gold * (0.9f * lined(p.y - ofTheRow, 1.6f) * inked(rule)) +
               mix(violet, cream, 0.2f) * (0.85f * inked(listing.keys.at(place))) +
               mix(mint, cream, 0.2f) * (0.8f * inked(listing.rest.at(place))) +
               gold * (0.6f * inked(listing.numbers.at(place)));
    const float source = listing.source.at(place);
    if (source < 2)
        sum = sum + codeAt(p) * (0.95f * listing.source.coreAt(place, 5)) +
              cream * (inked(source) * (1 - listing.source.coreAt(place, 2.8f)));
    return sum;
}

// A heart with the word before it, one letter of which is the face that the show has met.

float heartAt(Point p) {  // of height 1.1, its point at 0, 0, up
    const Point q = {std::fabs(p.x), p.y};
    if (q.y + q.x > 1) return length(q - Point{0.25f, 0.75f}) - std::sqrt(2.0f) / 4;
    const Point top = q - Point{0, 1}, low = q - Point{1, 1} * (0.5f * std::fmax(q.x + q.y, 0.0f));
    return std::sqrt(std::fmin(dot(top, top), dot(low, low))) * (q.x > q.y ? 1 : -1);
}

constexpr float heartSize = 405, heartFoot = 468;
constexpr float youLine = 356, youHeight = 190;
constexpr float faceHalf = youHeight / 2, faceAside = 110;
constexpr Point faceMiddle = {0, youLine - faceHalf};

// The signature's two words, and between them what they mean.
constexpr float signBreadth = 340, streakRow = 262;

void setYouWords(Words& words) {
    const Lettering broad = {.height = youHeight, .weight = 0.21f, .contrast = 0.35f, .gap = 0.14f};
    words.set("Y", broad, {youMiddle - faceAside - textWidth("Y", broad), youLine});
    words.set("U", broad, {youMiddle + faceAside, youLine});
    words.set("and", wide, {youMiddle, 122}, Align::Centre);
    words.set("Valo", filling("Valo", heavy, signBreadth), {signMiddle, streakRow - 26}, Align::Centre);
    const Lettering lower = filling("Juova", heavy, signBreadth);
    words.set("Juova", lower, {signMiddle, streakRow + 26 + lower.height}, Align::Centre);
}

float headAt(Point q) {
    return box(q, {}, {faceHalf * 0.95f, faceHalf}, faceHalf * 0.40f);
}

Rgba heartLines(Point p) {
    if (std::fabs(p.x) > 380) return {};
    const float d = heartSize * heartAt({p.x / heartSize, (heartFoot - p.y) / heartSize});
    const float pitch = 9;
    // The letters stand before its sides.
    const float behind = std::fabs(p.y - faceMiddle.y) - faceHalf;
    const float strong = lined(d, 5) * smoothstep(2, 16, behind);
    const float k = d < 0 ? 0.80f * std::exp(d / 60) + 0.10f : 0.70f * std::exp(-d / 48);
    const float thin = std::fabs(d) > 4 ? k * lined(std::remainder(d, pitch), 1.4f) : 0;
    return mix(coral, cream, 0.35f) * strong + coral * (thin * smoothstep(130, 90, d));
}

Rgba faceAt(Point q) {
    constexpr float half = faceHalf;
    if (std::fabs(q.x) > faceAside || q.y > half + 4) return {};
    const Point side = {std::fabs(q.x), q.y};
    const float head = headAt(q);
    const Point eye = side - Point{half * 0.40f, -half * 0.20f};
    const Point look = {q.x < 0 ? -eye.x : eye.x, eye.y};
    const float e = length(eye);
    float white = lined(head + 4, 8);
    float warm = std::fmax(0.8f * lined(head + 13, 1.4f), lined(e - half * 0.325f, 2.4f));
    white = std::fmax(
        white, inked(std::fmax(e - half * 0.24f, 8 - length(look - Point{-half * 0.08f, -half * 0.08f}))));
    const float smile = q.y > half * 0.27f ? std::fabs(circle(q, {0, -half * 0.02f}, half * 0.60f)) - 5 : 99;
    white = std::fmax(white, inked(smile));
    const float aerial = segment(side, {half * 0.20f, -half}, {half * 0.42f, -half * 1.30f}) - 1.8f;
    white = std::fmax(white, inked(std::fmin(aerial, circle(side, {half * 0.42f, -half * 1.30f}, 5))));
    return cream * white + gold * (0.9f * warm * (1 - white));
}

// A streak of light, which leads the way that all of it goes.
Rgba streakAt(Point p) {
    const Point head = p + Point{signBreadth / 2 + 36, 0};
    if (head.x < -60 || std::fabs(head.y) > 60) return {};
    const float gone = unit(head.x / 520), along = head.x < 0 ? 0 : 1 - gone;
    const float core = along * inked(std::fabs(head.y) - 3.2f * along * smoothstep(-2, 60, head.x));
    const float glow = along * along * std::exp(-std::fabs(head.y) / (2 + 5 * along));
    const float star = std::exp(-length(head) / 7),
                ray = std::exp(-std::fabs(head.x) / 1.6f - std::fabs(head.y) / 16);
    return mix(cream, gold, unit(3 * gone)) * core + mix(gold, coral, gone) * (0.55f * glow) +
           moon * std::fmin(1.3f * star + 0.8f * ray, 1.0f);
}

constexpr float pulseRow = 488;

std::vector<Point> pulseLine() {
    std::vector<Point> line = {{2, pulseRow}};
    for (int beat = 224; beat <= 252; beat++) {
        const bool between = beat % 8 == 0 && beat < 248;
        const float tall = between ? 330 : beat % 4 == 0 ? 20 : 12, broad = between ? 11 : 6;
        for (const Point step : {Point{-3.2f, 0},
                                 {-2.1f, -0.10f},
                                 {-1.2f, 0.06f},
                                 {0, -1},
                                 {1.1f, 0.24f},
                                 {1.7f, 0},
                                 {2.5f, -0.07f},
                                 {3.4f, 0}})
            line.push_back({crossingOn(beat) + step.x * broad, std::fmin(pulseRow + step.y * tall, 506.0f)});
    }
    return line;
}

float pulseAt(Point p, const std::vector<Point>& line) {
    float nearest = 99;
    for (size_t i = 1; i < line.size(); i++)
        if (line[i - 1].x < p.x + 30 && line[i].x > p.x - 30)
            nearest = std::fmin(nearest, segment(p, line[i - 1], line[i]));
    return nearest;
}

// The plates. How much they hide of what is behind them, 0 to 1.

float owlPlate(Point p) {
    const Point side = {std::fabs(p.x), p.y};
    const float belowBrow = 0.9f * (p.y - (176 - 0.40f * side.x - 0.00022f * side.x * side.x));
    const float head = std::fmax(box(p, {0, 250}, {330, 235}, 150), 8 - belowBrow);
    return 0.88f * smoothstep(12, -16, head);
}

float listingPlate(Point p) {
    return 0.84f * inked(listingEdge(p));
}

float heartPlate(Point p) {
    return 0.93f * smoothstep(8, -10, heartSize * heartAt({p.x / heartSize, (heartFoot - p.y) / heartSize}));
}

// Behind the signature all is dark, for it to be the last that is seen.
float lastPlate(Point p) {
    return 0.97f * smoothstep(signMiddle - 400, signMiddle - 200, p.x) *
           smoothstep(pictureEnd, pictureEnd - 8, p.x);
}

// And between them the lights of the scene are no brighter than the lettering.
float veilAt(float across) {
    return 0.66f * smoothstep(0, 240, across) * smoothstep(pictureEnd, pictureEnd - 8, across);
}

float plateAt(Point p, float word, float fromPulse) {
    const float shadow = std::fmax(0.80f * smoothstep(40, 0, word), 0.6f * fromPulse);
    return std::fmax(std::fmax(std::fmax(shadow, veilAt(p.x)), owlPlate(p - Point{owlMiddle, 0})),
                     std::fmax(std::fmax(listingPlate(p - Point{listingMiddle, 0}), lastPlate(p)),
                               heartPlate(p - Point{youMiddle, 0})));
}

// Rows of the upper edge, where what crosses the middle of the screen tells how dark all of it is.
constexpr float nightRows = 3;

}  // namespace

void makeGreetings(const char* path) {
    Words words(40);
    Listing listing;
    setOwlWords(words);
    setListing(listing, words);
    setYouWords(words);
    const std::vector<Point> pulse = pulseLine();

    Canvas canvas(width, height, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const Point p = {x * pixelAspect / fine, y / fine};
        const Point fromYou = p - Point{youMiddle, 0}, fromFace = fromYou - faceMiddle;
        const float line = pulseAt(p, pulse);
        const float shown = smoothstep(0, 50, p.x) * smoothstep(pulse.back().x, pulse.back().x - 200, p.x);
        const Rgba drawn =
            owlAt(p - Point{owlMiddle, 0}) + listingAt(p, listing) +
            streakAt(p - Point{signMiddle, streakRow}) + heartLines(fromYou) * inked(4 - headAt(fromFace)) +
            (mix(gold, cream, 0.3f) * lined(line, 2.4f) + opaque(0.5f, 0.25f, 0.06f) * std::exp(-line / 7)) *
                shown;
        // The drawings leave room round the words, for them to be read, and the picture's edges black.
        const float word = words.at(p), fill = inked(word);
        const float room = smoothstep(4, 13, word) * smoothstep(3, 14, p.y) * smoothstep(509, 500, p.y) *
                           smoothstep(pictureEnd, pictureEnd - 60, p.x);
        const float halo = 0.3f * std::exp(-std::fmax(word, 0.0f) / 5) * smoothstep(18, 10, word);
        // Gold within a bright edge: what lies behind adds to it, and would burn white out.
        const Rgba metal = mix(opaque(0.88f, 0.68f, 0.40f), opaque(0.82f, 0.38f, 0.10f), words.footAt(p));
        const Rgba face = fill > 0 ? mix(cream, metal, words.coreAt(p, 2.6f)) : metal;
        Rgba sum = ground + (drawn * room + faceAt(fromFace) + opaque(0.5f, 0.3f, 0.1f) * halo) * (1 - fill) +
                   face * fill;
        const float light = std::fmax(sum.r, std::fmax(sum.g, sum.b));
        const float dark =
            p.y < nightRows ? smoothstep(nightFalls, nightFalls + 100, p.x)
                            : plateAt(p, word, shown * smoothstep(14, 3, line)) * smoothstep(0.5f, 0, light);
        sum = sum * (dark > 0 ? dark : 1);  // added as it is, whatever its alpha
        sum.a = dark;
        return sum;
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
