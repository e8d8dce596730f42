// The mirror ball: what is seen of it, which hangs still in the hall, what turns within it, and the copy that
// beams are traced against.
#include "production/models/ball.h"

#include <algorithm>
#include <array>
#include <vector>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/hall.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/models/viewer.h"
#include "production/shared/comet.h"
#include "production/shared/glow.h"
#include "script/show_times.h"

using namespace model;

namespace {

// The screen shows a square view a third too broad, so the ball is taller than broad to look round.
constexpr double halfBreadth = 39, halfHeight = 52;
// Of the copy: as far from the centre as the ball's surface where beams meet it, half-way up.
constexpr double copyRadius = 42;
constexpr double withinRadius = 37;

// Rows of squares.
constexpr int rows = 22;
constexpr double mirrorPart = 0.86;  // of its place that a mirror covers, each way
constexpr double domed = 0.007;      // radians that a mirror seems to bend for each unit from its middle

// Seconds for which it is laid out.
constexpr double firstMoment = showtime::room.seconds(), lastMoment = showtime::afterCredits.seconds(),
                 momentStep = 0.1;

// What a mirror shows over the time that it faces the viewer.
struct Sight {
    int moment;
    double facing;  // cosine towards the viewer
};

// The lights that a mirror can throw back: lamps over the viewer and the glow beyond the hall, cold and warm,
// and the comet.
enum Light { cold, warm, white, lightCount };
using Lights = std::array<double, lightCount>;

Lights lightsIn(Vec direction) {
    constexpr double above = 0.3, heart = 2;  // of the pools' strength; more of a lamp's in its heart
    const glow::Glow<double> seen = glow::in(direction);
    const glow::Overhead<double> lamps = glow::overhead(direction);
    const double bright = 1 + heart * smoothstep(0.965, 0.985, direction.y);
    return {seen.beyond * (seen.cold + above * seen.above * seen.between) + lamps.cold * bright,
            seen.beyond * (seen.warm + seen.below * seen.between) + lamps.warm * bright,
            viewer::cometLight(direction)};
}

// Chooses what each mirror seems to face. Some flash with the comet, each when the fewest others do; the
// others lean to where they throw back most of the glow, and of that what is scarcest when they are seen.
class Glitter {
public:
    explicit Glitter(const Shape& mirrors) {
        for (double time = firstMoment; time < lastMoment; time += momentStep)
            views.push_back(viewer::at(time));
        shining.resize(views.size());
        for (const Face& face : mirrors.faces) {
            const Vec normal = faceNormal(mirrors, face);
            aims.push_back({faceCentre(mirrors, face), normal, normal, {}});
            see(aims.back());
        }
        // Scattered, so that what is scarce is spread over the ball.
        for (size_t i = 0; i < aims.size(); i++) choose(i * stride % aims.size(), i % flashesEvery == 0);
    }

    Vec facing(int mirror) const { return aims[mirror].facing; }

private:
    struct Aim {
        Vec place, normal, facing;
        std::vector<Sight> sights;
    };
    static constexpr size_t stride = 241, flashesEvery = 2;
    std::vector<viewer::View> views;
    std::vector<Lights> shining;  // by moment: mirrors alight
    std::vector<Aim> aims;

    void see(Aim& aim) const {
        constexpr double least = 0.15;
        for (int i = 0; i < int(views.size()); i++) {
            const double facing = dot(aim.normal, normalized(views[i].eye - aim.place));
            if (facing > least) aim.sights.push_back({i, facing});
        }
    }

    double worthOf(const Aim& aim, Vec facing) const {
        // How many mirrors are alight at once before another one counts a third, and what one is worth.
        constexpr Lights enough = {60, 36, 30}, value = {1.5, 1, 8};
        double worth = 0;
        for (const Sight& sight : aim.sights) {
            const Lights lights = lightsIn(viewer::shown(views[sight.moment], aim.place, facing));
            for (int i = 0; i < lightCount; i++)
                worth +=
                    value[i] * sight.facing * lights[i] * std::exp(-shining[sight.moment][i] / enough[i]);
        }
        return worth;
    }

