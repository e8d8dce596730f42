#include "production/music/score.h"

using namespace audio;

const std::vector<Harmony> harmony = {
    {-9, "Gm"},                                       // title
    {-4, "Gm Ebmaj7 Cm9 D"},                          // into the tunnel
    {0, "Gm Gm Eb F Gm Gm Cm D"},                     // the ship
    {8, "Gm Eb Bb F Gm Eb Cm D"},                     // first theme
    {16, "Gm Gm Ab Gm Gm Gm Ab D"},                   // the corridor torn: a half step that grinds
    {24, "Gm7 Gm7 C7 C7 Gm7 Gm7 Eb F"},               // boxes: brighter by one note, E for E flat
    {32, "Ebmaj7 F6 Gm9 Bb/D Ebmaj7 F6 Cm9 Dsus4"},   // smoke
    {40, "D5 Eb/D Cm/D D7b9/D D5 Gm/D Cm/D D7b9/D"},  // the light sinks: all of it over one D
    {48, "Gm Gm Eb Eb Bb Bb F F"},                    // awake
    {56, "Gm Eb Bb F Gm Eb Cm D"},                    // first theme again
    {64, "Eb F Gm Bb Eb F Dm E"},  // second theme, which ends a whole tone higher than it began
    {72, "Am F C G Am F Dm E"},    // first theme, raised
    {80, "F G Am C F G Dm E"},     // second theme, raised
    {88, "Am F Dm Esus4 A5"},      // echoes
};

