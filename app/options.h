// The command line: the whole of the program's configuration.
#pragma once

#include "sound/sound.h"

struct Options {
    bool fullscreen = true;
    int soundOutput = sound::Alsa;  // a sound::Output
    bool usage = false;             // print the usage text and quit: asked for, or an unknown word
};

// Later words override earlier ones; reading stops at the first word that calls for the usage text.
Options parseOptions(int argc, const char* const* argv);

// To standard output.
void printUsage();
