// Parts joined to a film, without encoding a frame again.
#pragma once

#include <string>
#include <vector>

#include "tools/capture/options.h"

// Writes the film of the frames that the options ask for, at the parts' rate, and its manifest. The parts
// have to be whole, drawn alike, and hold each frame once. `sound` adds the soundtrack. False after a line on
// standard error, unless the capture was stopped; then there is no film.
bool joinParts(const std::vector<std::string>& parts, const CaptureOptions& options, bool sound);
