// Drums and noises. A drum is made once as a single sound and struck wherever its notes lie; risers and falls
// are as long as their notes.
#pragma once

#include <cstdint>
#include <vector>

#include "production/kit/sound/instrument.h"

namespace audio {

// tone: Hz that the drum settles on; length: seconds to fall away; punch: 0..1, how much click and drive.
Stereo kickDrum(float tone, float length, float punch);

// A drum head's two tones under rattling noise. rattle: 0..1, the share of noise.
Stereo snareDrum(float tone, float length, float rattle);

// Several hands within 30 ms and the room behind them.
Stereo handClap(float length);

// Six square waves of no common pitch under noise, at 6 to 9 kHz; each seed is tuned a little differently.
// length: 0.04 is a closed hat, 0.3 an open one, 1.5 a ride.
Stereo hiHat(float length, float brightness, uint32_t seed);

Stereo crashCymbal(float length, uint32_t seed);

Stereo tomDrum(float tone, float length);

// A wooden box, struck: four modes that die at their own rates. tone: Hz of the lowest; hardness: 0..1.
Stereo boxKnock(float tone, float hardness);

// Grains in a shell: a short rush of highs.
Stereo shaker(float length, uint32_t seed);

// A clock's tick.
Stereo tick(float tone);

// A falling boom under a burst that darkens. depth: 0..1, how much of the boom.
Stereo impact(float length, float depth);

// Plays the takes in turn at the notes' velocities. `base` is the pitch (MIDI) that the takes have; for hits,
// whose notes tell by how much the drum is tuned up, it is 0.
Instrument struck(std::vector<Stereo> takes, float base = 0);

// Three ways up: noise that climbs for the length of the note, loudest at its end; saws that climb an octave
// from the note's pitch, cut into ever shorter pieces; and playReverse. Brightness is how high they open.
void playRiser(const Note& note, Stereo& out);
void playClimb(const Note& note, Stereo& out);

// The way down: noise that sinks and fades.
void playFall(const Note& note, Stereo& out);

// A cymbal played backwards that ends where the note ends.
void playReverse(const Note& note, Stereo& out);

// Wind that swells and fades over the note and drifts between the sides. Brightness is its pitch.
void playWind(const Note& note, Stereo& out);

}  // namespace audio
