#include "production/models/comet.h"

#include "production/kit/model/forms.h"
#include "production/models/arcade.h"
#include "production/models/viewer.h"
#include "production/shared/comet.h"
#include "script/show_times.h"

using namespace model;

namespace {

constexpr double halfHeight = 44;       // units of a track, over which
constexpr double halfElevation = 0.25;  // the picture is seen this far from the comet's middle, radians

// What a place must face to show the viewer, at that time, the place of the picture of reflections that lies
// `above` the comet's head (radians).
Vec showingAt(double time, Vec place, double above) {
    return viewer::facing(viewer::at(time), place,
                          viewer::direction(comet::azimuth, comet::elevation + above / degrees(1)));
}

// A flight: where the head is, so many seconds after the last card, as a turn in degrees and a height, and
// how high its track is there (0..1 of the whole).
struct Waypoint {
    double time, turn, height, size;
};

// Each place of the track shows the head at the time when it gets there, and then what trails behind it, as
// the viewer moves on: what he sees flies. A track is dark beside it.
Shape track(const std::vector<Waypoint>& points) {
    const int steps = 24;
    std::vector<Vec> flight, timing;
    for (const Waypoint& point : points) {
        flight.push_back({point.turn, point.height, 0});
        timing.push_back({showtime::afterCredits.seconds() + point.time, point.size, 0});
    }
    flight = curveThrough(flight, false, steps), timing = curveThrough(timing, false, steps);
    const auto placeOf = [&](int c, int r) {
        return hall::onRing(degrees(flight[c].x), arcade::clearOfColumns,
                            flight[c].y + (r - 1) * halfHeight * std::max(timing[c].y, 0.02));
    };
    // The turn grows to the right of who looks at the wall from inside.
    Shape shape = grid(int(flight.size()), 3, false, false, placeOf);
    const auto cornerOf = [&](int point) {
        const int rows = 3, columns = int(flight.size());
        const int c = point % columns, r = point / columns % rows;
        return showingAt(timing[c].x, placeOf(c, r), (r - 1) * halfElevation);
    };
    for (Face& face : shape.faces) {
        face.normals.clear();
        for (int point : face.points) face.normals.push_back(cornerOf(point));
    }
    return shape;
}

// Below the word that is shown when it first flies, and up into the dark as that fades.
const std::vector<Waypoint> overTheNight = {
    {2.0, 104, 300, 0.8}, {3.15, 146, 285, 1.0}, {3.8, 172, 310, 1.0}, {4.45, 196, 430, 1.0},
    {5.0, 212, 500, 1.0}, {5.65, 224, 440, 0.9}, {6.05, 230, 380, 0.2}};
// Before them, from over the tower behind the ship's sun.
const std::vector<Waypoint> toTheSun = {{-3.3, -6, 500, 0.1},
                                        {-2.7, 14, 450, 0.9},
                                        {-2.0, 40, 420, 1.0},
                                        {-1.3, 64, 470, 0.9},
                                        {-0.9, 78, 520, 0.2}};
}  // namespace

namespace comet {

Shape tracks() {
    return joined({track(overTheNight), track(toTheSun)});
}

}  // namespace comet
