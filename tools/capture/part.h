// Parts of a film: silent, each with its manifest. What a machine of many draws, and what a capture that can
// be resumed leaves behind on its way.
#pragma once

#include "tools/capture/manifest.h"
#include "tools/capture/options.h"
#include "tools/capture/progress.h"
#include "tools/capture/stepped_show.h"

// Draws the frames as a part; `manifest` tells what it is a part of. False if there is no part, after a line
// on standard error unless the capture was stopped.
bool drawPart(SteppedShow& show, const std::vector<int>& frames, Progress& progress, const std::string& path,
              Manifest manifest);

// Draws the film or part that the options ask for in parts of ten seconds, in a folder beside it, but for
// those that are whole there already, and joins them.
bool drawResumably(const CaptureOptions& options);
