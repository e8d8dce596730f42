// The command line of `rehearse`.
#pragma once

#include <string>

#include "sound/sound.h"

struct RehearseOptions {
    double second = 0;  // where it begins
    bool held = false;
    bool numbers = false;  // with the list of numbers open
    int soundOutput = sound::Alsa;
    std::string stateFile;    // none if empty
    std::string pictureFile;  // none if empty; else `held` as well
};

// Prints the usage text or one line about the word that is wrong and ends the process, with status 0 or 1.
RehearseOptions parseRehearseOptions(int argc, const char* const* argv);
