#include "production/music/band.h"

#include <utility>

#include "production/kit/sound/drums.h"
#include "production/kit/sound/voices.h"
#include "script/show_times.h"

using namespace audio;

namespace {

constexpr BassVoice bass = {.level = {0.003f, 0.4f, 0.7f, 0.04f},
                            .sweep = 0.16f,
                            .filter = {260, 5200, 0.45f},
                            .detune = 0.14f,
                            .drive = 6,
                            .gain = 1.5f};
// A sine, and of the saws what passes at 100 Hz.
constexpr BassVoice sub = {.level = {0.006f, 1, 1, 0.04f}, .filter = {20, 21}, .sub = 1, .gain = 0.7f};
constexpr GrowlVoice growl = {.level = {0.003f, 0.6f, 0.85f, 0.03f},
                              .drive = 16,
                              .from = 0.05f,
                              .to = 0.8f,
                              .size = 1.15f,
                              .rates = {1.5f, 3, 2, 4},
                              .beatsPerSecond = showtime::beatsPerMinute / 60.0f,
                              .chest = 0.9f,
                              .throat = 1.1f,
                              .teeth = 1.2f,
                              .detune = 0.2f,
                              .gain = 0.8f};
constexpr LeadVoice lead = {.glide = 0.05f,
                            .vibrato = 0.22f,
                            .hollow = 0.3f,
                            .saws = {0.14f, 1.0f},
                            .filter = {700, 11000, 0.25f},
                            .release = 0.25f,
                            .gain = 0.9f};
constexpr LeadVoice second = {.glide = 0.07f,
                              .vibrato = 0.15f,
                              .saws = {0.2f, 0.8f},
                              .filter = {600, 9000, 0.1f},
                              .release = 0.25f,
                              .gain = 0.8f};
constexpr LeadVoice siren = {.glide = 0.22f,
                             .vibrato = 0.5f,
                             .hollow = 0.6f,
                             .saws = {0.3f, 0.6f},
                             .filter = {900, 9000, 0.7f},
                             .release = 0.12f,
                             .gain = 0.9f};
// Hollow and close, a pipe in the mouth: the pulse sings the note, and a breath of saws stands above it.
constexpr LeadVoice reed = {.glide = 0.03f,
                            .vibrato = 0.3f,
                            .hollow = 0.8f,
                            .above = 1,
                            .saws = {0.06f, 0.6f},
                            .filter = {700, 9000, 0.35f},
                            .release = 0.2f,
                            .gain = 1.1f};
// Dark and slow: what sinks with the light.
constexpr LeadVoice horn = {.glide = 0.12f,
                            .vibrato = 0.2f,
                            .hollow = 0.5f,
                            .saws = {0.15f, 0.4f},
                            .filter = {350, 6000, 0.2f},
                            .release = 0.5f,
                            .gain = 1.0f};
constexpr SawVoice hook = {.level = {0.002f, 0.3f, 0.3f, 0.1f},
                           .sweep = 0.18f,
                           .filter = {700, 13000, 2.0f},
                           .saws = {0.1f, 0.5f},
                           .gain = 0.8f};
constexpr SawVoice pad = {.level = {0.3f, 2, 0.8f, 1.0f},
                          .bloom = 1.2f,
                          .filter = {300, 9000, 0.6f},
                          .saws = {0.15f, 0.8f},
                          .gain = 0.5f};
constexpr SawVoice strings = {.level = {0.09f, 1.5f, 0.8f, 0.4f},
                              .bloom = 0.35f,
                              .filter = {500, 12000, 0.6f},
                              .saws = {0.2f, 0.8f},
                              .gain = 0.5f};
constexpr SawVoice stab = {.level = {0.002f, 0.5f, 0.35f, 0.22f},
                           .sweep = 0.35f,
                           .filter = {700, 14000, 0.9f},
                           .saws = {0.22f, 0.8f},
                           .gain = 0.65f};
constexpr SawVoice pluck = {.level = {0.002f, 0.25f, 0.05f, 0.12f},
                            .sweep = 0.16f,
                            .filter = {600, 12000, 1.2f},
                            .saws = {0.1f, 0.7f},
                            .gain = 0.7f};
constexpr SawVoice arp = {.level = {0.002f, 0.22f, 0.1f, 0.1f},
                          .sweep = 0.14f,
                          .filter = {500, 14000, 1.4f},
                          .saws = {0.08f, 0.7f},
                          .gain = 0.7f};
constexpr BellVoice bells = {
    .ratio = 3.5f, .index = 0.35f, .indexFall = 0.9f, .fall = 2.6f, .shimmer = 0.06f, .gain = 0.4f};
constexpr BellVoice glass = {
    .ratio = 2.0f, .index = 0.3f, .indexFall = 0.12f, .fall = 0.55f, .shimmer = 0.1f, .gain = 0.4f};
constexpr BellVoice robot = {
    .ratio = 1.41f, .index = 1.2f, .indexFall = 0.1f, .fall = 0.22f, .shimmer = 0.1f, .gain = 1.0f};
constexpr SingingVoice choir = {
    .level = {0.4f, 1, 0.9f, 0.7f}, .opening = 0, .vibrato = 0.12f, .breath = 0.25f, .gain = 0.9f};
constexpr SingingVoice voice = {
    .level = {0.015f, 0.8f, 0.8f, 0.25f}, .opening = 0.09f, .vibrato = 0.1f, .breath = 0.12f, .gain = 0.9f};

// The blow on a bar's last beat: a snare, a tom and hands at once.
Stereo slam() {
    Stereo sound = snareDrum(150, 0.4f, 0.9f);
    mixAt(sound, tomDrum(hertzOf(43), 0.4f), 0, 0.8f);
    mixAt(sound, handClap(0.3f), 0, 0.6f);
    return sound;
}

Part hits(const char* name, Instrument play, const Channel& channel) {
    return {name, Role::drums, Notation::hits, {-12, 12}, std::move(play), channel};
}
Part noise(const char* name, Instrument play, const Channel& channel) {
    return {name, Role::noise, Notation::melody, {24, 96}, std::move(play), channel};
}
// Sounding where the parts that it doubles sound, if there are any, an octave or more under them.
Part bassLine(const char* name, Span range, Instrument play, const Channel& channel,
              const char* doubled = "") {
    return {name, Role::bass, Notation::bass, range, std::move(play), channel, 0, doubled};
}
Part chords(const char* name, int voices, Span range, Instrument play, const Channel& channel) {
    return {name, Role::chords, Notation::chords, range, std::move(play), channel, voices};
}
Part arpeggio(const char* name, Span range, Instrument play, const Channel& channel) {
    return {name, Role::chords, Notation::arpeggio, range, std::move(play), channel};
}
Part line(const char* name, Span range, Instrument play, const Channel& channel) {
    return {name, Role::chords, Notation::line, range, std::move(play), channel};
}
Part melody(const char* name, Span range, Instrument play, const Channel& channel, Role role = Role::lead) {
    return {name, role, Notation::melody, range, std::move(play), channel};
}

constexpr int woodPitch = 67, tomPitch = 48;

}  // namespace

