#include "production/music/band.h"

#include <utility>

#include "production/kit/sound/drums.h"
#include "production/kit/sound/voices.h"

using namespace audio;

namespace {

constexpr BassVoice bass = {.level = {0.003f, 0.4f, 0.7f, 0.04f},
                            .sweep = 0.16f,
                            .darkest = 260,
                            .brightest = 5200,
                            .resonance = 0.45f,
                            .detune = 0.12f,
                            .sub = 0.2f,
                            .growl = 0,
                            .growlRate = 0,
                            .drive = 4,
                            .gain = 1.5f};
constexpr BassVoice growl = {.level = {0.003f, 0.6f, 0.85f, 0.03f},
                             .sweep = 0.3f,
                             .darkest = 500,
                             .brightest = 6500,
                             .resonance = 0.6f,
                             .detune = 0.35f,
                             .sub = 0.07f,
                             .growl = 0.7f,
                             .growlRate = 6.3f,  // three swings a beat
                             .drive = 14,
                             .gain = 2.5f};
constexpr BassVoice sub = {.level = {0.008f, 1, 1, 0.06f},
                           .sweep = 0,
                           .darkest = 20,
                           .brightest = 21,
                           .resonance = 0,
                           .detune = 0,
                           .sub = 1,
                           .growl = 0,
                           .growlRate = 0,
                           .drive = 0,
                           .gain = 0.7f};
constexpr LeadVoice lead = {.glide = 0.05f,
                            .vibrato = 0.22f,
                            .hollow = 0.3f,
                            .detune = 0.12f,
                            .darkest = 700,
                            .brightest = 11000,
                            .resonance = 0.25f,
                            .release = 0.25f,
                            .gain = 0.9f};
constexpr LeadVoice second = {.glide = 0.07f,
                              .vibrato = 0.15f,
                              .hollow = 0,
                              .detune = 0.2f,
                              .darkest = 600,
                              .brightest = 9000,
                              .resonance = 0.1f,
                              .release = 0.25f,
                              .gain = 0.8f};
constexpr LeadVoice siren = {.glide = 0.22f,
                             .vibrato = 0.5f,
                             .hollow = 0.6f,
                             .detune = 0.3f,
                             .darkest = 900,
                             .brightest = 9000,
                             .resonance = 0.7f,
                             .release = 0.12f,
                             .gain = 0.9f};
constexpr SawVoice pad = {.level = {0.3f, 2, 0.8f, 1.0f},
                          .sweep = 0,
                          .darkest = 300,
                          .brightest = 9000,
                          .resonance = 0.6f,
                          .detune = 0.15f,
                          .spread = 1,
                          .gain = 0.5f};
constexpr SawVoice strings = {.level = {0.09f, 1.5f, 0.8f, 0.4f},
                              .sweep = 0,
                              .darkest = 500,
                              .brightest = 12000,
                              .resonance = 0.6f,
                              .detune = 0.2f,
                              .spread = 1,
                              .gain = 0.5f};
constexpr SawVoice stab = {.level = {0.002f, 0.5f, 0.35f, 0.22f},
                           .sweep = 0.35f,
                           .darkest = 700,
                           .brightest = 14000,
                           .resonance = 0.9f,
                           .detune = 0.22f,
                           .spread = 1,
                           .gain = 0.65f};
constexpr SawVoice pluck = {.level = {0.002f, 0.25f, 0.05f, 0.12f},
                            .sweep = 0.16f,
                            .darkest = 600,
                            .brightest = 12000,
                            .resonance = 1.2f,
                            .detune = 0.1f,
                            .spread = 0.8f,
                            .gain = 0.7f};
constexpr SawVoice arp = {.level = {0.002f, 0.22f, 0.1f, 0.1f},
                          .sweep = 0.14f,
                          .darkest = 500,
                          .brightest = 14000,
                          .resonance = 1.4f,
                          .detune = 0.08f,
                          .spread = 0.8f,
                          .gain = 0.7f};
constexpr BellVoice bells = {
    .ratio = 3.5f, .index = 0.35f, .indexFall = 0.9f, .fall = 2.6f, .shimmer = 0.06f, .gain = 0.4f};
constexpr BellVoice glass = {
    .ratio = 2.0f, .index = 0.3f, .indexFall = 0.12f, .fall = 0.55f, .shimmer = 0.1f, .gain = 0.4f};
constexpr BellVoice robot = {
    .ratio = 1.41f, .index = 1.2f, .indexFall = 0.1f, .fall = 0.22f, .shimmer = 0.2f, .gain = 1.0f};
constexpr SingingVoice choir = {
    .level = {0.4f, 1, 0.9f, 0.7f}, .opening = 0, .vibrato = 0.12f, .breath = 0.25f, .gain = 0.9f};
constexpr SingingVoice voice = {
    .level = {0.015f, 0.8f, 0.8f, 0.25f}, .opening = 0.09f, .vibrato = 0.1f, .breath = 0.12f, .gain = 0.9f};

// The blow on a bar's last beat: a snare, a tom and hands at once.
Stereo slam() {
    Stereo sound = snareDrum(150, 0.4f, 1);
    mixAt(sound, tomDrum(82, 0.4f), 0, 0.8f);
    mixAt(sound, handClap(0.3f), 0, 0.6f);
    return sound;
}

Part hits(const char* name, Instrument play, const Channel& channel) {
    return {name, Notation::hits, 0, std::move(play), channel};
}
// shift: semitones.
Part melody(const char* name, int shift, Instrument play, const Channel& channel) {
    return {name, Notation::melody, shift, std::move(play), channel};
}
Part melody(const char* name, Instrument play, const Channel& channel) {
    return melody(name, 0, std::move(play), channel);
}
// In the next three, `pitch` is where the chords' tones are sought: the lowest, or the middle for whole
// chords.
Part bassLine(const char* name, int pitch, Instrument play, const Channel& channel) {
    return {name, Notation::bass, pitch, std::move(play), channel};
}
Part chords(const char* name, int pitch, Instrument play, const Channel& channel) {
    return {name, Notation::stabs, pitch, std::move(play), channel};
}
Part arpeggio(const char* name, int pitch, Instrument play, const Channel& channel) {
    return {name, Notation::arpeggio, pitch, std::move(play), channel};
}

}  // namespace

