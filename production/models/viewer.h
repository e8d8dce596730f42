// How the viewer of the hall moves round the ball, and what a surface there must face to throw back to him a
// given place of the picture of reflections "envmap". What he sees comes again every turn of 15.7 s.
#pragma once

#include "production/kit/model/vector.h"

namespace viewer {

using model::Vec;

// Where he stands and how he looks: to his right, up, and from what he looks at back to him.
struct View {
    Vec eye, right, up, back;
};

// At a time of the music in seconds; between two beats.
View at(double time);

// When he stands at a turn, in his first round of those on the ellipse; and his view then.
double timeAt(double turn);
View standingAt(double turn);

// A direction in the viewer's own axes, by which "envmap" is looked up: `azimuth` in degrees from straight
// behind him to his right, `elevation` in degrees up.
Vec direction(double azimuth, double elevation);

// What a place must face to show him such a direction, and which one it shows him that faces `normal`.
Vec facing(const View& view, Vec place, Vec shown);
Vec shown(const View& view, Vec place, Vec normal);

// What a place must face so that the lamp by the ball lights it for him: half-way between that and where GL
// takes him to be, straight ahead of all.
Vec inLampLight(const View& view, Vec place);

}  // namespace viewer
