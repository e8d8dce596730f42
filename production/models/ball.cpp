// The mirror ball and the copy that beams are traced against.
#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "production/comet_place.h"
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/hall.h"
#include "production/models/models.h"
#include "production/models/viewer.h"

using namespace model;

namespace {

constexpr double radius = 42;  // of the copy
constexpr int level = 2;

// The mirrors: rows of squares, their corners a little inside the copy, so that a beam's spot lies on glass.
constexpr double glassRadius = 41.5;
constexpr int rows = 18;
constexpr double mirrorPart = 0.86;  // of its place that a mirror covers, each way
constexpr double domed = 0.0016;     // radians that a mirror seems to bend for each unit from its middle

Shape mirrorRows() {
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
                mirrors.points.push_back(hall::onRing(turn + halfTurn * across, glassRadius * std::sin(away),
                                                      glassRadius * std::cos(away)));
            }
            addFace(mirrors, {first, first + 1, first + 2, first + 3});
        }
    }
    return mirrors;
}

// The ball as the viewer has it before him at a moment, turned as the program turns it.
struct Moment {
    viewer::View view;
    double y, x;  // radians that it is turned about either axis

    Vec turned(Vec p) const {
        const Vec q = {p.x, p.y * std::cos(x) - p.z * std::sin(x), p.y * std::sin(x) + p.z * std::cos(x)};
        return {q.x * std::cos(y) + q.z * std::sin(y), q.y, q.z * std::cos(y) - q.x * std::sin(y)};
    }
    Vec turnedBack(Vec p) const {
        const Vec q = {p.x * std::cos(y) - p.z * std::sin(y), p.y, p.x * std::sin(y) + p.z * std::cos(y)};
        return {q.x, q.y * std::cos(x) + q.z * std::sin(x), q.z * std::cos(x) - q.y * std::sin(x)};
    }
};

// Radians that the program turns the ball about either axis in a second of the music.
constexpr double turnY = 0.21, turnX = 0.28;
constexpr double firstMoment = 139, lastMoment = 192.8, momentStep = 0.1;  // seconds

std::vector<Moment> moments() {
    std::vector<Moment> all;
    for (double time = firstMoment; time < lastMoment; time += momentStep)
        all.push_back({viewer::at(time), turnY * time, turnX * time});
    return all;
}

// What a mirror shows over the time that it faces the viewer.
struct Sight {
    int moment;
    Vec place;      // in the hall
    double facing;  // cosine towards the viewer
};

std::vector<Sight> sightsOf(const std::vector<Moment>& all, Vec centre, Vec normal) {
    constexpr double least = 0.25;
    std::vector<Sight> sights;
    for (int i = 0; i < int(all.size()); i++) {
        const Vec place = hall::ballCentre + all[i].turned(centre);
        const double facing = dot(all[i].turned(normal), normalized(all[i].view.eye - place));
        if (facing > least) sights.push_back({i, place, facing});
    }
    return sights;
}

// How much of the glow beyond the hall lies in a direction of the picture of reflections, about.
double glowLight(Vec direction) {
    const double aside = std::abs(direction.x) / (std::hypot(direction.x, direction.y) + 1e-4);
    return smoothStep(-0.48, -0.78, direction.z) * mix(direction.y < 0 ? 0.5 : 0.4, 1.0, aside);
}

// Aims mirrors at the comet, which is the bright place of what the ball throws back, so that they flash: each
// for the moments that have the fewest flashes from the others. Those that are missed the least lean far over
// to where they throw back the glow beyond the hall the longest, and so light the ball's body.
class Glitter {
public:
    explicit Glitter(const Shape& mirrors) : all(moments()), flashes(all.size()) {
        for (const Face& face : mirrors.faces) {
            const Vec normal = faceNormal(mirrors, face);
            aims.push_back({normal, normal, sightsOf(all, faceCentre(mirrors, face), normal)});
        }
        for (Aim& aim : aims) choose(aim);
        // Once more, now that all others are known.
        for (Aim& aim : aims) {
            count(aim, -1);
            choose(aim);
        }
        leanTheIdle();
    }

    Vec facing(int mirror) const { return aims[mirror].facing; }

private:
    struct Aim {
        Vec normal, facing;
        std::vector<Sight> sights;
    };
    const std::vector<Moment> all;
    std::vector<double> flashes;  // by moment: mirrors alight
    std::vector<Aim> aims;