std::vector<Part> band() {
    return {
        // Drums
        hits("kick", struck({kickDrum(49, 0.28f, 0.85f)}), {.level = -4.5}),
        hits("thump", struck({kickDrum(52, 0.22f, 0.15f)}), {.level = -5, .hall = -16}),
        hits("snare", struck({snareDrum(188, 0.2f, 0.8f)}), {.level = -3.5, .lowCut = 110, .room = -10}),
        hits("slam", struck({slam()}), {.level = -11, .lowCut = 60, .room = -6, .hall = -10}),
        hits("clap", struck({handClap(0.16f)}), {.level = -10, .width = 1.3f, .room = -9, .hall = -20}),
        hits("rim", struck({boxKnock(900, 1)}),
             {.level = -9, .pan = 0.15f, .lowCut = 400, .room = -8, .hall = -16}),
        hits("roll", struck({snareDrum(205, 0.11f, 0.7f), snareDrum(198, 0.11f, 0.75f)}),
             {.level = -7, .lowCut = 160, .room = -10}),
        hits("hat", struck({hiHat(0.05f, 0.5f, 1), hiHat(0.035f, 0.6f, 2), hiHat(0.06f, 0.4f, 3)}),
             {.level = -11, .pan = 0.25f}),
        hits("openHat", struck({hiHat(0.2f, 0.4f, 4), hiHat(0.19f, 0.45f, 5)}),
             {.level = -17.5, .pan = -0.2f, .width = 1.2f, .room = -18}),
        hits("ride", struck({hiHat(0.7f, 0.2f, 6), hiHat(0.6f, 0.3f, 7)}), {.level = -23, .pan = 0.35f}),
        hits("crash", struck({crashCymbal(1.9f, 31), crashCymbal(1.7f, 32)}),
             {.level = -11, .width = 1.3f, .duck = 0.2f, .hall = -14}),
        melody("toms", -60, struck({tomDrum(110, 0.25f)}), {.level = -11, .room = -8, .hall = -14}),
        hits("lowBox", struck({boxKnock(155, 0.4f)}), {.level = -7, .pan = -0.45f, .room = -8}),
        hits("middleBox", struck({boxKnock(262, 0.6f), boxKnock(270, 0.4f)}),
             {.level = -8, .pan = 0.5f, .room = -8}),
        hits("highBox", struck({boxKnock(470, 0.8f), boxKnock(523, 0.6f)}),
             {.level = -9, .pan = -0.1f, .room = -6, .echo = -14}),
        hits("shaker", struck({shaker(0.07f, 1), shaker(0.05f, 2), shaker(0.06f, 3)}),
             {.level = -14, .pan = 0.4f}),
        hits("tick", struck({tick(2100), tick(1900)}),
             {.level = -11, .pan = -0.25f, .room = -10, .echo = -16}),

        // Noises
        hits("impact", struck({impact(2.2f, 0.9f)}), {.level = -8, .width = 1.4f, .hall = -8}),
        melody("riser", playRiser, {.level = -9, .lowCut = 200, .hall = -14}),
        melody("fall", playFall, {.level = -12, .lowCut = 150, .hall = -12}),
        melody("reverse", playReverse, {.level = -9, .lowCut = 400, .hall = -14}),
        melody("wind", playWind, {.level = -8, .lowCut = 200, .hall = -12}),

        // The floor
        melody("sub", playedBy(sub), {.level = -11, .duck = 0.9f}),
        bassLine("bass", 31, playedBy(bass), {.level = -8, .lowCut = 55, .duck = 0.7f}),
        melody("growl", playedBy(growl), {.level = -8, .lowCut = 70, .duck = 0.6f, .room = -20}),
        bassLine("growlBass", 31, playedBy(growl), {.level = -8, .lowCut = 70, .duck = 0.7f, .room = -20}),
        melody("drone", playDrone, {.level = -8, .duck = 0.4f, .hall = -10, .chorus = 0.4f}),

        // Harmony
        chords("pad", 62, playedBy(pad),
               {.level = -12, .lowCut = 230, .duck = 0.5f, .hall = -9, .chorus = 0.4f}),
        chords("strings", 67, playedBy(strings),
               {.level = -13, .width = 1.2f, .lowCut = 350, .duck = 0.7f, .hall = -10}),
        chords("choir", 62, playedBy(choir),
               {.level = -13, .width = 1.2f, .lowCut = 220, .duck = 0.5f, .hall = -6, .chorus = 0.5f}),
        chords("stab", 67, playedBy(stab),
               {.level = -12, .width = 1.2f, .lowCut = 200, .duck = 0.6f, .room = -14, .hall = -14}),
        chords("pluck", 70, playedBy(pluck),
               {.level = -8, .lowCut = 250, .duck = 0.3f, .hall = -14, .echo = -10}),
        arpeggio("arp", 67, playedBy(arp),
                 {.level = -8, .pan = -0.15f, .lowCut = 300, .duck = 0.5f, .hall = -16, .echo = -11}),
        arpeggio("glass", 79, playedBy(glass),
                 {.level = -7, .pan = 0.2f, .lowCut = 300, .duck = 0.3f, .hall = -10, .echo = -8}),
        arpeggio("robot", 62, playedBy(robot),
                 {.level = -9, .pan = 0.3f, .lowCut = 250, .room = -8, .echo = -8}),

        // Melody
        melody("lead", playedBy(lead), {.level = -5, .lowCut = 220, .duck = 0.25f, .hall = -13, .echo = -12}),
        melody("second", playedBy(second),
               {.level = -7, .width = 1.5f, .lowCut = 300, .duck = 0.3f, .hall = -12, .echo = -14}),
        melody("counter", playedBy(strings),
               {.level = -12, .width = 1.3f, .lowCut = 300, .duck = 0.4f, .hall = -10}),
        melody("siren", playedBy(siren),
               {.level = -5, .width = 1.3f, .lowCut = 300, .room = -12, .hall = -14, .echo = -12}),
        melody("bells", playedBy(bells), {.level = -6, .lowCut = 200, .hall = -8, .echo = -9}),
        melody("voice", playedBy(voice), {.level = -8, .lowCut = 180, .room = -14, .hall = -8, .echo = -10}),

    };
}
