// The run-up to a frame: what has to happen of the frames before it when they aren't wanted themselves. A
// frame is a function of its time but for what it inherits:
// - the lights and the GL state, as the frame before left them;
// - what only earlier scenes have set, as their last frames left it;
// - what frames leave by their row of the programme, such as a uniform that later ones draw with;
// - the clock's beats and the motion that effects integrate, which advance with every frame, each where the
//   frame's scene keeps house and draws them.
// For the first three, frames have to be drawn; the last can be moved past without drawing, as a row
// of the programme advances.
#pragma once

#include <vector>

// For the times, in milliseconds, of frames in the order of the show: which of them have to be drawn for the
// last to come out as if all were. The last always is; the others are moved past.
std::vector<bool> framesToDraw(const std::vector<int>& ms);

// Moves past the frame at `time` seconds: everything is carried on as if it had been drawn, but nothing is.
void advanceTimeline(float time, float delta);
