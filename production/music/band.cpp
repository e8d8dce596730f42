#include "production/music/band.h"

#include "production/kit/audio_drums.h"
#include "production/kit/audio_voices.h"

namespace {

using Notes = std::span<const Note>;

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
constexpr SawVoice pad = {{0.3f, 2, 0.8f, 1.0f}, 0, 300, 9000, 0.6f, 0.15f, 1, 0.5f};
constexpr SawVoice strings = {{0.09f, 1.5f, 0.8f, 0.4f}, 0, 500, 12000, 0.6f, 0.2f, 1, 0.5f};
constexpr SawVoice stab = {{0.002f, 0.5f, 0.35f, 0.22f}, 0.35f, 700, 14000, 0.9f, 0.22f, 1, 0.65f};
constexpr SawVoice pluck = {{0.002f, 0.25f, 0.05f, 0.12f}, 0.16f, 600, 12000, 1.2f, 0.1f, 0.8f, 0.7f};
constexpr SawVoice arp = {{0.002f, 0.22f, 0.1f, 0.1f}, 0.14f, 500, 14000, 1.4f, 0.08f, 0.8f, 0.7f};
constexpr BellVoice bells = {
    .ratio = 3.5f, .index = 0.35f, .indexFall = 0.9f, .fall = 2.6f, .shimmer = 0.06f, .gain = 0.4f};
constexpr BellVoice glass = {
    .ratio = 2.0f, .index = 0.3f, .indexFall = 0.12f, .fall = 0.55f, .shimmer = 0.1f, .gain = 0.4f};
constexpr BellVoice robot = {
    .ratio = 1.41f, .index = 1.2f, .indexFall = 0.1f, .fall = 0.22f, .shimmer = 0.2f, .gain = 1.0f};
constexpr SingingVoice choir = {{0.4f, 1, 0.9f, 0.7f}, 0, 0.12f, 0.25f, 0.9f};
constexpr SingingVoice voice = {{0.015f, 0.8f, 0.8f, 0.25f}, 0.09f, 0.1f, 0.12f, 0.9f};

}  // namespace