    // Where it throws the comet back at some moment, or what trails behind that.
    std::vector<Vec> flashing(const Aim& aim) const {
        constexpr size_t everyOther = 4;                     // moment
        constexpr double behind[] = {1.0, 6.0, 12.0, 20.0};  // degrees from the comet's head
        std::vector<Vec> facings;
        for (size_t i = 0; i < aim.sights.size(); i += everyOther)
            for (const double along : behind)
                facings.push_back(
                    viewer::facing(views[aim.sights[i].moment], aim.place,
                                   viewer::direction(comet::azimuth + along, comet::elevation)));
        return facings;
    }

    // Spread evenly over a ball, from a start of the mirror's own.
    static std::vector<Vec> glancing(size_t mirror) {
        constexpr int tries = 200;
        std::vector<Vec> facings;
        for (int i = 0; i < tries; i++) {
            const double k = mirror * tries + i;
            const double height = 2 * fraction(0.7548776662 * k) - 1,
                         turn = 2 * pi * fraction(0.5698402910 * k);
            facings.push_back(hall::onRing(turn, std::sqrt(1 - height * height), height));
        }
        return facings;
    }

    void choose(size_t mirror, bool flashes) {
        constexpr double least = 0.015;  // cosine that it keeps to its own normal
        Aim& aim = aims[mirror];
        double most = 0;
        for (const Vec& candidate : flashes ? flashing(aim) : glancing(mirror)) {
            if (dot(candidate, aim.normal) < least) continue;
            const double worth = worthOf(aim, candidate);
            if (worth > most) most = worth, aim.facing = candidate;
        }
        for (const Sight& sight : aim.sights) {
            const Lights lights = lightsIn(viewer::shown(views[sight.moment], aim.place, aim.facing));
            for (int i = 0; i < lightCount; i++) shining[sight.moment][i] += lights[i];
        }
    }
};

}  // namespace

namespace ball {

Shape plainMirrors() {
    Shape mirrors;
    const double step = pi / rows;
    for (int row = 0; row < rows; row++) {
        const double middle = step * (row + 0.5);  // from the pole
        const int columns = std::max(6, int(std::lround(2 * rows * std::sin(middle))));
        const double halfTurn = pi / columns * mirrorPart, half = step / 2 * mirrorPart;
        for (int column = 0; column < columns; column++) {
            const double turn = 2 * pi * (column + 0.5 * (row % 2)) / columns;
            const int first = int(mirrors.points.size());
            for (const auto& [across, down] : {Flat{1, 1}, Flat{-1, 1}, Flat{-1, -1}, Flat{1, -1}}) {
                const double away = middle + half * down;
                mirrors.points.push_back(hall::ballCentre + hall::onRing(turn + halfTurn * across,
                                                                         halfBreadth * std::sin(away),
                                                                         halfHeight * std::cos(away)));
            }
            addFace(mirrors, {first, first + 1, first + 2, first + 3});
        }
    }
    return mirrors;
}

Shape mirrors() {
    Shape mirrors = plainMirrors();
    const Glitter glitter(mirrors);
    for (int i = 0; i < int(mirrors.faces.size()); i++) {
        Face& face = mirrors.faces[i];
        const Vec centre = faceCentre(mirrors, face);
        face.normals.clear();
        for (int point : face.points)
            face.normals.push_back(normalized(glitter.facing(i) + (mirrors.points[point] - centre) * domed));
    }
    return painted(mirrors, hull::coolLamp);
}

}  // namespace ball

void makeBallCollision(const char* path) {
    writeAml(path, {mappedBox(smoothed(icosphere(copyRadius, 2), hard), 24)});
}

// Between the mirrors shines what turns within.
void makeBall(const char* path) {
    writeAml(path, {painted(smoothed(icosphere(withinRadius, 2), pi), hull::dark.low)});
}
