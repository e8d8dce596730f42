// Numbered pictures of the show, and its storyboard.
#pragma once

#include "tools/capture/options.h"

// False after a line on standard error, unless the capture was stopped; pictures that were written stay.
bool drawPictures(const CaptureOptions& options, const std::vector<int>& frames);
bool drawStoryboard(const CaptureOptions& options, const std::vector<int>& all);
