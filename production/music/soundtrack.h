// The soundtrack: 126 beats a minute, bar 0 at 17.138 s, nine bars of title before it, last hit on beat 368.
#pragma once

// Writes it as an Ogg Vorbis file.
void makeSoundtrack(const char* path);
