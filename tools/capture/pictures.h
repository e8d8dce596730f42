// Numbered pictures of the show, and its storyboard.
#pragma once

#include <vector>

#include "tools/capture/manifest.h"
#include "tools/capture/options.h"
#include "tools/capture/stepped_show.h"

// Those of the frames whose pictures an earlier run with --resume has not drawn as `manifest` would have it;
// the others are entered there. Says how many those are, or why they don't count.
std::vector<int> missingPictures(const CaptureOptions& options, const std::vector<int>& frames,
                                 Manifest* manifest);

// False after a line on standard error, unless the capture was stopped; pictures that were written stay.
bool drawPictures(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& frames,
                  Manifest manifest);
bool drawStoryboard(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& all);
