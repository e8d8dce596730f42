// Pitched instruments. Each adds its notes to a stretch of sound: velocity is loudness, brightness (0..1)
// opens its filter or whatever it has in the place of one.
#pragma once

#include <array>

#include "production/kit/sound/envelope.h"
#include "production/kit/sound/instrument.h"

namespace audio {

// As in Supersaw.
struct Saws {
    float detune, spread;
};

// A low pass, as far open as the note is bright.
struct LowPass {
    float darkest, brightest;  // Hz of the cut-off at brightness 0 and 1
    float resonance = 0;
};

// Eight saws a note through a low pass that the note opens or closes: pads, plucks and stabs.
struct SawVoice {
    Adsr level;
    float sweep = 0;  // seconds in which the filter closes; 0: it stays open
    float bloom = 0;  // seconds in which it opens first; 0: it begins open
    LowPass filter;   // as StateVariable
    Saws saws;
    float gain;
};
void play(const SawVoice& voice, const Note& note, Stereo& out);

// One note at a time: notes that touch are bound, the pitch gliding from one to the next. A note that is
// stressed after a softer one, or repeats a pitch, is struck anew.
struct LeadVoice {
    float glide;       // seconds
    float vibrato;     // semitones, after a note has been held for a while
    float hollow = 0;  // 0..1: from saws to the pulse an octave below them
    float above = 0;   // octaves by which the saws stand above the note
    Saws saws;
    LowPass filter;  // as Ladder
    float release;   // seconds
    float gain;
};
Instrument playedBy(const LeadVoice& voice);

// A sine in the middle under saws that stand to both sides; the floor of the music.
struct BassVoice {
    Adsr level;
    float sweep = 0;   // seconds in which the filter closes; 0: it stays open
    LowPass filter;    // as Ladder; Hz above 80
    float detune = 0;  // semitones between the sides
    float sub = 0;     // how loud the sine is against the saws
    float drive = 0;   // dB into the rounding of the saws
    float gain;
};
void play(const BassVoice& voice, const Note& note, Stereo& out);

// Two sines, one bending the other's phase (frequency modulation; Chowning 1973): bells and glass.
struct BellVoice {
    float ratio;             // of the bending sine's frequency to the sounding one's
    float index, indexFall;  // turns of bend at brightness 1, seconds in which it goes
    float fall;              // seconds in which the note dies, whatever its length
    float shimmer;           // semitones between the sides
    float gain;
};
void play(const BellVoice& voice, const Note& note, Stereo& out);

// A torn saw through a mouth that opens and closes in time with the song. Brightness is how far.
struct GrowlVoice {
    Adsr level;
    float drive;                 // dB into the tearing
    float from, to;              // vowels as below, closed and open
    float size;                  // of the head: 1 is a man's, more is smaller
    std::array<float, 4> rates;  // swings a beat, bar by bar
    float beatsPerSecond;
    float chest;   // how loud the body is
    float throat;  // how loud the mouth is
    float teeth;   // how loud the hiss of the tearing is, which the mouth opens to 2 to 4 kHz
    float detune;  // semitones between the sides
    float gain;
};
void play(const GrowlVoice& voice, const Note& note, Stereo& out);

// Saws through four formants. Brightness chooses the vowel: 0 u, 0.25 o, 0.5 a, 0.75 e, 1 i.
struct SingingVoice {
    Adsr level;
    float opening;  // seconds in which the mouth opens from u to the note's vowel
    float vibrato;  // semitones
    float breath;   // 0..1, noise among the saws
    float gain;
};
void play(const SingingVoice& voice, const Note& note, Stereo& out);

// Partials of one long note that come and go on their own, each at its own place between the sides.
void playDrone(const Note& note, Stereo& out);

// An instrument of a voice above whose notes know nothing of each other.
template <class Voice>
Instrument playedBy(const Voice& voice) {
    return eachBy([voice](const Note& note, Stereo& out) { play(voice, note, out); });
}

}  // namespace audio