std::vector<Part> band() {
    return {
        // Drums
        hits("kick", struck({kickDrum(49, 0.28f, 0.85f)}), {.level = -4.5}),
        hits("thump", struck({kickDrum(52, 0.22f, 0.15f)}), {.level = -5, .hall = -16}),
        hits("snare",
             struck({snareDrum(188, 0.2f, 0.8f), snareDrum(186.4f, 0.21f, 0.77f),
                     snareDrum(189.5f, 0.19f, 0.83f)}),
             {.level = -5, .lowCut = 110, .room = -12}),
        hits("slam", struck({slam()}), {.level = -9, .lowCut = 60, .room = -8, .hall = -12}),
        hits("clap", struck({handClap(0.16f)}), {.level = -12, .room = -10, .hall = -20}),
        hits("rim", struck({boxKnock(hertzOf(79), 1)}),
             {.level = -9, .pan = -0.15f, .lowCut = 400, .room = -8, .hall = -16}),
        hits("roll", struck({snareDrum(205, 0.11f, 0.7f), snareDrum(198, 0.11f, 0.75f)}),
             {.level = -9, .lowCut = 160, .room = -12}),
        hits("hat", struck({hiHat(0.05f, 0.5f, 1), hiHat(0.035f, 0.6f, 2), hiHat(0.06f, 0.4f, 3)}),
             {.level = -15, .pan = 0.12f}),
        hits("openHat", struck({hiHat(0.2f, 0.4f, 4), hiHat(0.19f, 0.45f, 5), hiHat(0.21f, 0.35f, 8)}),
             {.level = -20, .pan = -0.15f, .room = -18}),
        hits("ride", struck({hiHat(0.7f, 0.3f, 6), hiHat(0.6f, 0.35f, 7), hiHat(0.65f, 0.4f, 9)}),
             {.level = -25, .pan = 0.25f}),
        hits("crash", struck({crashCymbal(1.9f, 31), crashCymbal(1.7f, 32)}),
             {.level = -14, .duck = 0.2f, .hall = -14}),
        melody("toms", {36, 60}, struck({tomDrum(hertzOf(tomPitch), 0.25f)}, tomPitch),
               {.level = -9, .room = -10, .hall = -16}, Role::drums),
        hits("lowBox", struck({boxKnock(hertzOf(55), 0.4f)}), {.level = -9, .pan = -0.5f, .room = -9}),
        hits("middleBox", struck({boxKnock(hertzOf(62), 0.6f), boxKnock(hertzOf(60), 0.4f)}),
             {.level = -10, .pan = 0.45f, .room = -9}),
        hits("highBox", struck({boxKnock(hertzOf(70), 0.8f), boxKnock(hertzOf(72), 0.6f)}),
             {.level = -11, .pan = -0.15f, .room = -8, .echo = -16}),
        hits("shaker", struck({shaker(0.07f, 1), shaker(0.05f, 2), shaker(0.06f, 3)}),
             {.level = -17, .pan = 0.06f}),
        hits("tick", struck({tick(2120), tick(1900), tick(2010)}),
             {.level = -13, .pan = -0.2f, .room = -10, .echo = -16}),
        hits("impact", struck({impact(2.2f, 0.9f)}), {.level = -9, .hall = -10}),

        // Noises
        noise("riser", eachBy(playRiser), {.level = -9, .lowCut = 200, .hall = -16}),
        noise("climb", eachBy(playClimb), {.level = -14, .lowCut = 200, .hall = -16}),
        noise("fall", eachBy(playFall), {.level = -12, .lowCut = 150, .hall = -14}),
        noise("reverse", eachBy(playReverse), {.level = -11, .lowCut = 400, .hall = -16}),
        noise("wind", eachBy(playWind), {.level = -8, .lowCut = 200, .hall = -14}),

        // The floor
        bassLine("sub", {26, 39}, playedBy(sub), {.level = -11, .highCut = 140, .duck = 0.9f}, "bass growl"),
        bassLine("bass", {29, 57}, playedBy(bass),
                 {.level = -4, .lowCut = 85, .monoBelow = 300, .duck = 0.8f}),
        bassLine("growl", {29, 57}, playedBy(growl),
                 {.level = -2, .lowCut = 85, .highCut = 3000, .monoBelow = 300, .duck = 0.5f, .room = -22}),
        melody("drone", {36, 60}, eachBy(playDrone),
               {.level = -8, .lowCut = 60, .duck = 0.4f, .hall = -12, .chorus = 0.3f}, Role::bass),

        // Harmony
        chords("pad", 5, {43, 74}, playedBy(pad),
               {.level = -12,
                .width = 1.05f,
                .lowCut = 160,
                .monoBelow = 250,
                .duck = 0.55f,
                .hall = -11,
                .chorus = 0.3f}),
        chords("strings", 4, {55, 79}, playedBy(strings),
               {.level = -12, .width = 2, .lowCut = 250, .duck = 0.7f, .hall = -12}),
        // The same, kept under a tune.
        chords("violas", 4, {50, 70}, playedBy(strings),
               {.level = -12, .width = 2, .lowCut = 250, .duck = 0.7f, .hall = -12}),
        chords("choir", 4, {55, 70}, playedBy(choir),
               {.level = -13, .width = 0.75f, .lowCut = 200, .duck = 0.5f, .hall = -8, .chorus = 0.4f}),
        chords("stab", 4, {50, 77}, playedBy(stab),
               {.level = -12,
                .width = 1.9f,
                .lowCut = 180,
                .monoBelow = 250,
                .duck = 0.5f,
                .room = -16,
                .hall = -16}),
        chords("pluck", 3, {62, 84}, playedBy(pluck),
               {.level = -9, .width = 1.6f, .lowCut = 250, .duck = 0.3f, .hall = -16, .echo = -12}),
        arpeggio("arp", {62, 96}, playedBy(arp),
                 {.level = -11,
                  .pan = -0.1f,
                  .width = 1.85f,
                  .lowCut = 300,
                  .duck = 0.65f,
                  .hall = -18,
                  .echo = -11}),
        arpeggio(
            "glass", {74, 108}, playedBy(glass),
            {.level = -8, .pan = 0.2f, .width = 0.5f, .lowCut = 300, .duck = 0.3f, .hall = -12, .echo = -10}),
        arpeggio("robot", {57, 96}, playedBy(robot),
                 {.level = -10, .pan = 0.25f, .width = 0.7f, .lowCut = 250, .room = -10, .echo = -10}),
        line("counter", {57, 76}, playedBy(strings),
             {.level = -10, .width = 1.7f, .lowCut = 250, .duck = 0.65f, .hall = -12}),

        // Melody
        melody("hook", {55, 89}, playedBy(hook),
               {.level = -7.5, .width = 1.3f, .lowCut = 220, .duck = 0.2f, .hall = -16, .echo = -11}),
        melody("lead", {62, 89}, playedBy(lead),
               {.level = -5.5, .lowCut = 220, .duck = 0.35f, .hall = -15, .echo = -14}),
        melody("second", {57, 93}, playedBy(second),
               {.level = -8.5,
                .pan = 0.2f,
                .width = 1.4f,
                .lowCut = 300,
                .duck = 0.45f,
                .hall = -14,
                .echo = -14}),
        melody("horn", {50, 84}, playedBy(horn), {.level = -7, .lowCut = 120, .duck = 0.3f, .hall = -10}),
        melody("reed", {53, 89}, playedBy(reed),
               {.level = -5.5, .lowCut = 200, .duck = 0.35f, .hall = -12, .echo = -11}),
        melody("siren", {62, 91}, playedBy(siren),
               {.level = -7, .lowCut = 300, .room = -14, .hall = -16, .echo = -14}),
        melody("wood", {50, 89}, struck({boxKnock(hertzOf(woodPitch), 0.5f)}, woodPitch),
               {.level = -6, .pan = 0.1f, .lowCut = 180, .room = -10, .hall = -16, .echo = -14}),
        melody("bells", {55, 96}, playedBy(bells),
               {.level = -7, .width = 0.5f, .lowCut = 200, .hall = -10, .echo = -11}),
        melody("voice", {53, 82}, playedBy(voice),
               {.level = -8, .width = 0.8f, .lowCut = 180, .room = -16, .hall = -10, .echo = -12}),
    };
}

