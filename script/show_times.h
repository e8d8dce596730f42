// When everything happens: the grid of the music, the cuts of the programme and the moments within its
// scenes. Whoever needs a time of the show reads it here, so that what is moved moves for all.
#pragma once

namespace showtime {

// A time of the music. Whole milliseconds are exact, and as a float or a double it is the number nearest to
// them.
struct Moment {
    int ms;

    constexpr operator float() const { return float(ms) / 1000; }  // seconds
    constexpr double seconds() const { return ms / 1000.0; }
};

// The grid that scenes jump and flash on and music is written on. Bar 0 begins with beat 0.
constexpr Moment beatZero = {17138};
constexpr int beatsPerMinute = 126;
constexpr int beatsPerBar = 4;
constexpr Moment automaticBeats = {17000};  // from here on beats follow the grid by themselves

// The cuts.
constexpr Moment title = {0};
constexpr Moment tunnel = {9538};          // the ship in its tunnel
constexpr Moment stripes = {32347};        // three layers of stripes
constexpr Moment tornTunnel = {47633};     // the ship again, torn
constexpr Moment heap = {62761};           // the heap of boxes
constexpr Moment probes = {78030};         // probes in smoke
constexpr Moment robot = {93281};          // the robot, asleep
constexpr Moment crossFade = {137000};     // from the robot to the room
constexpr Moment room = {139000};          // the mirror ball
constexpr Moment credits = {169453};       // cards over the room
constexpr Moment afterCredits = {184156};  // the room again, and its fade to black
constexpr Moment end = {195280};           // of the program

// The tunnel.
constexpr Moment tunnelSettled = {10500};  // the burst of light it opens in is over
// Kept: the first tear, which would be noticed if a tunnel were on then.
constexpr Moment firstTear = {32600}, firstTearEnd = {36460};
constexpr Moment secondTear = {47800}, secondTearEnd = {51300};

// The heap.
constexpr Moment heapSecondView = {69730};

// The robot.
constexpr Moment lightSunk = {108281};       // to its feet; it begins at the cut
constexpr Moment awake = {108500};           // from sinking light to its active mode
constexpr Moment robotLowView = {109000};    // the camera's second phase
constexpr Moment robotHighView = {116204};   // and its third
constexpr Moment greetings = {120810};       // the picture blurs and the greetings come in
constexpr Moment greetingShocks = {123810};  // on the greetings, with the beat; the blur stops growing

// The room.
constexpr Moment word = {140000}, wordEnd = {141800};  // flashes
constexpr Moment roomShocks = {142000};                // and white flashes, with the beat
constexpr Moment roomBreathing = {154300};             // the camera moves with the beat
constexpr Moment codeCard = {169474}, modelsCard = {173288}, gfxCard = {177051}, musicCard = {180454};
constexpr Moment glimpse = {192500}, glimpseEnd = {192800};  // the last one, after the fade

}  // namespace showtime