const std::vector<Part> band = {
    // Drums
    {"kick",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) { strike(notes, out, {kickDrum(49, 0.28f, 0.85f)}); },
     {.level = -4.5}},
    {"thump",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) { strike(notes, out, {kickDrum(52, 0.22f, 0.15f)}); },
     {.level = -5, .hall = -16}},
    {"snare",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) { strike(notes, out, {snareDrum(188, 0.2f, 0.8f)}); },
     {.level = -3.5, .lowCut = 110, .room = -10}},
    {"slam",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         Stereo slam = snareDrum(150, 0.4f, 1);
         mixAt(slam, tomDrum(82, 0.4f), 0, 0.8f);
         mixAt(slam, handClap(0.3f), 0, 0.6f);
         strike(notes, out, {slam});
     },
     {.level = -11, .lowCut = 60, .room = -6, .hall = -10}},
    {"clap",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) { strike(notes, out, {handClap(0.16f)}); },
     {.level = -10, .width = 1.3f, .room = -9, .hall = -20}},
    {"rim",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) { strike(notes, out, {boxKnock(900, 1)}); },
     {.level = -9, .pan = 0.15f, .lowCut = 400, .room = -8, .hall = -16}},
    {"roll",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {snareDrum(205, 0.11f, 0.7f), snareDrum(198, 0.11f, 0.75f)});
     },
     {.level = -7, .lowCut = 160, .room = -10}},
    {"hat",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {hiHat(0.05f, 0.5f, 1), hiHat(0.035f, 0.6f, 2), hiHat(0.06f, 0.4f, 3)});
     },
     {.level = -11, .pan = 0.25f}},
    {"openHat",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {hiHat(0.2f, 0.4f, 4), hiHat(0.19f, 0.45f, 5)});
     },
     {.level = -17.5, .pan = -0.2f, .width = 1.2f, .room = -18}},
    {"ride",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {hiHat(0.7f, 0.2f, 6), hiHat(0.6f, 0.3f, 7)});
     },
     {.level = -23, .pan = 0.35f}},
    {"crash",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {crashCymbal(1.9f, 31), crashCymbal(1.7f, 32)});
     },
     {.level = -11, .width = 1.3f, .duck = 0.2f, .hall = -14}},
    {"toms",
     Notation::melody,
     -60,
     [](Notes notes, Stereo& out) { strike(notes, out, {tomDrum(110, 0.25f)}); },
     {.level = -11, .room = -8, .hall = -14}},
    {"lowBox",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) { strike(notes, out, {boxKnock(155, 0.4f)}); },
     {.level = -7, .pan = -0.45f, .room = -8}},
    {"middleBox",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {boxKnock(262, 0.6f), boxKnock(270, 0.4f)});
     },
     {.level = -8, .pan = 0.5f, .room = -8}},
    {"highBox",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {boxKnock(470, 0.8f), boxKnock(523, 0.6f)});
     },
     {.level = -9, .pan = -0.1f, .room = -6, .echo = -14}},
    {"shaker",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {shaker(0.07f, 1), shaker(0.05f, 2), shaker(0.06f, 3)});
     },
     {.level = -14, .pan = 0.4f}},
    {"tick",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) {
         strike(notes, out, {tick(2100), tick(1900)});
     },
     {.level = -11, .pan = -0.25f, .room = -10, .echo = -16}},

    // Noises
    {"impact",
     Notation::hits,
     0,
     [](Notes notes, Stereo& out) { strike(notes, out, {impact(2.2f, 0.9f)}); },
     {.level = -8, .width = 1.4f, .hall = -8}},
    {"riser", Notation::melody, 0, playRiser, {.level = -9, .lowCut = 200, .hall = -14}},
    {"fall", Notation::melody, 0, playFall, {.level = -12, .lowCut = 150, .hall = -12}},
    {"reverse", Notation::melody, 0, playReverse, {.level = -9, .lowCut = 400, .hall = -14}},
    {"wind", Notation::melody, 0, playWind, {.level = -8, .lowCut = 200, .hall = -12}},

    // The floor
    {"sub",
     Notation::melody,
     0,
     [](Notes notes, Stereo& out) { playBass(sub, notes, out); },
     {.level = -11, .duck = 0.9f}},
    {"bass",
     Notation::bass,
     31,
     [](Notes notes, Stereo& out) { playBass(bass, notes, out); },
     {.level = -8, .lowCut = 55, .duck = 0.7f}},
    {"growl",
     Notation::melody,
     0,
     [](Notes notes, Stereo& out) { playBass(growl, notes, out); },
     {.level = -8, .lowCut = 70, .duck = 0.6f, .room = -20}},
    {"growlBass",
     Notation::bass,
     31,
     [](Notes notes, Stereo& out) { playBass(growl, notes, out); },
     {.level = -8, .lowCut = 70, .duck = 0.7f, .room = -20}},
    {"drone", Notation::melody, 0, playDrone, {.level = -8, .duck = 0.4f, .hall = -10, .chorus = 0.4f}},

    // Harmony
    {"pad",
     Notation::stabs,
     62,
     [](Notes notes, Stereo& out) { playSaws(pad, notes, out); },
     {.level = -12, .lowCut = 230, .duck = 0.5f, .hall = -9, .chorus = 0.4f}},
    {"strings",
     Notation::stabs,
     67,
     [](Notes notes, Stereo& out) { playSaws(strings, notes, out); },
     {.level = -13, .width = 1.2f, .lowCut = 350, .duck = 0.7f, .hall = -10}},
    {"choir",
     Notation::stabs,
     62,
     [](Notes notes, Stereo& out) { sing(choir, notes, out); },
     {.level = -13, .width = 1.2f, .lowCut = 220, .duck = 0.5f, .hall = -6, .chorus = 0.5f}},
    {"stab",
     Notation::stabs,
     67,
     [](Notes notes, Stereo& out) { playSaws(stab, notes, out); },
     {.level = -12, .width = 1.2f, .lowCut = 200, .duck = 0.6f, .room = -14, .hall = -14}},
    {"pluck",
     Notation::stabs,
     70,
     [](Notes notes, Stereo& out) { playSaws(pluck, notes, out); },
     {.level = -8, .lowCut = 250, .duck = 0.3f, .hall = -14, .echo = -10}},
    {"arp",
     Notation::arpeggio,
     67,
     [](Notes notes, Stereo& out) { playSaws(arp, notes, out); },
     {.level = -8, .pan = -0.15f, .lowCut = 300, .duck = 0.5f, .hall = -16, .echo = -11}},
    {"glass",
     Notation::arpeggio,
     79,
     [](Notes notes, Stereo& out) { playBells(glass, notes, out); },
     {.level = -7, .pan = 0.2f, .lowCut = 300, .duck = 0.3f, .hall = -10, .echo = -8}},
    {"robot",
     Notation::arpeggio,
     62,
     [](Notes notes, Stereo& out) { playBells(robot, notes, out); },
     {.level = -9, .pan = 0.3f, .lowCut = 250, .room = -8, .echo = -8}},

    // Melody
    {"lead",
     Notation::melody,
     0,
     [](Notes notes, Stereo& out) { playLead(lead, notes, out); },
     {.level = -5, .lowCut = 220, .duck = 0.25f, .hall = -13, .echo = -12}},
    {"second",
     Notation::melody,
     0,
     [](Notes notes, Stereo& out) { playLead(second, notes, out); },
     {.level = -7, .width = 1.5f, .lowCut = 300, .duck = 0.3f, .hall = -12, .echo = -14}},
    {"counter",
     Notation::melody,
     0,
     [](Notes notes, Stereo& out) { playSaws(strings, notes, out); },
     {.level = -12, .width = 1.3f, .lowCut = 300, .duck = 0.4f, .hall = -10}},
    {"siren",
     Notation::melody,
     0,
     [](Notes notes, Stereo& out) { playLead(siren, notes, out); },
     {.level = -5, .width = 1.3f, .lowCut = 300, .room = -12, .hall = -14, .echo = -12}},
    {"bells",
     Notation::melody,
     0,
     [](Notes notes, Stereo& out) { playBells(bells, notes, out); },
     {.level = -6, .lowCut = 200, .hall = -8, .echo = -9}},
    {"voice",
     Notation::melody,
     0,
     [](Notes notes, Stereo& out) { sing(voice, notes, out); },
     {.level = -8, .lowCut = 180, .room = -14, .hall = -8, .echo = -10}},
};