Mixer mixer() {
    return {.duckedBy = "kick",
            .duckRecovery = 0.3,
            .room = {.preDelay = 0.006f, .size = 0.55f, .decay = 0.7f, .damping = 7000, .lowCut = 200},
            .hall = {.preDelay = 0.03f, .size = 1.15f, .decay = 2.4f, .damping = 5000, .lowCut = 250},
            .echo = {.feedback = 0.45f, .lowCut = 300, .highCut = 5000},
            .echoToHall = 0.3f,
            .hallDuck = 0.35f,
            // The sides of a room have nothing in common; a little narrower, mono keeps more of it.
            .width = 0.65f,
            .drums = {.drive = 4.5f, .level = -3.5f},
            .music = {.drive = 6.5f, .level = -6.5f},
            .tone = {.low = 150, .middle = 900, .octaves = 2.5f, .high = 4000},
            .master = {.lowCut = 28,
                       .bells = {{.hertz = 480, .decibels = -2.5f, .octaves = 1.6f},
                                 {.hertz = 4200, .decibels = 3, .octaves = 2}},
                       .highs = {.hertz = 8000, .decibels = 1.5f},
                       .centredBelow = 130,
                       .gain = 0.4f,  // so that the whole has -14 LUFS
                       .compressor = {.threshold = -10, .ratio = 1.5f, .attack = 0.03f, .release = 0.2f},
                       // The codec adds up to 1 dB of its own.
                       .limiter = {.ceiling = -2, .release = 0.12f}}};
}
