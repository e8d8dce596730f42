// Frames of the show, drawn one after the other and handed to whoever writes them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/capture/film.h"
#include "tools/capture/grabber.h"
#include "tools/capture/manifest.h"
#include "tools/capture/progress.h"
#include "tools/capture/stepped_show.h"

// Writes a line on standard error, behind the program's name. False, for who fails by it.
bool tell(const std::string& line);

// Draws the frames, ascending, and hands each to `write`. False if that failed or the capture was stopped, or
// if a frame could not be read back: `problem` then says so, or where there is none a line on standard error.
bool drawFrames(SteppedShow& show, const std::vector<int>& frames, Progress& progress, Grabber::Write write,
                std::string* problem = nullptr);

// Finishes a film that was given all it needs, or not, and puts it in its place, with its manifest if it is
// to have one. What was there before stays until then. False after a line on standard error, unless the
// capture was stopped: also where `objection` has one to what ffmpeg has read.
bool finishFilm(
    Film& film, bool complete, Manifest* manifest,
    const std::function<std::string()>& objection = [] { return ""; });

// The line on standard error that there is no film, unless the capture was stopped. False.
bool tellNoFilm(const Film& film);

// Draws the frames into a film and finishes it. Its manifest, if any, gets them too.
bool drawFilm(SteppedShow& show, const std::vector<int>& frames, Progress& progress, FilmKind kind,
              Film& film, Manifest* manifest = nullptr);
