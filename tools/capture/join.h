// Parts joined to a film, without encoding a frame again.
#pragma once

#include <string>
#include <vector>

#include "tools/capture/options.h"
#include "tools/capture/soundtrack.h"

// Writes the film of the frames that the options ask for, at the parts' rate, and its manifest. The parts
// have to be whole, drawn alike, for the soundtrack if there is one, and hold each frame once. False after a
// line on standard error, unless the capture was stopped; then what was there before is untouched.
bool joinParts(const std::vector<std::string>& parts, const CaptureOptions& options,
               const Soundtrack* soundtrack);
