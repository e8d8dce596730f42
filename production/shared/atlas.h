// Where things lie in the pictures that models are painted with, for those who draw and those who map them:
// in cells of a grid of 16 x 16, from the picture's top left.
#pragma once

namespace atlas {

struct Cells {
    double left, top, width, height;

    // A part of it, counted from its own top left.
    constexpr Cells part(double x, double y, double partWidth, double partHeight) const {
        return {left + x, top + y, partWidth, partHeight};
    }
    constexpr Cells within(double margin) const {
        return part(margin, margin, width - 2 * margin, height - 2 * margin);
    }
    constexpr double right() const { return left + width; }
    constexpr double bottom() const { return top + height; }
    constexpr double middleX() const { return left + width / 2; }
    constexpr double middleY() const { return top + height / 2; }
};

// "shiptex", for all that moves.
namespace hull {

// Plates, by what is on them.
constexpr Cells pale = {0, 0, 6, 5}, dark = {6, 0, 4, 3}, striped = {10, 0, 6, 3}, wing = {10, 9, 6, 7};
constexpr Cells stripe = {10.04, 0.9, 5.92, 0.5};
constexpr Cells warmLamp = {0.9, 8.5, 1.2, 0.16}, coolLamp = {0.9, 9.5, 1.2, 0.16};
// The heap's houses: the front, both walls, the stairs behind, a half of the underside, a side of the core,
// plain paints, and their dark.
constexpr Cells houses[] = {{3.05, 9.05, 6.9, 2.85}, {13.05, 4.45, 2.9, 3.7}};
constexpr Cells gable = {3.1, 9.1, 3.4, 2.75}, stairs = {6.55, 11, 1.95, 0.85},
                soffit = {13.1, 4.5, 1.7, 2.2}, core = {13.1, 6.8, 1.95, 1.3}, shade = {15.2, 6.8, 0.6, 0.4};
constexpr Cells houseWall(int side) {
    return {6.55, 9.1 + 0.95 * side, 3.35, 0.85};
}
enum HousePaint { brass, cloth, leaves, housePaints };
constexpr Cells housePaint(int which) {
    return {14.9, 4.5 + 0.7 * which, 1, 0.7};
}
// The sea, which alone lets light through: of each kind of lantern a sixteenth of its bell from above and
// from below, an arm from its middle to its edge and a thread from its root to its tip; the water, half way
// round and from above downwards. The first kind is the great one's.
constexpr Cells sea = {6, 3, 7, 6}, water = {6, 8.3, 7, 0.7};
constexpr double waterDown = 1.3;  // the power of a place in it that the angle from the zenith is
constexpr double moonDown = 30;    // degrees from there, at the far end of the half that is painted
constexpr int lanterns = 4;
constexpr double bleed = 0.045;  // of each cell's edge, painted on outwards, so that no neighbour shows
constexpr Cells outside(int kind) {
    return kind == 0 ? Cells{8.5, 3, 2, 5} : Cells{11.25, 1.35 + 1.65 * kind, 0.875, 1.65};
}
constexpr Cells inside(int kind) {
    return kind == 0 ? Cells{6, 3, 2.5, 5} : Cells{12.125, 1.35 + 1.65 * kind, 0.875, 1.65};
}
constexpr Cells arm(int kind) {
    return kind == 0 ? Cells{10.5, 3, 0.75, 2.5} : Cells{10.25 + 0.25 * kind, 5.5, 0.25, 2.5};
}
constexpr Cells thread(int kind) {
    return {6 + 1.75 * kind, 8, 1.75, 0.3};
}
// Lacquers of what stands in the hall, each a ramp from its shade on the left to its full tone.
constexpr Cells lacquer(int number) {
    return {0.1 + 0.7 * (number % 4), number < 4 ? 5.1 : 7.2, 0.6, 0.6};
}
enum Lacquer { ivory, orange, petrol, violet, blue };
// The firebird: feathers, each half of one from its shaft to its edge and from its root to its tip; half of
// its body from its back to its belly, and from the beak to the rump; an eye from its middle; its beak.
constexpr Cells feathers = {3.05, 12.05, 6.9, 3.9}, plumage = {3.05, 5.05, 2.9, 3.8};
enum Feather { primary, secondary, covert, lesser, plume, crest, feathersCount };
// The wings' have backs, which are darker.
constexpr int feathersWithBacks = 4;
constexpr Cells feather(int kind, bool back = false) {
    return {3.05, 12.05 + 0.39 * (back ? feathersCount + kind : kind), 6.9, 0.39};
}
constexpr Cells body = {3.05, 5.05, 2.2, 3.8}, eye = {5.25, 5.05, 0.7, 1.9}, beak = {5.25, 6.95, 0.7, 1.9};

}  // namespace hull

// "cubetex": the tunnel's in the left half, the hall's in the right one.
namespace walls {

// A bay of the arcade from joint to joint, a dark one of galleries, and the ribs' paint over a column.
constexpr Cells bay = {0, 0, 5, 11}, gallery = {5, 0, 3, 11}, rib = {0, 11, 8, 4}, black = {0, 15, 8, 1};

// The hall's, over its breadth from the axis to the wall, over its height half a bay, upwards.
constexpr Cells dome = {8, 0, 8, 8};

}  // namespace walls

// "roboscreen": what glows or is painted on the robot.
namespace robot {

// Its faces: in front, then to its left and on round.
constexpr Cells face(int which) {
    return {8.0 * (which % 2), 6.4 * (which / 2), 8, 6.4};
}
constexpr double facesHeight = 12.8;
constexpr double margin = 0.1;  // of the others, within their place
constexpr Cells iris = {0, facesHeight, 3.2, 3.2};
constexpr Cells warmLamp = {4, 14.5, 4, 1}, coldTube = {8, 14.5, 2.5, 1};
// Lacquers, each a patch: lit from the left to the right by the key, and from where neither lamp falls
// upwards by the cold lamp, downwards by the light below.
constexpr double neither = 0.4;
enum class Lacquer { ivory, orange, petrol, brass };
constexpr int lacquers = 4;
constexpr Cells lacquer(int which) {
    return {4 + 2.0 * which, 13.2, 2, 1};
}

}  // namespace robot

}  // namespace atlas
