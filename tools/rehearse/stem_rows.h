// The soundtrack's stems as rows of the timeline: which are heard, and what each of them has where.
#pragma once

#include "tools/rehearse/desk.h"

// Pixels, of so many stems.
float stemRowsHeight(size_t stems);

// The waveforms of the rows, the first one on top, from `bottom` up; a column of them is a pixel from `left`
// on.
void drawStemRows(const DeskState& state, float left, float bottom);
// And their names, over what else is drawn there.
void drawStemNames(const DeskState& state, float left, float bottom);

// Whose name is under a point of the screen, where the rows are drawn at `left` and `bottom`; y counted from
// the top as a mouse does. -1 off all names.
int stemAt(int x, int y, size_t stems, float left, float bottom);
