// The window of a capture, whose pixels may be drawn from several samples each.
#pragma once

constexpr int samplesOfRenderer = -1;  // what suits the renderer
constexpr int mostSamples = 64;

// Opens the show's window with at least `samples` samples a pixel; 0 for one like the show's own.
// Ends the program after one line if the driver has none with so many.
void openCaptureWindow(int samples);

// Of the window that is open.
int windowSamples();
// Who draws, and which release of it: what tells whether two machines draw alike.
const char* rendererName();