namespace {

// The first theme: a leap of a fifth, as a streak of light, and the slow way down.
constexpr char theme1[] =
    "G4:3' D5:7' C5:2 Bb4:4 | C5:3 Bb4:3 G4:10 | F4:3' D5:7' C5:2 Bb4:4 | C5:6 A4:10 | "
    "G4:3' D5:7' F5:2 D5:4 | Eb5:3 D5:3 Bb4:10 | C5:3 D5:3 Eb5:6' D5:2 C5:2 | D5:6' C5:2 A4:4 F#4:4";
// The same with runs between its long notes.
constexpr char theme1Runs[] =
    "G4:3' D5:5' Eb5:1 D5:1 C5:2 Bb4:4 | C5:3 Bb4:3 G4:6 A4:2 Bb4:2 | "
    "F4:3' D5:5' F5:2 D5:2 C5:2 Bb4:2 | C5:6' A4:6 F4:2 A4:2 | "
    "G4:3' D5:5' F5:2 G5:2' F5:2 D5:2 | Eb5:3 D5:3 Bb4:6 C5:2 D5:2 | "
    "Eb5:3' D5:3 C5:4 Eb5:2 D5:2 C5:2 | D5:6' F#4:2 A4:4 C5:4";
// A third or a sixth below it.
constexpr char theme1Below[] =
    "D4:3 Bb4:7 A4:2 G4:4 | G4:3 G4:3 Eb4:10 | D4:3 Bb4:7 A4:2 F4:4 | A4:6 F4:10 | "
    "D4:3 Bb4:7 D5:2 Bb4:4 | C5:3 Bb4:3 G4:10 | G4:3 G4:3 C5:6 Bb4:2 G4:2 | F#4:6 A4:2 F#4:4 D4:4";
// Its first half in notes twice as long, over the chords of the smoke.
constexpr char theme1Slow[] =
    "G4:6 D5:10 | -:4 C5:4 A4:8 | C5:6 Bb4:6 G4:4 | -:8 F4:4, Bb4:4, | G4:6 D5:10 | -:4 C5:4 A4:8 | C5:6 "
    "D5:6 "
    "Eb5:4 | D5:16";

// The second theme climbs where the first one falls.
constexpr char theme2[] =
    "Bb4:4 Eb5:4' G5:6' F5:2 | F5:4 C5:4 A5:8' | G5:2 A5:2 Bb5:4' A5:2 G5:2 D5:4 | F5:10' D5:2 F5:4 | "
    "Eb5:4 G5:4 Bb5:6' A5:2 | A5:4 F5:4 C6:8' | D6:4' C6:2 A5:2 F5:4 A5:4 | B5:8' G#5:4 E5:4";
// A whole tone up, for the credits; it stops halfway up its last climb.
constexpr char theme2Raised[] =
    "C5:4 F5:4' A5:6' G5:2 | G5:4 D5:4 B5:8' | A5:2 B5:2 C6:4' B5:2 A5:2 E5:4 | G5:10' E5:2 G5:4 | "
    "F5:4 A5:4 C6:6 B5:2 | B5:4 G5:4 D6:8 | A5:6 F5:2 D5:8 | B4:8 E5:8";
// What the strings sing under the raised first theme.
constexpr char counter[] =
    "E5:8 C5:8 | A4:8 C5:4 F5:4 | G5:8 E5:8 | D5:8 B4:4 D5:4 | E5:8 A5:8 | C6:8 A5:8 | A5:8 D5:8 | E5:8 "
    "G#5:8";

// Title: pieces of the first theme, each alone.
constexpr char titleBells[] = "-:16 | -:12 G5:4 | D6:8 -:8 | -:8 C6:4 Bb5:4 | -:4 G5:4 D6:8";

constexpr char fourOnTheFloor[] = "X...x...X...x...";
constexpr char fourWithPickUp[] = "X...x...X...x... X...x...X...x..o X...x...X...x... X...x..oX...x.o.";
constexpr char backbeat[] = "....x.......x...";
// Soft strokes between the snare's, answering each other over two bars.
constexpr char ghosts[] = ".......o.o...... .......o.o....oo";
constexpr char offbeatHats[] = "..x...x...x...x.";
constexpr char sixteenthHats[] = "XooxXoxoXooxXoxx XooxXoxoXooxXxoo XooxXoxoXooxXoxx XooxXxooXooxXoox";
constexpr char everyBeat[] = "x...x...x...x...";

// Basses
constexpr char drivingBass[] = "R.rr..r.r.rr..o. R.rr..r.r.r.s.o.";
constexpr char rollingBass[] = "..rr.rRr..rr.oRr";
constexpr char boxBass[] = "R--..r..o-..s.r. R--..r.r..o.f.s.";
constexpr char dropBass[] = "R--r--R-.r.r--o. R--r--R-.rr.o-s.";
constexpr char tornBass[] =
    "G1:2' G1:1 -:1 G2:1 -:1 G1:2 -:2 Bb1:2 G1:2 F1:2 | G1:2' G1:1 -:1 G2:1 -:1 G1:2 -:2 C2:2 Db2:2 D2:2 | "
    "Ab1:2' Ab1:1 -:1 Ab2:1 -:1 Ab1:2 -:2 C2:2 Ab1:2 Eb2:2 | G1:2' G1:1 -:1 G2:1 -:1 G1:1 Bb1:1 Db2:2 C2:2 "
    "Bb1:2 F1:2";
// The same line with its holes filled; it ends on the chord that leads back.
constexpr char tornBassFull[] =
    "G1:2' G1:1 G1:1 G2:1 G1:1 G1:2 F1:1 G1:1 Bb1:2 G1:1 G2:1 F1:2 | G1:2' G1:1 G1:1 G2:1 G1:1 G1:2 -:2 "
    "Db2:2' C2:2 Bb1:2 | Ab1:2' Ab1:1 Ab1:1 Ab2:1 Ab1:1 Ab1:2 -:2 C2:2 Eb2:2 Ab2:2 | D2:2' D2:1 D2:1 D3:1 "
    "D2:1 D2:2 A1:2 C2:2 D2:1 Eb2:1 F#2:2'";
// A siren that, the second time, is the first theme with its fifths bent.
constexpr char tornSiren[] =
    "-:16 | -:8 G5:4 Ab5:4 | C6:1 -:1 C6:1 -:1 Ab5:1 -:3 C6:1 -:1 C6:1 -:1 Eb6:4 | D6:8 G5:4 -:4 | "
    "G5:3' D6:7' Db6:2 Bb5:4 | -:16 | Ab5:3' Eb6:7' Db6:2 C6:4 | D6:8' A5:4 F#5:4";

// Boxes: three knocks that answer each other from three places.
constexpr char lowBox[] = "x..x..o...x..o.. x..x..o...x.x...";
constexpr char middleBox[] = "..o..x..o..x..x. ..o..x.x..ox..xo";
constexpr char highBox[] = "....o..x......o. ....o..xo.x...oo";

constexpr char dropStabs[] = "X--x--x--x-..x-- .x-.x--x--x-.xx.";

}  // namespace

