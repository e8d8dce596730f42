#include "production/music/soundtrack.h"

#include "production/kit/audio_drums.h"
#include "production/kit/audio_loudness.h"
#include "production/kit/audio_song.h"
#include "production/kit/audio_voices.h"
#include "production/kit/audio_vorbis.h"

namespace {

void playKick(std::span<const Note> notes, Stereo& out) {
    const Stereo kick = kickDrum(49, 0.32f, 0.7f);
    for (const Note& note : notes) mixAt(out, kick, frameAt(note.start), note.velocity);
}

const Song song = {
    .beatsPerMinute = 126,
    .barZero = 17.138,
    .seconds = 197.5,
    .parts =
        {
            {"kick", Notation::hits, 0, playKick, {.level = -6}},
            {"bass", Notation::bass, 31, playBass, {.level = -10, .duck = 0.8f}},
            {"pad", Notation::stabs, 62, playPad, {.level = -14, .lowCut = 150, .duck = 0.5f, .hall = -8}},
            {"arp",
             Notation::arpeggio,
             55,
             playPluck,
             {.level = -14, .lowCut = 250, .duck = 0.4f, .hall = -12, .echo = -9}},
        },
    .cues =
        {
            {"pad", -9, -4, "x--- ---- ---- ----", {-20, -4}, {0.1f, 0.3f}},
            {"pad", -4, 88, "x--- ---- ---- ----", -3, 0.5f},
            {"kick", 0, 32, "x...x...x...x..."},
            {"kick", 48, 80, "x...x...x...x..."},
            {"bass", 0, 32, "R.r.r.o.r.r.o.f."},
            {"bass", 48, 80, "R.r.r.o.r.r.o.f."},
            {"arp", 0, 88, "0.2.1.3.2.4.1.3.", {-6, 0}, 0.5f},
            {"kick", 92, 92.25f, "X..."},
            {"pad", 92, 92.25f, "X---"},
        },
    .harmony = {{-9, "Gm"}, {0, "Gm Gm Eb F Gm Gm Cm D"}, {72, "Am F C G Am F Dm E"}, {88, "Am"}},
    .duckedBy = "kick",
    .duckRecovery = 0.3,
    .room = {0.01f, 0.6f, 0.8f, 6000, 200},
    .hall = {0.03f, 1.1f, 2.6f, 5000, 250},
    .echoFeedback = 0.45f,
};

}  // namespace

void makeSoundtrack(const char* path) {
    Stereo mix = perform(song);
    for (int pass = 0; pass < 2; pass++) {
        scale(mix, gainOf(-14 - integratedLoudness(mix)));
        limit(mix, -2, 0.15f);
    }
    fadeEnds(mix, 0.01f, float(song.seconds - 193.5));
    writeVorbis(path, mix, 0.6f, {{"TITLE", "Ondrevane 2"}, {"ARTIST", "KVX"}});
}