    double lightOf(const Sight& sight, Vec facing) const {
        const Moment& moment = all[sight.moment];
        return viewer::cometLight(viewer::shown(moment.view, sight.place, moment.turned(facing))) *
               sight.facing;
    }

    double glowOf(const Sight& sight, Vec facing) const {
        const Moment& moment = all[sight.moment];
        return glowLight(viewer::shown(moment.view, sight.place, moment.turned(facing))) * sight.facing;
    }

    void count(const Aim& aim, double sign) {
        for (const Sight& sight : aim.sights) flashes[sight.moment] += sign * lightOf(sight, aim.facing);
    }

    double worthOf(const Aim& aim, Vec facing) const {
        constexpr double enough = 0.7;  // mirrors alight at once
        double worth = 0;
        for (const Sight& sight : aim.sights)
            worth += lightOf(sight, facing) * std::exp(-flashes[sight.moment] / enough);
        return worth;
    }

    void lean(Aim& aim) const {
        constexpr int directions = 12;
        const Vec right = normalized(cross(aim.normal, {0.31, 0.77, 0.55})), up = cross(aim.normal, right);
        double most = 0;
        for (const double by : {40.0, 52.0, 64.0}) {
            for (int i = 0; i < directions; i++) {
                const double turn = 2 * pi * i / directions;
                const Vec facing = aim.normal * std::cos(degrees(by)) +
                                   (right * std::cos(turn) + up * std::sin(turn)) * std::sin(degrees(by));
                double worth = 0;
                for (const Sight& sight : aim.sights) worth += glowOf(sight, facing);
                if (worth > most) most = worth, aim.facing = facing;
            }
        }
    }

    // The half seconds in which a mirror flashes.
    std::set<int> slotsOf(const Aim& aim) const {
        constexpr double bright = 0.45;  // of the comet
        std::set<int> slots;
        for (const Sight& sight : aim.sights)
            if (lightOf(sight, aim.facing) > bright * sight.facing)
                slots.insert(int(sight.moment * momentStep / 0.5 + 1e-6));
        return slots;
    }

    // Up to two of five mirrors: what they light in passing, another one lights too.
    void leanTheIdle() {
        std::map<int, int> alight;
        for (const Aim& aim : aims)
            for (int slot : slotsOf(aim)) alight[slot]++;
        size_t leaning = 0;
        for (size_t i = 0; i < aims.size() && leaning < aims.size() * 2 / 5; i++) {
            Aim& aim = aims[(i * 7) % aims.size()];
            const std::set<int> slots = slotsOf(aim);
            if (std::any_of(slots.begin(), slots.end(), [&](int slot) { return alight[slot] < 3; })) continue;
            for (int slot : slots) alight[slot]--;
            lean(aim);
            leaning++;
        }
    }

    void choose(Aim& aim) {
        constexpr double mostLean = 0.35;  // cosine
        constexpr int pause = 3;           // moments between two that are tried
        double most = 0;
        for (size_t i = 0; i < aim.sights.size(); i += pause) {
            const Moment& moment = all[aim.sights[i].moment];
            for (const double along : {1.0, 6.0, 12.0, 20.0}) {
                const Vec shown = viewer::direction(comet::azimuth + along, comet::elevation);
                const Vec facing = moment.turnedBack(viewer::facing(moment.view, aim.sights[i].place, shown));
                if (dot(facing, aim.normal) < mostLean) continue;
                const double worth = worthOf(aim, facing);
                if (worth > most) most = worth, aim.facing = facing;
            }
        }
        count(aim, 1);
    }
};

Shape glittering(Shape ball) {
    const Glitter glitter(ball);
    for (int i = 0; i < int(ball.faces.size()); i++) {
        Face& face = ball.faces[i];
        const Vec centre = faceCentre(ball, face);
        face.normals.clear();
        for (int point : face.points)
            face.normals.push_back(normalized(glitter.facing(i) + (ball.points[point] - centre) * domed));
    }
    return ball;
}

}  // namespace

void makeBallCollision(const char* path) {
    writeAml(path, {mappedBox(smoothed(icosphere(radius, level), hard), 24)});
}

// Between the mirrors shines the light within, which hangs still in the hall.
void makeBall(const char* path) {
    writeAml(path, {painted(glittering(mirrorRows()), hull::coolLamp)});
}
