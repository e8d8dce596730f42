// The timeline along the bottom of the desk: segments of the programme, waveform, stems, bars, loop and
// position.
#pragma once

#include "tools/rehearse/canvas.h"
#include "tools/rehearse/desk.h"

constexpr float timelineHeight = 112;  // pixels, of the pane that it is on, without stems
float stripHeight(size_t stems);       // and with so many

// The time under a point of the screen, y counted from the top as a mouse does; -1 off the timeline. For a
// point that is being dragged, the nearest time wherever it is.
int timelineAt(int x, int y, int end, bool dragged, size_t stems = 0);

// The stem, of so many, whose name is there; -1 if there is none.
int stemAt(int x, int y, size_t stems);

// The segment whose begin is under that point, which can be dragged; -1 if there is none.
int cutAt(int x, int y, int end);

void drawTimeline(const DeskState& state);

// Of a segment's name and block; `entry` counts the programme's rows.
Ink segmentInk(int entry);

// The programme's row at a time.
int entryAt(int ms);
