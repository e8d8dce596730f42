// Drums and noises as single sounds, to be mixed in wherever they are hit.
#pragma once

#include "production/kit/audio_signal.h"

// tone: Hz that the drum settles on; length: seconds to fall away; punch: 0..1, how much click and drive.
Stereo kickDrum(float tone, float length, float punch);
