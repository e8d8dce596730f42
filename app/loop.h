// The main loop: all events, then one frame, as often as the machine can, but at most 250 times a second.
#pragma once

// Returns after the window or its terminal was closed; the frame after that is still drawn.
void runLoop();
