#include "production/models/viewer.h"

#include "script/room_view.h"

using namespace model;

namespace {

Vec vec(const float (&p)[3]) {
    return {p[0], p[1], p[2]};
}

}  // namespace

namespace viewer {

View at(double time) {
    const RoomView view = roomView(float(time), 0);
    const Vec eye = vec(view.eye), back = normalized(eye - vec(view.target)),
              right = normalized(cross({0, 1, 0}, back));
    return {eye, right, cross(back, right), back};
}

double timeAt(double turn) {
    constexpr double orbit = 2 * pi / roomTurn;  // seconds of a round
    // When he first stands at turn 0 on his ellipse.
    static const double firstRound = std::ceil(showtime::roomBreathing.seconds() / orbit) * orbit;
    const double rounds = turn / (2 * pi);
    return firstRound + (rounds - std::floor(rounds)) * orbit;
}

View standingAt(double turn) {
    return at(timeAt(turn));
}

Vec direction(double azimuth, double elevation) {
    const double across = degrees(azimuth), height = degrees(elevation);
    return {std::cos(height) * std::sin(across), std::sin(height), std::cos(height) * std::cos(across)};
}

Vec facing(const View& view, Vec place, Vec shown) {
    const Vec there = view.right * shown.x + view.up * shown.y + view.back * shown.z;
    return normalized(there - normalized(place - view.eye));
}

Vec shown(const View& view, Vec place, Vec normal) {
    const Vec sight = normalized(place - view.eye);
    const Vec there = sight - normal * (2 * dot(normal, sight));
    return {dot(there, view.right), dot(there, view.up), dot(there, view.back)};
}

Vec inLampLight(const View& view, Vec place) {
    constexpr Vec lamp = {100, 130, 80};
    return normalized(normalized(lamp - place) + view.back);
}

}  // namespace viewer