const std::vector<Cue> arrangement = {
    // Title, 0 s: a drone, wind, pieces of the theme; the riser ends on the impact.
    {"drone", -9, -4, "G2+D3:80", {-4, 0}, {0.3f, 0.9f}},
    {"sub", -9, -4, "G1:80", {-16, -6}},
    {"wind", -9, -4, "G4:40 D4:40", -2, {0.3f, 0.7f}},
    {"bells", -9, -4, titleBells, -2, 0.5f},
    {"glass", -8, -4, "0...3...4...2... ....5...3.....1.", {-22, -6}, {0.0f, 0.5f}},
    {"choir", -7, -4, "x---------------", {-14, -6}, {0.0f, 0.4f}},
    {"riser", -6, -4, "C4:32", -2, 0.7f},
    {"reverse", -5, -4, "C4:16", 0},

    // 9.5 s: into the tunnel. Ticking, a heart on the odd beats, a fill.
    {"impact", -4, -3, "X...............", 0},
    {"crash", -4, -3, "x...............", -4},
    {"sub", -4, 0, "G1:16 Eb2:16 C2:16 D2:16", -3},
    {"drone", -4, 0, "G2+D3:48 A2+D3:16", {-6, -10}, {0.9f, 0.5f}},
    {"pad", -4, 0, "x---------------", {-8, -2}, {0.15f, 0.5f}},
    {"thump", -4, -1, backbeat, {-3, 0}},
    {"tick", -4, -2, "x...o...x...o...", {-6, -2}},
    {"tick", -2, -1, "x.o.x.o.x.o.x.o.", {-2, 0}},
    {"tick", -1, 0, "xoxoxoxoxoxoxoxo", {0, 2}},
    {"glass", -4, 0, "0.2.3.2.0.2.4.2. 0.2.3.5.4.3.2.1.", {-9, 0}, {0.1f, 0.8f}},
    {"bass", -2, 0, "r.r.r.r.r.r.r.r.", {-8, -3}, {0.0f, 0.4f}},
    {"riser", -2, -0.25f, "C4:28", -4, 0.9f},
    {"roll", -1, -0.25f, "oooooooxoxxxxxxx", {-10, 0}},
    {"toms", -0.25f, 0, "G4:1 D4:1 C4:1 G3:1", 2},

    // 17.1 s: the ship. The camera jumps on each bar, the slam is on each bar's last beat.
    {"kick", 0, 15, fourWithPickUp},
    {"kick", 15, 16, "X...x...X...x.x."},
    {"crash", 0, 8, "x............... ................ ................ ................"},
    {"snare", 0, 16, backbeat},
    {"snare", 4, 16, ghosts, -8},
    {"slam", 0, 8, "............X..."},
    {"hat", 0, 4, "x.o.x.o.x.o.x.oo", -2},
    {"hat", 4, 8, sixteenthHats, -2},
    {"openHat", 2, 8, offbeatHats, {-8, -2}, 0.5f},
    {"bass", 0, 8, drivingBass, 2, {0.4f, 0.75f}},
    {"sub", 0, 8, "G1:32 Eb2:16 F1:16 G1:32 C2:16 D2:16", -4},
    {"stab", 0, 4, "X.......x..x....", {0, 2}, {0.4f, 0.55f}},
    {"stab", 4, 8, "X.......x..x..x. X..x....x..x.x..", {2, 4}, {0.55f, 0.75f}},
    {"glass", 0, 8, "0.2.3.2.4.2.3.1. 0.2.3.2.5.4.3.2.", {-4, -1}, {0.3f, 0.8f}},
    {"drone", 0, 7, "G3:112", {-12, -6}, 0.6f},
    {"riser", 6, 7.94f, "C4:31", -4, 0.8f},
    {"reverse", 7, 8, "C4:16", 0},
    {"toms", 7.5f, 8, "G4:2 D4:1 D4:1 C4:1 C4:1 G3:1 G3:1", 0},

    // 32.3 s: the stripes. First theme, wide.
    {"crash", 8, 16, "x............... ................ ................ ................"},
    {"impact", 8, 9, "x...............", -8},
    {"clap", 8, 16, backbeat, -3},
    {"hat", 8, 16, sixteenthHats, -3},
    {"openHat", 8, 16, offbeatHats, 0, 0.6f},
    {"bass", 8, 16, rollingBass, 0, {0.4f, 0.6f}},
    {"sub", 8, 16, "G1:16 Eb2:16 Bb1:16 F1:16 G1:16 Eb2:16 C2:16 D2:16", -4},
    {"lead", 8, 16, theme1, 0, {0.6f, 0.8f}},
    {"strings", 8, 16, "x---------------", -2, {0.5f, 0.75f}},
    {"arp", 12, 16, "0123210342312013", {-6, -1}, {0.3f, 0.7f}},
    {"riser", 14, 15.75f, "C4:28", -2, 1},
    {"roll", 15, 16, "o.o.o.o.ooooxxxx", {-10, -2}},
    {"fall", 8, 10, "C4:32", -6},

    // 47.6 s: the corridor torn apart. The first two bars are cut to pieces afterwards.
    {"crash", 16, 24, "X............... ................ x............... ................"},
    {"impact", 16, 17, "X...............", -2},
    {"kick", 16, 24, "X...x..xX...x.x. X...x..xX..xx..x"},
    {"snare", 16, 24, "....X..o.o..X... ....X..o.o..X..o"},
    {"slam", 16, 24, "....x.......X..."},
    {"hat", 16, 24, "xxoxxoxxxxoxxoxo", -2},
    {"openHat", 16, 24, "..x...x...x...x.", -2, 0.3f},
    {"growl", 16, 20, tornBass, 0, {0.5f, 0.8f}},
    {"growl", 20, 24, tornBassFull, 0, {0.7f, 1.0f}},
    {"sub", 16, 24, "G1:32 Ab1:16 G1:16 G1:32 Ab1:16 D2:16", -2},
    {"siren", 16, 24, tornSiren, {-4, 1}, {0.5f, 0.85f}},
    {"stab", 16, 24, "x..x..x......... x..x..x...x.x...", -3, 0.7f},
    {"arp", 20, 24, "0101201020130102", {-10, -4}, {0.2f, 0.7f}},
    {"riser", 22, 23.94f, "C4:31", -3, 1},
    {"toms", 23.5f, 24, "G4:1 G4:1 D4:1 D4:1 C4:1 C4:1 G3:1 G3:1", 2},

    // 62.8 s: the boxes. Wood, little else; one breath at 69.5 s.
    {"impact", 24, 25, "x...............", -4},
    {"kick", 24, 32, "X...x...X...x..."},
    {"rim", 24, 32, "....x.......x..o", 0},
    {"clap", 28, 32, backbeat, -2},
    {"lowBox", 24, 32, lowBox},
    {"middleBox", 24, 32, middleBox},
    {"highBox", 24, 32, highBox},
    {"shaker", 24, 32, "xooxxooxxooxxoox", {-6, 0}},
    {"openHat", 28, 32, offbeatHats, -5, 0.4f},
    {"bass", 24, 32, boxBass, 0, {0.25f, 0.5f}},
    {"sub", 24, 32, "G1:32 C2:32 G1:32 Eb2:16 F1:16", -6},
    {"pluck", 24, 32, "..x..x.....x.... ..x....x..x..x..", {-5, 0}, {0.3f, 0.6f}},
    {"glass", 28, 32, "4..3..2.4..3..5.", -3, 0.6f},
    {"impact", 27.625f, 28, "x.....", -3},
    {"toms", 27.625f, 28, "D4:1 G3:1 D4:1 C4:1 G3:1 G3:1", 0},
    {"reverse", 31, 32, "C4:16", -2},
    {"toms", 31.5f, 32, "D4:2 C4:2 G3:2 G3:2", 0},

    // 78.0 s: probes in smoke. No drum; a heart and a glass mark the beat.
    {"impact", 32, 33, "x...............", -6},
    {"fall", 32, 34, "C4:32", -4},
    {"pad", 32, 40, "x---------------", 0, {0.35f, 0.65f}},
    {"choir", 32, 40, "x---------------", {-6, -2}, {0.1f, 0.5f}},
    {"drone", 32, 40, "G2+D3:128", -8, 0.5f},
    {"sub", 32, 40, "Eb2:16 F1:16 G1:16 D2:16 Eb2:16 F1:16 C2:16 D2:16", -7},
    {"bells", 32, 40, theme1Slow, 0, 0.6f},
    {"glass", 32, 40, "0...2...3...4...", -5, {0.2f, 0.5f}},
    {"thump", 32, 40, "x...o...x...o...", -6},
    {"tick", 32, 40, everyBeat, -10},
    {"wind", 32, 40, "G4:64 D4:64", -2, {0.7f, 0.5f}},
    {"arp", 36, 40, "0.1.2.3.4.3.2.1.", {-14, -6}, {0.0f, 0.3f}},

    // 93.3 s: the light sinks. Half time over one D, eight bars of riser; the last beat is left out.
    {"impact", 40, 41, "x...............", -5},
    {"kick", 40, 44, "x...............", -2},
    {"kick", 44, 46, "x.......o.......", -1},
    {"slam", 40, 46, "........x.......", -3},
    {"thump", 40, 46, "....o.......o...", -4},
    {"tick", 40, 44, "x...x...x...x...", -4},
    {"tick", 44, 46, "x.o.x.o.x.o.x.o.", -3},
    {"tick", 46, 47.75f, "xoxoxoxoxoxoxoxo", {-3, 1}},
    {"kick", 46, 47.5f, "x...x...x...x...", -2},
    {"bass", 40, 47.75f, "r.rrr.rrr.rrr.rr", {-4, 0}, {0.0f, 0.75f}},
    {"sub", 40, 47.75f, "D2:124", {-10, -6}},
    {"strings", 40, 47.75f, "x---------------", {-10, -1}, {0.2f, 0.9f}},
    {"robot", 40, 44, "0..5..2....4..1. ..3...0.6...2...", {-6, -2}, {0.2f, 0.6f}},
    {"robot", 44, 47.5f, "0.5.2.4.1.3.6.2. 3.0.5.2.6.4.1.5.", {-2, 0}, {0.5f, 1.0f}},
    {"choir", 44, 47.75f, "x---------------", {-8, 0}, {0.3f, 0.6f}},
    {"riser", 40, 44, "C4:64", -10, 0.5f},
    {"riser", 44, 47.75f, "C4:60", -1, 1},
    {"roll", 46, 47, "o...o...o...o...", {-8, -4}},
    {"roll", 47, 47.75f, "o.o.o.o.oooo", {-4, 0}},
    {"reverse", 47, 48, "C4:16", 2},

    // 108.5 s: awake. At 120.8 s a low pass closes over everything for three seconds.
    {"impact", 48, 49, "X...............", 0},
    {"fall", 48, 50, "C4:32", -3},
    {"crash", 48, 56, "X............... ................ ................ ................"},
    {"kick", 48, 56, fourWithPickUp},
    {"snare", 48, 56, backbeat},
    {"snare", 48, 56, ghosts, -8},
    {"clap", 48, 56, backbeat, -1},
    {"slam", 48, 56, "................ ............x..."},
    {"hat", 48, 56, sixteenthHats, -3},
    {"openHat", 48, 56, offbeatHats, 0, 0.6f},
    {"growlBass", 48, 56, dropBass, -3, {0.4f, 0.6f}},
    {"sub", 48, 56, "G1:32 Eb2:32 Bb1:32 F1:32", -1},
    {"stab", 48, 56, dropStabs, 1, {0.6f, 0.8f}},
    {"lead", 50, 52, "G4:3' D5:7' C5:2 Bb4:4 | -:16", 0, 0.7f},
    {"lead", 52, 54, "-:16 | F4:3' D5:7' C5:2 Bb4:4", 0, 0.7f},
    {"lead", 54, 55, "F4:3' C5:7' D5:2 A4:4", 0, 0.7f},
    {"arp", 52, 56, "0123210342312013", -5, 0.5f},
    {"riser", 54.5f, 55.94f, "C4:23", 0, 1},
    {"toms", 55.5f, 56, "G4:1 G4:1 D4:1 D4:1 C4:1 C4:1 G3:1 G3:1", 2},

    // 123.8 s: greetings. The first theme with runs, a third voice below; every beat is struck.
    {"impact", 56, 57, "x...............", -3},
    {"crash", 56, 64, "X............... ................ ................ ................"},
    {"kick", 56, 63.5f, fourWithPickUp},
    {"snare", 56, 63.5f, backbeat},
    {"snare", 56, 63, ghosts, -8},
    {"clap", 56, 63.5f, everyBeat, -4},
    {"hat", 56, 63.5f, sixteenthHats, -2},
    {"openHat", 56, 63.5f, offbeatHats, 0, 0.6f},
    {"bass", 56, 64, rollingBass, 0, {0.5f, 0.65f}},
    {"sub", 56, 64, "G1:16 Eb2:16 Bb1:16 F1:16 G1:16 Eb2:16 C2:16 D2:16", -3},
    {"lead", 56, 64, theme1Runs, 0, {0.6f, 0.8f}},
    {"second", 56, 64, theme1Below, -2, 0.5f},
    {"strings", 56, 64, "x---------------", -2, 0.6f},
    {"arp", 56, 64, "0123210342312013", -4, {0.5f, 0.8f}},
    {"roll", 63, 64, "o.o.o.o.ooooxxxx", {-8, 0}},
    {"riser", 62, 63.94f, "C4:31", -4, 1},

    // 139.0 s: the room. Second theme; the voice calls on beat 258, and the drums come in with it.
    {"kick", 64, 64.5f, "x..."},
    {"thump", 64, 64.5f, "x...x..."},
    {"glass", 64, 64.5f, "03254365", 0, 0.7f},
    {"reverse", 64, 64.5f, "C4:8", 0},
    {"voice", 64.5f, 65.5f, "Eb4+G4+Bb4:3' -:1 Eb4+G4+Bb4:3 -:1 F4+A4+C5:6' -:2", 1, {0.6f, 0.3f}},
    {"impact", 64.5f, 65, "X.......", -1},
    {"crash", 64.5f, 65, "X.......", 0},
    {"kick", 64.5f, 68, fourOnTheFloor},
    {"kick", 68, 72, fourWithPickUp},
    {"snare", 64.5f, 65, "....x..."},
    {"snare", 65, 72, backbeat},
    {"snare", 68, 72, ghosts, -8},
    {"clap", 66, 72, backbeat, -2},
    {"crash", 68, 72, "x..............."},
    {"hat", 66, 72, sixteenthHats, -3},
    {"openHat", 64.5f, 72, offbeatHats, -2, 0.5f},
    {"bass", 64.5f, 72, drivingBass, -1, {0.4f, 0.7f}},
    {"sub", 64, 72, "Eb2:16 F1:16 G1:16 Bb1:16 Eb2:16 F1:16 D2:16 E2:16", -4},
    {"lead",
     65,
     72,
     "F5:4 C5:4 A5:8' | G5:2 A5:2 Bb5:4' A5:2 G5:2 D5:4 | F5:10' D5:2 F5:4 | "
     "Eb5:4 G5:4 Bb5:6' A5:2 | A5:4 F5:4 C6:8' | D6:4' C6:2 A5:2 F5:4 A5:4 | B5:8' G#5:4 E5:4",
     0,
     {0.6f, 0.8f}},
    {"bells", 64, 72, theme2, -6, 0.5f},
    {"pad", 64, 72, "x---------------", -2, {0.4f, 0.7f}},
    {"arp", 66, 72, "0213243542312013", -5, {0.3f, 0.7f}},
    {"riser", 70, 71.94f, "C4:31", -1, 1},
    {"roll", 71, 72, "o.o.o.o.ooooxxxx", {-8, 0}},
    {"toms", 71.5f, 72, "G4:1 G4:1 D4:1 D4:1 C4:1 C4:1 G3:1 G3:1", 2},

    // 154.3 s: the climax. First theme a whole tone higher, everything under it.
    {"impact", 72, 73, "X...............", 0},
    {"fall", 72, 74, "C4:32", -4},
    {"crash", 72, 80, "X............... ................ x............... ................"},
    {"kick", 72, 80, fourWithPickUp, 0, 0.5f, 2},
    {"snare", 72, 80, "....X.......X..o"},
    {"snare", 72, 80, ghosts, -7},
    {"clap", 72, 80, backbeat},
    {"slam", 72, 80, "................ ............X..."},
    {"hat", 72, 80, sixteenthHats, -2},
    {"openHat", 72, 80, offbeatHats, 0, 0.7f},
    {"ride", 72, 80, "x.x.x.x.x.x.x.x.", -2},
    {"bass", 72, 80, rollingBass, 0, {0.6f, 0.7f}},
    {"growlBass", 76, 80, dropBass, -8, 0.5f},
    {"sub", 72, 80, "A1:16 F1:16 C2:16 G1:16 A1:16 F1:16 D2:16 E2:16", -2},
    {"lead", 72, 80, theme1Runs, 0, {0.7f, 0.9f}, 2},
    {"second", 72, 80, theme1, -2, 0.6f, 14},
    {"strings", 72, 80, "x---------------", -2, 0.65f},
    {"counter", 72, 80, counter, 0, 0.6f},
    {"choir", 72, 80, "x---------------", -2, {0.4f, 0.5f}},
    {"arp", 72, 80, "0123210342312013", -4, {0.6f, 0.8f}},
    {"toms", 79.5f, 80, "G4:2 D4:2 C4:2 G3:2", 2},

    // 169.5 s: the credits. The second theme goes on while one after another leaves.
    {"crash", 80, 84, "x............... ................ x............... ................", -2},
    {"impact", 80, 81, "x...............", -6},
    {"kick", 80, 84, fourOnTheFloor, {0, -2}, 0.5f, 2},
    {"kick", 84, 86, "x.......x.......", -4, 0.5f, 2},
    {"thump", 84, 88, everyBeat, {-2, -8}},
    {"snare", 80, 84, backbeat, -2},
    {"hat", 80, 84, sixteenthHats, {-3, -6}},
    {"openHat", 80, 82, offbeatHats, -3, 0.5f},
    {"shaker", 82, 86, "xooxxooxxooxxoox", {-2, -8}},
    {"tick", 84, 88, everyBeat, -7},
    {"bass", 80, 84, drivingBass, {-1, -4}, {0.5f, 0.1f}},
    {"sub", 80, 88, "F1:16 G1:16 A1:16 C2:16 F1:16 G1:16 D2:16 E2:16", {-4, -8}},
    {"lead",
     80,
     84,
     "C5:4 F5:4' A5:6' G5:2 | G5:4 D5:4 B5:8' | A5:2 B5:2 C6:4' B5:2 A5:2 E5:4 | G5:16'",
     -2,
     {0.7f, 0.3f}},
    {"bells", 80, 88, theme2Raised, {-5, -1}, 0.5f},
    {"pad", 80, 88, "x---------------", {-2, -1}, {0.6f, 0.3f}},
    {"choir", 84, 88, "x---------------", -3, {0.4f, 0.1f}},
    {"arp", 80, 84, "0213243542312013", {-4, -12}, {0.6f, 0.2f}},
    {"glass", 84, 88, "0...2...3...4...", -5, {0.5f, 0.3f}},
    {"fall", 84, 86, "C4:32", -8},

    // 184.8 s: echoes in the dark, and the last hit on beat 368.
    {"pad", 88, 92, "x---------------", {-3, -9}, {0.3f, 0.1f}},
    {"drone", 88, 92, "A2:64", -10, 0.4f},
    {"bells", 88, 92, "A4:3 E5:13 | D5:2, C5:6, -:8 | A4:3, E5:13, | -:16", {-1, -6}, 0.5f},
    {"glass", 88, 91, "0.......3.......", -8, 0.3f},
    {"thump", 88, 92, everyBeat, {-8, -14}},
    {"reverse", 91, 92, "C4:16", -4},
    {"impact", 92, 92.25f, "X...", -3},
    {"sub", 92, 92.25f, "A1:4", -4},
    {"bells", 92, 92.25f, "A3+A4+E5+B5:4'", 0, 0.6f},
    {"stab", 92, 92.25f, "x---", -3, 0.5f},
};

const std::vector<Fader> faders = {
    {-9, -4},   {-4, -3},                                             // the title comes out of the dark
    {-4, -1},   {0, -3},                                              // held back for the ship
    {0, 0.5f},  {8, 0},      {8, -0.5f},  {16, -0.5f},                // ship, stripes
    {16, 1.5f}, {24, 1.5f},  {24, -0.5f}, {32, -0.5f},                // torn, boxes
    {32, -4},   {40, -3},    {40, -4},    {47, -2},    {47.75f, -3},  // smoke, the light sinks
    {48, 1.5f}, {54.5f, 1},  {56, -2},                                // awake, then blurred
    {56, 1},    {64, 0.5f},  {64.5f, 1},  {72, 1},                    // greetings, room
    {72, 2},    {80, 1.5f},                                           // climax
    {80, 0.5f}, {84, -0.5f}, {88, -2},    {91.9f, -4}, {92, 0},       // credits, the last hit
};
