// Parts of a film: silent, each with its manifest. What a machine of many draws, and what a capture that can
// be resumed leaves behind on its way.
#pragma once

#include "tools/capture/manifest.h"
#include "tools/capture/options.h"
#include "tools/capture/progress.h"
#include "tools/capture/soundtrack.h"
#include "tools/capture/stepped_show.h"

constexpr int secondsOfPiece = 10;  // what a capture that is killed and resumed loses at most

// Draws the frames as a part; `manifest` tells what it is a part of. False if there is no new part, after a
// line on standard error unless the capture was stopped; one that was there before is untouched then.
bool drawPart(SteppedShow& show, const std::vector<int>& frames, Progress& progress, const std::string& path,
              Manifest manifest);

// Whether the film or part that the options ask for is whole and as `wanted` would have it drawn. Says so,
// or, in a line too, why one that is whole is not.
bool isDrawn(const CaptureOptions& options, const Manifest& wanted);

// Draws that film or part in parts of ten seconds, in a folder beside it, but for those that are whole there
// already, and joins them.
bool drawResumably(SteppedShow& show, const CaptureOptions& options, const Manifest& wanted,
                   const Soundtrack& soundtrack);
