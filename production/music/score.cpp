#include "production/music/score.h"

#include <cmath>

#include "production/kit/sound/notation.h"

using namespace audio;

namespace {

// The first theme: a leap of a fifth, as a streak of light, and the slow way down. It breathes every second
// bar.
constexpr char theme1[] =
    "G4:3' D5:7' C5:2 Bb4:4 | C5:3 Bb4:3 G4:6 -:4 | F4:3' D5:7' C5:2 Bb4:4 | C5:6 A4:6 -:4 | "
    "G4:3' D5:3 G5:6' F5:2 D5:2 | Eb5:3 D5:3 Bb4:6 -:4 | C5:3 D5:3 Eb5:6' D5:2 C5:2 | D5:6' C5:2 A4:2 F#4:2 "
    "-:4";
// What answers it where it breathes, in the strokes of the ship's hook.
constexpr char theme1Answers[] =
    "-:16 | -:10 D5:1 -:1 D5:1 F5:2 D5:1 | -:16 | -:10 C5:1 -:1 C5:1 F5:2 A5:1 | -:16 | "
    "-:10 F5:1 -:1 F5:1 Bb5:2 F5:1 | "
    "-:16 | -:10 F#5:1 A5:1 C6:2 A5:2";
// The same with runs between its long notes.
constexpr char theme1Runs[] =
    "G4:3' D5:5' Eb5:1 D5:1 C5:2 Bb4:4 | C5:3 Bb4:3 G4:4 -:2 A4:2 Bb4:2 | "
    "F4:3' D5:5' F5:2 D5:2 C5:2 -:2 | C5:6' A4:4 -:2 F4:2 A4:2 | "
    "G4:3' D5:3 G5:4' A5:1 G5:1 F5:2 D5:2 | Eb5:3 C5:3 Ab4:4 -:2 C5:2 D5:2 | "
    "Eb5:3' D5:3 C5:4 Eb5:2 D5:2 C5:2 | C5:6' F4:2 A4:4 -:4";
// A third or a sixth below it.
constexpr char theme1Below[] =
    "D4:3 Bb4:7 A4:2 G4:4 | G4:3 G4:3 Eb4:4 -:6 | D4:3 Bb4:7 A4:2 -:4 | A4:6 F4:4 -:6 | "
    "D4:3 Bb4:7 D5:2 Bb4:4 | C5:3 Bb4:3 G4:4 -:6 | G4:3 G4:3 C5:6 Bb4:2 G4:2 | F#4:6 A4:2 F#4:4 -:4";
// The same under the runs, from their third to their sixth bar, over the greetings' chords.
constexpr char theme1RunsBelow[] =
    "D4:3 Bb4:5 D5:2 Bb4:2 A4:2 -:2 | A4:6 F4:4 -:6 | D4:3 Bb4:7 D5:2 Bb4:4 | C5:3 Ab4:3 Eb4:4 -:6";
// And sixths below its end, with a step up to the second theme.
constexpr char theme1RunsSixths[] = "G4:3' F4:3 Eb4:4 G4:2 F4:2 Eb4:2 | Eb4:6' A3:2 C4:4 F4:2 A4:2";
// Its first half in notes twice as long, over the chords of the smoke.
constexpr char theme1Slow[] =
    "G4:6 D5:10 | -:4 C5:4 A4:8 | C5:6 Bb4:6 G4:4 | -:8 F4:4, Bb4:4, | G4:6 F5:10 | -:4 D5:4 C5:8 | "
    "C5:6 D5:6 Eb5:4 | D5:12 -:4";

// The second theme climbs where the first one falls.
constexpr char theme2[] =
    "Bb4:4 Eb5:4' G5:6' F5:2 | G5:4' F5:2 C5:2 A5:6' -:2 | G5:2 A5:2 Bb5:4' A5:2 G5:2 D5:4 | F5:8' -:2 D5:2 "
    "F5:4 | "
    "Eb5:4 G5:4 Bb5:6' A5:2 | Bb5:4' A5:2 F5:2 C6:6' -:2";
// A whole tone up, for the credits; it stops halfway up its last climb.
constexpr char theme2Raised[] =
    "C5:4 F5:4' A5:6' G5:2 | A5:4' G5:2 D5:2 B5:6' -:2 | A5:2 B5:2 C6:4' B5:2 A5:2 E5:4 | G5:8' -:2 E5:2 "
    "G5:4 | "
    "F5:4 A5:4 C6:6 B5:2 | C6:4' B5:2 G5:2 D6:6 -:2 | A5:6 F5:2 D5:6 -:2 | B4:8 D5:8";

// The ship's hook: three strokes and a fall, and beat four left to the blow that lands there.
constexpr char hook[] =
    "D5:2' -:1 D5:2 -:1 F5:2' D5:2 C5:2 -:4 | Bb4:2' -:1 Bb4:2 -:1 C5:2 G4:4 -:4 | "
    "Eb5:2' -:1 Eb5:2 -:1 G5:2' F5:2 Eb5:2 -:4 | C5:2' -:1 C5:2 -:1 D5:2 A4:4 -:4 | "
    "D5:2' -:1 D5:2 -:1 F5:2' D5:2 C5:2 -:4 | Bb4:2' -:1 C5:2 -:1 D5:2 G5:4' -:4 | "
    "Eb5:2' -:1 Eb5:2 -:1 G5:2' Eb5:2 C5:2 -:4 | Bb4:2' -:1 C5:2 -:1 F5:2 A5:4' -:4";

// What rings over the first theme's question there, thirds and sixths above it and never to the summit.
constexpr char climaxBells[] =
    "A5:3' C6:7' B5:2 A5:4 | A5:3 A5:3 C6:4 -:6 | G5:3' C6:5' D6:2 C6:2 B5:4 | B5:6' D6:4 -:6";

// A third or a sixth below its second half.
constexpr char hookBelow[] =
    "Bb4:2' -:1 Bb4:2 -:1 D5:2' Bb4:2 A4:2 -:4 | G4:2' -:1 A4:2 -:1 Bb4:2 Bb4:4' -:4 | "
    "C5:2' -:1 C5:2 -:1 Eb5:2' C5:2 G4:2 -:4 | G4:2' -:1 A4:2 -:1 D5:2 F5:4' -:4";

// What the climax answers to the first theme's question: up instead of down, to the highest note of all.
constexpr char climaxAnswer[] =
    "C6:3' B5:3 A5:6 E5:2 A5:2 | C6:3' D6:3 C6:4 A5:4 -:2 | F5:2 A5:2 D6:6' C6:2 B5:2 A5:2 | "
    "B5:6' G#5:2 E6:7' -:1";
// The second half of the question, which fits under that answer: one falls while the other climbs.
constexpr char climaxBelow[] =
    "A4:3' E5:7' D5:2 C5:4 | F5:3 E5:3 C5:6 -:4 | D5:3 E5:3 F5:4' E5:2 D5:2 F5:2 | E5:6' D5:2 B4:2 G#4:4 "
    "B4:2";

// What the awake one calls between the strokes, twice.
constexpr char calls[] = "-:8 D5:2' D5:2 F5:2' D5:2";
constexpr char callsHigher[] = "-:8 G5:2' Bb5:2' G5:2 D5:2";

// A song of the light that sinks: half steps against the one low D.
constexpr char sinkingSong[] =
    "D4:10' Eb4:2 D4:4 | Eb4:6 G4:8 -:2 | G4:6' F#4:2 Eb4:6 -:2 | D4:4 Eb4:4 F#4:6' -:2 | "
    "A4:10' Bb4:2 A4:4 | Bb4:6 D5:8 -:2 | C5:6' Bb4:2 Eb5:6 -:2 | F#5:4 A5:4 C6:4'";

// What the reed sings against the slow theme in the smoke, down where that one goes up.
constexpr char smokeSong[] = "-:8 Bb4:4 F4:4 | G4:8 A4:8 | G4:12 -:4 | G4:8, A4:6 -:2";

// The boxes' tune, on wood.
constexpr char woodTune[] =
    "G4:1 -:2 D5:1 -:2 F5:1 -:1 D5:1 -:1 Bb4:1 -:1 C5:1 -:1 D5:2 | "
    "G4:1 -:2 D5:1 -:2 F5:1 -:1 G5:1 -:1 F5:1 -:1 D5:1 -:3 | "
    "E5:1 -:2 C5:1 -:2 E5:1 -:1 G5:1 -:1 E5:1 -:1 D5:1 -:1 C5:2 | "
    "-:2 Bb4:1 C5:1 E5:2 -:2 G5:1 -:2 E5:1 -:2 C5:2";
constexpr char woodTuneEnd[] =
    "G4:1 -:2 D5:1 -:2 G5:2 F5:1 -:1 D5:2 F5:1 G5:1 -:2 | "
    "Bb5:2' -:1 G5:1 -:2 F5:1 -:1 D5:2 -:2 F5:1 D5:1 C5:1 Bb4:1 | "
    "G4:1 -:2 Eb5:1 -:2 G5:1 -:1 F5:1 -:1 Eb5:1 -:1 Bb4:1 -:1 G4:2 | "
    "-:2 A4:1 C5:1 F5:2 -:2 G5:1 -:2 F5:1 A5:4'";

// Title: pieces of the first theme, each alone, and what will be its arpeggio, a longer piece each time.
constexpr char titleBells[] = "-:16 | -:12 G5:4 | D6:8 -:8 | -:8 C6:4 Bb5:4 | -:4 G5:4 D6:8";
constexpr char titlePieces[] =
    "............0.2. 4............... ....0.2.4.5.4... ..0.2.4.5.7..... 0.1.2.3.4.5.4.7.";

// A siren that, the second time, is the first theme with its fifths bent.
constexpr char tornSiren[] =
    "-:16 | -:8 G5:4 Ab5:4 | C6:1 -:1 C6:1 -:1 Ab5:1 -:3 C6:1 -:1 C6:1 -:1 Eb6:4 | D6:8 G5:4 -:4 | "
    "G5:3' D6:7' Db6:2 Bb5:4 | -:16 | Ab5:3' Eb6:7' Db6:2 C6:4 | C6:4' Ab5:4 A5:4 C6:4";

constexpr char held[] = "x---------------";
constexpr char once[] = "x...............";
constexpr char onceHard[] = "X...............";
constexpr char everyBeat[] = "x...x...x...x...";
constexpr char backbeat[] = "....x.......x...";
constexpr char offbeats[] = "..x...x...x...x.";

constexpr char fourOnTheFloor[] = "X...x...X...x...";
constexpr char fourWithPickUp[] = "X...x...X...x... X...x...X...x..o X...x...X...x... X...x..oX...x.o.";
constexpr char tornKick[] = "X...x..xX...x.x. X...x..xX..xx..x";
constexpr char tornKickFull[] = "X...x..xX...x.x. X.x.x..xX..x.xx.";
constexpr char gapKick[] = "X...o...X...o... X...o...X.......";
constexpr char halfTimeKick[] = "X..x..x...x..x.. X..x..x.....x.x.";
constexpr char dropKick[] =
    "X...x...X...x... X...x...X...x..o X...x...X...x... X...x...X....... "
    "X..x..x.X..x.... X..x..x.X..x.x.. X...x...X...x... X...x...........";
constexpr char brokenKick[] = "X.....x...X..... X.....x..xX...o. X.....x.x.X..x..";
// Soft strokes between the snare's, answering each other over four bars.
constexpr char ghosts[] = ".......:.o...... .......:.o....:o .......:.o..:... ..:....:.o....oo";
constexpr char ghostsLate[] = "..:...o......:.. ..:....o.:...... ..:...o......:o. .:....o..:..:.o.";
constexpr char tornSnare[] = "....X..o.o..X... ....X..o.o..X..o";
constexpr char tornSnareFull[] = "....X..o.oo.X... ....X..o.o.oo.ox";
constexpr char hatsEighth[] = "x.o.x.o.x.o.x.oo";
constexpr char hatsSixteenth[] = "Xo:xXo:oXo:xXo:o Xo:xXo:oXo:xXxo: Xo:xXo:oXo:xXo:o Xo:xXx:oXo:oXo::";
constexpr char hatsPushing[] = "x:oox:oxx:oox:xo x:oox:oxX:oxxoxx";
constexpr char hatsDrop[] = "x.o:x.oox.o:xo.: x.o:x.oox:o.x:ox";
constexpr char hatsTorn[] = "xxoxxoxxxxoxxoxo xoxxoxxoxoxxox::";
constexpr char hatsTornFull[] = "xxoxxoxxxxoxxoxo xoxxoxxoxoxxox:: xxoxxoxxxxoxxoxo xoxxoxxo::::oxxX";
constexpr char hatsBroken[] = "x.:ox.o:x:.ox.:x x.:ox.o:x:oox.::";

// Basses
constexpr char drivingBass[] = "R.rr..r.r.rr..o. R.rr..r.r.r.s.o.";
constexpr char rollingBass[] = "..rr.rRr..rr.oRr ..rr.rRr..rr.oRr ..rr.rRr..rr.oRr ..rr.rRr..r.fosr";
constexpr char growlTalk[] = "R-rr..o-t-R-.... R-..R-r.rrs-a-f-";
constexpr char boxBass[] = "R--..r..o-..s.r. R--..r.r..o.f.s.";
// The drop: each second bar the line stops halfway, and the growl answers.
constexpr char dropBass[] =
    "R--r--R-.r.r--o. R--r--R-........ R--r--R-.r.r--o. R--r--R-........ "
    "R--r--R-.r.r--o. R--r--R-........ R--r--R-.rr.f-t. R--t-r-s";
constexpr char brokenBass[] = "R-----r-..R---o- R-----r-..R-f-s-";
constexpr char tornBass[] = "R-r.o.r-..t-r-s- R-r.o.r-..t-a-f-";
constexpr char tornBassFull[] = "RrrrorrsrtRrorss Rrrrorr-f-trra-o";

// Boxes: three knocks that answer each other from three places.
constexpr char lowBox[] = "x......o..x..o.. x......o..x.x...";
constexpr char middleBox[] = "..o..x..o..x..x. ..o..x.x..ox..xo";
constexpr char fives[] = "x....x....x....x ....x....x....x. ...x....x....x.. ..x....x....x...";
constexpr char highBox[] = "....o..x......o. ....o..xo.x...oo";

constexpr char dropStabs[] =
    "X--x--x--x-..x-- X--x----........ X--x--x--x-..x-- .x-.x--x--x-.xx. X--x--x--x-..x-- X--x----........";
constexpr char climbing[] = "0213243542312013 0314253645342312";
constexpr char turning[] = "0123210342312013 0132431254321031";

// Fills, none like another
constexpr char tomsDown[] = "D3:2 C3:1 C3:1 Bb2:1 Bb2:1 G2:1 G2:1";
constexpr char tomsHalfTime[] =
    "G2:3 -:3 Bb2:2 G2:2 -:2 C3:2 D3:2 | G2:3 -:3 Bb2:2 G2:2 -:2 G2:2 Bb2:2 | "
    "G2:3 -:3 Bb2:2 G2:2 -:2 C3:2 D3:2 | F#2:3 -:3 A2:2 F#2:2 -:2 F#2:2 A2:2";

// A drone, wind, pieces of the theme; the riser ends on the impact.
const std::vector<Cue> title = {
    {"drone", "G2+D3:80", {}, {-4, 0}, {0.3f, 0.9f}},
    {"sub",
     "r--------------- ---------------- ---------------- ---------------- ----------------",
     {},
     {-12, -5}},
    {"wind", "G4:48", {-9, -6}, -2, {0.3f, 0.5f}},
    {"wind", "D4:48", {-7, -4}, -2, {0.5f, 0.7f}},
    {"bells", titleBells, {}, -2},
    {"arp", titlePieces, {}, {-4, 0}, {0.1f, 0.55f}},
    {"glass", "0...3...4...2... ....5...3.....1.", {-7, -5}, {-8, -2.5f}, {0, 0.35f}},
    {"choir", held, {-7, -4}, {-14, -6}, {0, 0.4f}},
    {"riser", "C4:32", {-6, -4}, -2, 0.7f},
    {"reverse", "C4:16", {-5, -4}},
};

// A burst of light whose chord and glass fall for two bars; ticking, a heart on the odd beats, a fill into
// the ship.
const std::vector<Cue> tunnel = {
    {"impact", onceHard, {-4, -3}},
    {"crash", once, {-4, -3}, -0.5f},
    {"stab", "X-----------....", {-4, -3}, -4.5f, 0.9f},
    {"strings", held, {-4, -2}, {-4, -9}, {0.9f, 0.3f}},
    {"sub", "r---------------", {-4, -2}, -3},
    {"drone", "G2+D3:48 A2+D3:16", {}, {-6, -10}, {0.9f, 0.5f}},
    {"pad", held, {}, {-8, -2}, {0.15f, 0.5f}},
    {"thump", backbeat, {-4, -1}, {-3, 0}},
    {"tick", "x...o...x...o... x...o...x..:o... x.o.x.o.x.o.x.o. xoxoxoxoxoxoxox.", {}, {-5, -1}},
    {"glass", "6.5.4.5.6.4.3.5. 4.3.2.3.4.2.1.3.", {-4, -2}, {-1, -8}, {0.9f, 0.3f}},
    {"glass", "0.2.3.2.0.2.4.2. 0.2.3.5.4.3.2.1.", {-2, 0}, {-5, 0}, {0.4f, 0.8f}},
    {"bells", "-:8 D6:4, C6:4, | -:8 G6:4, D6:4, | -:8 D6:4 Eb6:4 | G6:8 F#6:8", {}, -4, 0.4f},
    {"bass", "r.r.r.r.r.r.r.r. r.r.r.r.rrr.rrr.", {-2, 0}, {-8, -3}, {0, 0.4f}},
    {"riser", "C4:28", {-2, -0.25f}, -7, 0.9f},
    {"roll", ":::o::ooxoxx", {-1, -0.25f}, {-8, 0}},
    {"toms", "D3:1 C3:1 Bb2:1", {-0.25f, -0.0625f}, -1},
};

// The camera jumps on each bar, the slam is on each bar's last beat, the hook leaves room for it.
const std::vector<Cue> ship = {
    {"impact", once, {0, 1}, -3},
    {"kick", fourWithPickUp, {0, 4}, 1},
    {"kick", "X...x...X...x... X...x...X...x..o X...x...X...x... X...x..o", {4, 7.5f}, -0.5f},
    {"crash", once, {0, 1}, 1},
    {"snare", "....x..........."},
    {"snare", ghosts, {4, 8}, -6},
    {"slam", "............X...", {0, 7}, 2},
    {"slam", "............X...", {7, 8}},
    {"hat", hatsEighth, {0, 4}, -3},
    {"hat", hatsSixteenth, {4, 8}, -1.5f},
    {"openHat", offbeats, {2, 7.5f}, {-8, -2}},
    {"bass", drivingBass, {0, 4}, 2.5f, {0.4f, 0.55f}},
    {"bass", drivingBass, {4, 7.5f}, 1, {0.55f, 0.75f}},
    {"stab", "X.........x.....", {0, 4}, {-2, 0}, {0.4f, 0.55f}},
    {"stab", "..x...x...x.....", {4, 8}, {0, 1}, {0.55f, 0.75f}},
    {"hook", hook, {}, {-1, 1}, {0.45f, 0.8f}},
    {"second", hookBelow, {4, 8}, 2, 0.6f},
    {"glass", "0.2.3.2.4.2.3.1. 0.2.3.2.5.4.3.2.", {}, {-5, -1}, {0.4f, 0.8f}},
    {"pad", held, {4, 8}, {-3, 0.5f}, {0.4f, 0.7f}},
    {"toms", tomsDown, {7.5f, 8}, -2},
    {"lead", "-:14 D4:1 F4:1", {7, 8}, 0, 0.6f},
};

// First theme, wide; the hook's plucks answer where it breathes.
const std::vector<Cue> stripes = {
    {"impact", once, {8, 9}, -2},
    {"crash", once, {8, 9}, 1.5f},
    {"fall", "C4:32", {8, 10}, -6},
    {"kick", gapKick, {8, 12}, 0.5f},
    {"kick", "X...X...X...X...", {12, 15.75f}, -0.5f},
    {"snare", backbeat, {8, 15}, 2},
    {"snare", ghosts, {}, -6},
    {"clap", backbeat, {8, 16}, {-5, -1}},
    {"hat", "..x:..x:..x:..xo ..x:..x:..x:o.xx", {8, 12}, -2},
    {"hat", hatsPushing, {12, 16}, -4},
    {"openHat", offbeats, {12, 16}, -1, 0.6f},
    {"bass", rollingBass, {8, 15.75f}, {1.5f, 0}, {0.4f, 0.6f}},
    {"lead", theme1, {}, 2.3f, {0.6f, 0.8f}},
    {"hook", theme1Answers, {}, {0, 3}, 0.7f},
    {"violas", held, {8, 12}, {-1, 0}, {0.5f, 0.6f}},
    {"strings", held, {12, 16}, {0.5f, 2}, {0.6f, 0.75f}},
    {"second", barsOf(theme1Below, 4, 8), {12, 16}, 0, 0.6f},
    {"arp", turning, {12, 16}, {1, 5}, {0.4f, 0.8f}},
    {"climb", "G3:32", {14, 16}, -4, 0.8f},
    {"roll", "o.:.o.:.oooo:oxx", {15, 16}, {-10, -4}},
};

// The hardest part; its first two bars are cut to pieces afterwards.
const std::vector<Cue> torn = {
    {"impact", onceHard, {16, 17}, -2},
    {"crash", onceHard, {16, 17}},
    {"kick", tornKick, {16, 18}, {-1.5f, -0.5f}},
    {"kick", halfTimeKick, {18, 22}, 0.5f},
    {"kick", tornKickFull, {22, 24}, -2.3f},
    {"snare", tornSnare, {16, 18}, {-1, 0.5f}},
    {"snare", "........X....... ........X..o..::", {18, 22}, 1.5f},
    {"snare", tornSnareFull, {22, 24}, -2},
    {"slam", "............X...", {18, 21}, -2},
    {"slam", "............X...", {23, 24}, -3},
    {"hat", hatsTorn, {16, 18}, -2},
    {"hat", "x:o:x:o:x:o:x:oo", {18, 20}, 2},
    {"hat", hatsTornFull, {20, 24}, {0, 1}},
    {"growl", tornBass, {16, 18}, {-1, 1}, {0.5f, 0.8f}},
    {"growl", growlTalk, {18, 22}, -1.2f, {0.45f, 0.7f}},
    {"sub", "R-rr..r-t-R-.... R-..R-r.rr......", {18, 22}, 2},
    {"growl", tornBassFull, {22, 24}, -2.2f, {0.8f, 1}},
    {"siren", tornSiren, {}, {-2.5f, 0}, {0.5f, 0.85f}},
    {"hook", "D5:2' -:1 D5:2 -:1 F5:2' D5:2 C5:2 -:4", {21, 22}, -1.5f, 0.8f},
    {"stab", "x--x--x-..x-.... x--x--x-..x-x...", {}, {-0.5f, 0.7f}, {0.7f, 0.9f}},
    {"arp", "0101201020130102", {20, 24}, {0, 5}, {0.4f, 0.9f}},
};

// Wood, little else; one breath at 69.5 s. Brighter by one note: E for E flat.
const std::vector<Cue> boxes = {
    {"kick", "X...x...X...x... X...x...X..xx... X............... X...x...X..xx..."},
    {"rim", "....x.......x..o ....x.......xo.o", {}, 0},
    {"lowBox", lowBox},
    {"middleBox", middleBox},
    {"highBox", highBox},
    {"shaker", "xo:xxo:xxo:xxo:x", {}, {-3, 2}},
    {"bass", boxBass, {24, 30}, 0, {0.25f, 0.45f}},
    {"bass", "R--..r.r..o.f.s.", {31, 32}, 0, 0.5f},
    {"wood", woodTune, {24, 28}, {-3, -1}},
    {"wood", woodTuneEnd, {28, 32}, -1},
    {"pluck", fives, {24, 30}, {-6, -1}, {0.3f, 0.5f}},
    {"pluck", "..x....x....x...", {31, 32}, 0, 0.6f},
    {"pad", held, {28, 30}, {-8, -5}, {0.2f, 0.4f}},
    {"pad", held, {31, 32}, -3, 0.5f},
    {"glass", "4..3..2.4..3..5.", {28, 30}, -5, 0.6f},
    {"glass", "4..3..2.4..3..5.", {31, 32}, -5, 0.6f},
    {"impact", "x.....", {27.625f, 28}, -3},
    {"toms", "D3:1 G2:1 D3:1 C3:1 G2:1 G2:1", {27.625f, 28}},
    {"highBox", "oo:ooxox", {31.5f, 32}},
};

// Probes. No drum; a heart and a glass mark the beat. First the bells alone over the deep, then a horn, then
// the reed against the bells, each with more light above it.
const std::vector<Cue> smoke = {
    {"fall", "C4:32", {32, 34}, -4},
    {"sub", "r---------------", {32, 36}, -4},
    {"sub", "r-------r------- r-------r------- r-------r------- r---------------", {36, 40}, -4},
    {"bells", theme1Slow, {}, 0, 0.6f},
    {"pad", held, {33, 36}, {-7, -2}, {0.3f, 0.55f}},
    {"pad", held, {36, 40}, {-2, -1}, {0.5f, 0.9f}},
    {"horn", "-:12 D4:4 | C4:8 Bb3:4 -:4", {34, 36}, -2, 0.5f},
    {"reed", smokeSong, {36, 40}, {-6, -3}, {0.4f, 0.7f}},
    {"glass", "0...2...3...4... 0...3...2...4...", {32, 36}, -2, {0.3f, 0.6f}},
    {"glass", "4...2...5...3... 4...6...5...3...", {36, 40}, {-3, -1}, {0.5f, 0.9f}},
    {"arp", "0..1..2...3..2.. 4..3..2...1..2..", {34, 36}, {-6, -3}, {0.2f, 0.4f}},
    {"arp", "0.1.2.3.4.3.2.1. 0.2.3.4.5.4.3.2.", {36, 40}, {0, 4}, {0.3f, 0.8f}},
    {"thump", "x...:...o...:...", {32, 36}, -4},
    {"thump", "x...o...x...o...", {36, 40}, -5},
    {"tick", "o...o...o...o...", {32, 36}, -8},
    {"tick", "o.:.o.:.o.:.o.::", {36, 40}, {-7, -4}},
    {"shaker", "....:.......:...", {36, 40}, {-6, 0}},
    {"wind", "G4:72", {32, 36.5f}, -10, 0.7f},
    {"wind", "D4:72", {35.5f, 40}, -10, 0.6f},
    {"reverse", "C4:16", {39, barAt(showtime::robot)}, -2},
};

// The light sinks: half time over one D. The floor goes a bar before the drop; the last sixteenth is silence.
const std::vector<Cue> sinking = {
    {"kick", "x...............", {40, 44}, -2},
    {"kick", "x.....x.x.......", {44, 46}, -2},
    {"thump", everyBeat, {46, 47.5f}, {-4, -1}},
    {"slam", "........x.......", {40, 46}, -3},
    {"thump", "....o.......o...", {40, 46}, -4},
    {"toms", tomsHalfTime, {40, 46}, {-8, -3}},
    {"tick", "x.:.x.:.x.:.x.::", {40, 44}, -4},
    {"tick", "x.o.x.o.x.o.x.o.", {44, 46}, -3},
    {"tick", "xoxoxoxoxoxoxoxo", {46, 47.75f}, {-3, 1}},
    {"shaker", "::o:::o:::o:::ox", {42, 47.75f}, {-8, -1}},
    {"bass", "r.rrr.rrr.rrr.rr r.rrr.rrr.rrorr.", {40, 44}, {-4, -2}, {0.05f, 0.3f}},
    {"bass", "r.rrr.rrr.rrr.rr rrr.rro.rrr.rror", {44, 46}, {-2, -1}, {0.3f, 0.5f}},
    {"bass", "rrrrrrrrrrrrrrrr", {46, 47}, {-1, 0}, {0.5f, 0.8f}},
    {"horn", barsOf(sinkingSong, 0, 4), {40, 44}, {-2, 0}, {0.4f, 0.6f}},
    {"horn", barsOf(sinkingSong, 4, 8), {44, 47.75f}, {-1, 1}, {0.6f, 0.9f}},
    {"pad", held, {40, 44}, {-6, -4}, {0.2f, 0.4f}},
    {"strings", held, {44, 47.75f}, {-6, 0}, {0.3f, 0.9f}},
    {"robot", "0..5..2....4..1. ..3...0.6...2...", {40, 44}, {-6, -2}, {0.2f, 0.6f}},
    {"robot", "0.5.2.4.1.3.6.2. 3.0.5.2.6.4.1.5.", {44, 47.5f}, {-3, 0}, {0.5f, 1}},
    {"riser", "C4:64", {40, 44}, -12, 0.5f},
    {"riser", "C4:63", {44, 47.9375f}, -3, 1},
    {"climb", "D3:31", {46, 47.9375f}, 0, 1},
    {"roll", "xooxooxooxooxoxo xooxooxooxooxxx", {46, 47.9375f}, {-16, 0}},
};

// Awake: the hook takes the seventh that hung over the silence down, then the theme's leap widens, over a
// bass that walks down the scale. At 120.8 s a low pass closes over everything for three seconds.
const std::vector<Cue> awake = {
    {"impact", onceHard, {48, 49}},
    {"fall", "C4:32", {48, 50}, -3},
    {"crash", onceHard, {48, 49}},
    {"kick", dropKick, {}, -1.3f},
    {"snare", "....x.......x... ....x...........", {48, 55}, 2.2f},
    {"snare", "....x...", {55, 55.5f}},
    {"snare", ghostsLate, {48, 55}, -7},
    {"clap", backbeat, {52, 55}, -2},
    {"slam", "................ ............x... ................", {48, 51}},
    {"hat", "..x...x...x...xo ..x...x...x.o:xx", {48, 50}, 1},
    {"hat", hatsDrop, {50, 56}, 0.5f},
    {"openHat", offbeats, {48, 55}, 0, 0.6f},
    {"bass", dropBass, {48, 55.5f}, 1, {0.55f, 0.75f}},
    {"growl", "........R-r-t-o-", {49, 50}, -4, 0.55f},
    {"growl", "........R-rrs-f-", {51, 52}, -2, 0.6f},
    {"growl", "........R-r-t-o-", {53, 54}, -4.5f, 0.7f},
    {"sub", "r-------", {55.5f, 56}},
    {"stab", "X--x--x--x-..x-- X--x--x.........", {48, 50}, 1, 0.7f},
    {"stab", dropStabs, {50, 56}, 0, {0.6f, 0.8f}},
    {"voice", calls, {49, 50}, 3.5f, 0.55f},
    {"hook", calls, {49, 50}, -2.5f, 0.75f},
    {"voice", callsHigher, {53, 54}, 2.5f, 0.55f},
    {"hook", callsHigher, {53, 54}, -3.5f, 0.75f},
    {"hook", "Bb5:2' -:1 Bb5:2 -:1 D6:2' Bb5:2 G5:2 -:4", {48, 49}, -1.5f, 0.8f},
    {"hook", "G5:2' -:1 G5:2 -:1 Bb5:2' F5:2 D5:2 F5:4'", {51, 52}, -1.5f, 0.75f},
    {"lead", "G4:3' D5:7' C5:2 Bb4:4", {50, 51}, 1, 0.7f},
    {"lead",
     "G4:3' Eb5:7' D5:2 C5:4 | Eb5:3 D5:3 C5:2 Bb4:4 G4:4 | A4:3' F#5:7' G5:2 A5:4",
     {52, 55},
     0.6f,
     0.7f},
    {"strings", held, {52, 56}, -2, 0.7f},
    {"arp", "0..1..2.3..2..1. ................", {50, 54}, 2, 0.7f, 12},
    {"robot", "................ 6..5..4.5..3..4.", {50, 54}, 3, 0.7f},
    {"arp", "0..1..2.3..2..1. 4..3..2.1..2..3.", {54, 56}, 2, 0.7f, 12},
};

// Greetings: the first theme with runs, which lead and reed hand to each other, a third voice below; every
// beat is struck.
const std::vector<Cue> greetings = {
    {"impact", onceHard, {56, 57}, -5},
    {"crash", onceHard, {56, 57}, 0.5f},
    {"stab", "X---............", {56, 57}, -1, 0.7f},
    {"slam", "................ ............x...", {56, 62}, -3},
    {"kick", "X...x...X...x... X...x...X...x..o X...x...X..xx... X...x..oX...x.o.", {56, 63.5f}, -0.8f},
    {"snare", "....x.......x..: ....x.......x.o. ....x.......x..: ....x..:....xo.o", {56, 63.5f}, 0},
    {"clap", "....x..x....x... ....x..x..x.x...", {56, 63}, -5},
    {"toms", "F2:4 -:4 C3:4 A2:4", {63, 64}, 1},
    {"hat", "x.o.x.o.x.o.x.oo", {56, 58}, 1},
    {"hat", "x.o.x.o.x.o.x.oo", {58, 60}, -0.5f},
    {"hat", "x:o:x:o:x:o:x:oo", {60, 63.5f}, {-1, -3}},
    {"shaker", "x:ox:oxox:ox:oxo x:ox:oxox:oxxoxo", {56, 63.5f}, {-2, 1.5f}},
    {"openHat", offbeats, {60, 63.5f}, -2, 0.6f},
    {"bass", drivingBass, {56, 60}, 2.8f, {0.25f, 0.35f}},
    {"bass", "R.rrr.r.r.rrr.or R.rrr.r.r.rrs.or", {60, 63}, {3.8f, 2}, {0.4f, 0.5f}},
    {"sub", "r---------------", {63, 64}, -4},
    {"lead", barsOf(theme1Runs, 0, 2), {56, 58}, {-1, 1.5f}, {0.55f, 0.6f}},
    {"reed", barsOf(theme1Runs, 2, 4), {58, 60}, -2.4f, 0.7f},
    {"lead", barsOf(theme1Runs, 4, 8), {60, 64}, {1, -2}, {0.65f, 0.75f}},
    {"bells", barsOf(theme1Runs, 4, 6), {60, 62}, -3, 0.6f, 12},
    {"reed", theme1RunsSixths, {62, 64}, -2.7f, 0.7f},
    {"second", theme1RunsBelow, {58, 62}, 1, 0.5f},
    {"pluck", "x..x..x...x.x... ..x..x..x...x.x.", {56, 63.5f}, 1, {0.4f, 0.6f}},
    {"strings", held, {60, 64}, {0, -0.5f}, 0.5f},
    {"pad", held, {56, 60}, -1.9f, 0.6f},
    {"hat", "xxx:xxXX", {63.5f, 64}, {-3, 2}},
};

// The room: second theme from its first bar on, over a broken beat. The voice calls on beat 258; bars 70 and
// 71 are its own.
const std::vector<Cue> room = {
    {"thump", "x...x...", {64, 64.5f}},
    {"reed", theme2, {64, 70}, -2.5f, {0.7f, 0.85f}},
    {"voice", "Eb4+G4+Bb4:3' -:1 Eb4+G4+Bb4:3 -:1 F4+A4+C5:6' -:2", {64.5f, 65.5f}, 1, {0.6f, 0.3f}},
    {"impact", "X.......", {64.5f, 65}, -4},
    {"crash", "X.......", {64.5f, 65}, -1},
    {"kick", "X.......", {64.5f, 65}},
    {"kick", brokenKick, {65, 68}, 0.5f},
    {"kick", "X...x...X...x... X...x...X...x..o", {68, 70}, 0.5f},
    {"snare", "........X......: ........X..:.o..", {65, 70}},
    {"clap", backbeat, {65, 66}, -3},
    {"clap", "....x...x...x...", {66, 70}, -2},
    {"rim", "o...x...o...x..:", {65, 70}, 0},
    {"hat", "x.:o:x::", {64.5f, 65}, -2},
    {"hat", hatsBroken, {65, 70}, -2},
    {"shaker", "xo:xxo:xxo:xxo:x", {67, 70}, -3},
    {"bass", brokenBass, {64.5f, 70}, 2, {0.4f, 0.65f}},
    {"pad", held, {64, 70}, {-3, -1}, {0.4f, 0.6f}},
    {"counter",
     "1-------3------- 5---3---1---3--- 3-------5------- 5-------1-------",
     {66, 70},
     {-3.5f, -0.5f},
     0.6f},
    {"arp", "0...2...4...3...", {64, 66}, 2.5f, 0.5f},
    {"arp", "0..2..4.0..2..3.", {66, 70}, {4.5f, 7}, {0.4f, 0.7f}},
    {"tick", everyBeat, {70, 72}, -3},
    {"thump", everyBeat, {70, 72}, {-4, -1}},
    {"voice",
     "F4+A4+D5:6' -:2 F4+A4+D5:6 -:2 | E4+G#4+B4+E5:8' E4+G#4+D5+E5:6 -:2",
     {70, 72},
     {0, 0.5f},
     {0.4f, 0.7f}},
    {"strings", held, {70, 71.875f}, {-4, -1}, {0.4f, 0.9f}},
    {"sub", "r---------------", {70, 71.5f}, -6},
    {"riser", "C4:30", {70, 71.875f}, -5, 1},
    {"climb", "E3:14", {71, 71.875f}, -2.5f, 0.9f},
    {"lead", "-:14 E4:1 G#4:1", {71, 72}, 0, 0.7f},
};

// The climax: the first theme a whole tone up, the second one against it where it breathes; then the rest of
// the first, and over it the reed's answer, which goes up.
const std::vector<Cue> climax = {
    {"impact", onceHard, {72, 73}},
    {"fall", "C4:32", {72, 74}, -4},
    {"crash", onceHard, {72, 73}},
    {"crash", onceHard, {76, 77}},
    {"kick", fourWithPickUp, {72, 79.5f}, 2.7f, 0.5f, 2},
    {"snare", "....X.......X..o ....X........... ....X.......X.:o ....X..:........", {72, 79}, -0.7f},
    {"snare", ghostsLate, {72, 79}, -7},
    {"snare", "....X...X::X::X:", {79, 80}},
    {"clap", backbeat},
    {"slam", "................ ............X...", {72, 79}},
    {"hat", hatsSixteenth, {}, -1},
    {"openHat", offbeats, {}, 1, 0.7f},
    {"ride", "x.x.x.x.x.x.x.x.", {76, 80}, 0},
    {"bass", rollingBass, {}, 0, {0.6f, 0.75f}},
    {"lead", barsOf(theme1Runs, 0, 4), {72, 76}, 2, {0.7f, 0.85f}, 2},
    {"reed", climaxAnswer, {76, 80}, 1, {0.8f, 0.95f}},
    {"lead", climaxBelow, {76, 80}, 1, {0.8f, 0.9f}},
    {"bells", climaxBells, {72, 76}, 0, 0.7f},
    {"reed", "-:4 F5:4' A5:6' G5:2", {73, 74}, -1.5f, 0.7f},
    {"reed", "G5:4' -:4 B5:6' -:2", {75, 76}, -1.5f, 0.7f},
    {"strings", held, {}, 0.5f, 0.75f},
    {"counter", "1---5---3------- 5---3---1---3---", {76, 80}, 2, 0.7f},
    {"stab", "................ X..x..x.x.x.....", {72, 76}, 2, 0.8f},
    {"arp", climbing, {72, 76}, 3.5f, {0.6f, 0.75f}},
    {"arp", "0.2.4.3.5.4.3.1. 0.3.4.2.5.3.4.2.", {76, 80}, 5, {0.8f, 0.9f}},
    {"toms", "D3:2 B2:2 E3:2 E2:2", {79.5f, 80}, 2},
};

// The credits: the second theme goes on while one after another leaves.
const std::vector<Cue> credits = {
    {"crash", once, {80, 81}, -2},
    {"impact", once, {80, 81}, -6},
    {"kick", fourOnTheFloor, {80, 84}, {-1, -2}, 0.5f, 2},
    {"kick", "x.......x.......", {84, 86}, -4, 0.5f, 2},
    {"thump", everyBeat, {84, 88}, {-2, -8}},
    {"snare", backbeat, {80, 84}, -1},
    {"hat", "x:o:x:o:x:o:x:o:", {80, 84}, {-2, -6}},
    {"openHat", offbeats, {80, 82}, -4},
    {"shaker", "xo:xxo:xxo:xxo:x", {82, 85.75f}, {-2, -8}},
    {"tick", everyBeat, {84, 88}, -7},
    {"bass", drivingBass, {80, 84}, {0, -3}, {0.5f, 0.1f}},
    {"sub", "r---------------", {84, 87}, {-6, -8}},
    {"sub", "r-------r-------", {87, 88}, {-8, -9}},
    {"lead", barsOf(theme2Raised, 0, 4), {80, 84}, {-2, -4}, {0.7f, 0.3f}},
    {"bells", barsOf(theme2Raised, 0, 4), {80, 84}, {-6, -5}, 0.5f, 12},
    {"bells", barsOf(theme2Raised, 4, 8), {84, 88}, {-3, -1}},
    {"ride", "x.x.x.x.x.x.x.x.", {80, 82}, {-3, -12}},
    {"pad", held, {}, {-1, 1.5f}, {0.6f, 0.3f}},
    {"choir", held, {84, 88}, -2, {0.4f, 0.1f}},
    {"arp", climbing, {80, 84}, {4, -4}, {0.7f, 0.3f}},
    // Each time the hook runs up to a card, and glass rings where the card is there.
    {"hook", "D5:1 E5:1 A5:4'", {81.875f, 82.25f}, -6, 0.5f},
    {"hook", "E5:1 G5:1 C6:5'", {83.8125f, 84.25f}, -8, 0.45f},
    {"hook", "B4:1 D5:1 G5:4'", {85.625f, 86}, -10, 0.4f},
    {"glass", "6---", {82, 82.25f}, -1, 0.6f},
    {"glass", "6---", {83.9375f, 84.1875f}, -1, 0.6f},
    {"glass", "6---", {85.75f, 86}, -2, 0.5f},
    {"glass", "0...2...3...4...", {84, 88}, -5, {0.5f, 0.3f}},
};

// Echoes in the dark, and the last hit on beat 368.
const std::vector<Cue> echoes = {
    {"pad", held, {88, 92}, {-3, -10}, {0.3f, 0.1f}},
    {"drone", "A2:48 E2:16", {88, 92}, -10, 0.4f},
    {"bells", "A4:3 E5:13 | D5:2, C5:6, -:8 | A4:3, E5:13, | -:16", {88, 92}, {-1, -7}},
    {"voice", "-:8 A4:8, | -:16 | -:8 B4:8,", {89, 92}, {-8, -12}, 0.2f},
    {"glass", "0.......3.......", {88, 91}, -8, 0.3f},
    {"thump", everyBeat, {88, 92}, {-8, -14}},
    {"reverse", "C4:16", {91, 92}, -4},
    {"impact", "X...", {92, 92.25f}},
    {"sub", "r---", {92, 92.25f}, 1},
    {"bells", "A3+A4+E5+B5:4'", {92, 92.25f}, 3, 0.6f},
    {"stab", "x---", {92, 92.25f}, 1.5f, 0.5f},
};

// So late that it is felt, and no stroke is heard twice.
constexpr float shuffle = 0.07f;

// The basses walk down under the stripes, the drop and the climax. A dominant waits before a cut only where
// something is about to burst; the others are reached from a step away.
struct Row {
    const char* name;
    showtime::Moment cut;  // that the section begins with, on the bar next to it
    const char *scale, *chords;
    Ramp level;
    Tone tone;  // evens out what its instruments have too much or too little of
    std::vector<Cue> cues;
    float swing = 0;
};
const Row rows[] = {
    {"title", showtime::title, "G minor", "Gm Gm Ebmaj7/G Cm/G Gm", {-4, -3}, {}, title},
    {"tunnel", showtime::tunnel, "G minor", "Gm Ebmaj7 Cm7 Dsus4,D", {-2, -1.5f}, {-2, 0, 1}, tunnel},
    {"ship", showtime::beatZero, "G minor", "Gm Gm,Gm/F Eb F Gm Gm,Bb/D Cm Eb,F", -4.3f, {}, ship},
    {"stripes",
     showtime::stripes,
     "G minor",
     "Gm Ebadd9 Bb F/A Gm Eb,Bb/D Cm,Cm/Eb D",
     {-1.4f, -2.5f},
     {-0.5f, -1.5f, 0.5f},
     stripes},
    {"torn",
     showtime::tornTunnel,
     "G phrygian",
     "Gm Gm,Eb/G Ab Gm,Cm/Eb Gm,Eb/G Gm,Bb/F Ab Ab,F",
     -0.3f,
     {-1.5f, 0.5f, -1},
     torn},
    {"boxes",
     showtime::heap,
     "G dorian",
     "Gm7 Gm7,Gm7/Bb C7 C7/E Gm7 Gm7,Bb/D Eb F",
     -1.5f,
     {-2, -1, 2},
     boxes,
     shuffle},
    {"smoke",
     showtime::probes,
     "G minor",
     "Ebmaj7 F6 Gm7 Bb/D Ebmaj7,Bb/D Cm9,F6 Gm/Bb,Cm9 Dsus4",
     {-4, -3},
     {0, -2, 2.5f},
     smoke},
    {"sinking",
     showtime::robot,
     "G harmonic",
     "D5 Eb/D Cm/D D7b9/D D5 Gm/D Cm/D,Eb/D D7b9/D",
     {-4.5f, -3.2f},
     {-1.5f, 0, 1.5f},
     sinking},
    {"awake",
     showtime::awake,
     "G minor",
     "Gm Gm,Bb/F Eb Eb,Bb/D Cm Cm,Gm/Bb D/A D",
     -0.6f,
     {-1, 0, 0},
     awake},
    {"greetings",
     showtime::greetingShocks,
     "G minor",
     "Ebmaj7 Cm9 Bb/D F/A Gm7 Ab Cm,Eb F",
     {-1.4f, -1},
     {-2, -1, 2},
     greetings,
     shuffle},
    {"room",
     showtime::room,
     "Bb major",
     "Ebadd9 F Gm,Dm/F Bb,Bb/D Ebadd9 Bb/F,F Dm E,E7",
     {-1.3f, -0.8f},
     {-1, -2.5f, 2},
     room,
     shuffle},
    {"climax",
     showtime::roomBreathing,
     "A minor",
     "Am F C/E G Am,Am/G F,Am/E Dm,Bdim/D E",
     -1.3f,
     {1, -2, 0},
     climax},
    {"credits",
     showtime::credits,
     "A minor",
     "F G Am,Em/G C,C/E F C/G,G Dm Em,G",
     {-1, -3},
     {0, -1, 1},
     credits},
    {"echoes", showtime::afterCredits, "A minor", "Am F Dm Esus4 A5", {-2, -2}, {}, echoes},
};

int barOf(showtime::Moment cut) {
    return int(std::lround(barAt(cut)));
}

}  // namespace

std::vector<Section> score() {
    std::vector<Section> sections;
    for (const Row& row : rows) {
        if (!sections.empty()) sections.back().to = barOf(row.cut);
        sections.push_back({row.name, barOf(row.cut), lastBar, row.scale, row.chords, row.level, row.tone,
                            row.cues, row.swing});
    }
    return sections;
}
