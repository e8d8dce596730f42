// Pitched instruments. Each plays its notes into a stretch of sound, adding to what is there; a note's
// brightness opens its filter.
#pragma once

#include <span>

#include "production/kit/audio_notation.h"
#include "production/kit/audio_signal.h"

// A sine under a narrow pulse through a ladder: the floor of the music, in the middle of the field.
void playBass(std::span<const Note> notes, Stereo& out);

// Slow wide saws behind a low pass.
void playPad(std::span<const Note> notes, Stereo& out);

// Short bright saws that close quickly.
void playPluck(std::span<const Note> notes, Stereo& out);
