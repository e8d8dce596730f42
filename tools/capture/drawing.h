// Frames of the show, drawn one after the other and handed to whoever writes them.
#pragma once

#include <vector>

#include "tools/capture/film.h"
#include "tools/capture/grabber.h"
#include "tools/capture/progress.h"
#include "tools/capture/stepped_show.h"

// Draws the frames, ascending, and hands each to `write`. False if that failed or the capture was stopped.
bool drawFrames(SteppedShow& show, const std::vector<int>& frames, Progress& progress, Grabber::Write write);

// Finishes a film that was given all it needs, or not. False after a line on standard error, unless the
// capture was stopped.
bool finishFilm(Film& film, bool complete);

// The same into a film, which then is in its place; `seen`, if any, gets each picture too. False if there is
// no film, after a line on standard error unless the capture was stopped.
bool drawFilm(SteppedShow& show, const std::vector<int>& frames, Progress& progress, Film& film,
              const std::function<void(const Picture&)>& seen = nullptr);
