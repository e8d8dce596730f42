// The hall's plan, which all that stands in it shares, in units of the hall. Angles are radians round the y
// axis, from x towards z.
#pragma once

#include "effects/fitting.h"
#include "production/kit/model/shape.h"

namespace hall {

using model::Vec;

constexpr double wallRadius = 500, wallHeight = 600;  // of the drum under the dome

// The stage's terraces from outside in: radius of the riser, the height of its foot, and its own.
struct Terrace {
    double radius, foot, height;
};
constexpr Terrace terraces[] = {{204, 0, 4}, {164, 4, 4}, {124, 8, 4}, {84, 12, 5}, {46, 17, 6}};

constexpr double pathIn = 210, pathOut = 290;  // the camera circles between them, at y = 60 to 140
constexpr int sources = fitting::beamSources;  // of beams
constexpr double sourceRadius = fitting::sourceRadius, sourceHeight = fitting::sourceHeight;
constexpr Vec ballCentre = {0, fitting::ballHeight, 0};

// The studs on the stage, one below each source, between which beams draw a star.
constexpr double starRadius = 132, starHeight = 26;

// The four quarters: who stands in each, and where its middle lies. The camera looks across the hall, so it
// has the ship before it at 138, 153.7 and 169.4 s, each other one a quarter of 15.7 s later than the one
// before it, the colossus at 145.4, 161.1 and 176.8 s. No projector hangs before any of them then.
constexpr double towerTurn = model::degrees(4), shipTurn = model::degrees(94),
                 planetTurn = model::degrees(184), colossusTurn = model::degrees(274);

// Whose quarter a bearing lies in, in that order.
inline int quarterOf(double turn) {
    return (int(std::lround((turn - towerTurn) / (model::pi / 2))) % 4 + 4) % 4;
}

inline Vec onRing(double turn, double radius, double y) {
    return {radius * std::cos(turn), y, radius * std::sin(turn)};
}

}  // namespace hall
