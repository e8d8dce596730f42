// What "boom" tells by signs of its own: where the greetings' plates hide what is behind them, and how the
// show ends, when the last card goes and when the last beat comes.
#include <algorithm>

#include "script/show_times.h"
#include "tests/show.h"

namespace {

struct End : Show {
    // The brightest channel in a square of 2 * `half` pixels round a place; rows run up.
    static int brightest(const Screen& screen, int x, int y, int half = 8) {
        int most = 0;
        for (int row = y - half; row < y + half; row++)
            for (int column = x - half; column < x + half; column++) {
                const Pixel p = screen.at(column, row);
                most = std::max<int>({most, p.r, p.g, p.b});
            }
        return most;
    }
};

// In the owl's left pupil, before the plates come on with the shocks and after; then, where nothing is
// written, beside the signature.
TEST_F(End, GreetingsHideTheRobotWhereTheyAreRead) {
    const Screen before = drawMoment(showtime::greetingShocks.ms - 110),
                 after = drawMoment(showtime::greetingShocks.ms + 90),
                 signature = drawMoment(showtime::crossFade.ms - 40);
    EXPECT_GT(brightest(before, 626, 322), 80);
    EXPECT_LT(brightest(after, 586, 322), 30);
    EXPECT_GT(brightest(after, 235, 270, 40), 100);
    EXPECT_GT(brightest(signature, 300, 360, 60), 150);
    EXPECT_LT(brightest(signature, 740, 300, 50), 15);
}

TEST_F(End, HallShrinksToTheRobotsScreenWhichGoesOutAndShowsAFaceThatFallsAsleep) {
    constexpr int begins = showtime::afterCredits.ms, dark = 14;
    // The whole hall, up to its corner, before the last card has gone and just after.
    const Screen before = drawMoment(begins - 1000), after = drawMoment(begins + 20);
    EXPECT_GT(brightest(before, 60, 60, 50), dark);
    EXPECT_GT(brightest(after, 60, 60, 50), dark);

    const Screen awake = drawMoment(begins + 700), asleep = drawMoment(begins + 3744);
    EXPECT_LT(brightest(awake, 250, 150, 15), 60);  // in a corner of its screen
    EXPECT_GT(brightest(awake, 290, 325), 200);     // in an eye
    EXPECT_GT(brightest(awake, 513, 337), 200);
    EXPECT_LT(brightest(asleep, 346, 305), 4 * dark);  // where an eye was
    EXPECT_GT(brightest(asleep, 343, 255), 6 * dark);
    EXPECT_GT(brightest(asleep, 399, 192), 6 * dark);
}

TEST_F(End, LightStreaksPastTheMoonWhoseCrescentStays) {
    constexpr int begins = showtime::afterCredits.ms;
    const Screen before = drawMoment(begins + 1500), after = drawMoment(begins + 2144);
    for (const Screen* screen : {&before, &after}) EXPECT_GT(brightest(*screen, 695, 465), 150);
    EXPECT_LT(brightest(before, 300, 529, 6), 120);
    EXPECT_GT(brightest(after, 300, 529, 6), 150);
}

TEST_F(End, OneEyeLooksOnceMoreOnTheLastBeat) {
    constexpr int beat = showtime::beatZero.ms + 368 * 60000 / showtime::beatsPerMinute,
                  looks = showtime::glimpse.ms + 20;
    const Screen black = drawMoment(showtime::glimpse.ms - 100, beat), look = drawMoment(looks, beat);
    EXPECT_LE(brightest(black, 400, 300, 290), 4);
    EXPECT_GT(brightest(look, 231, 346), 100);
    EXPECT_LT(brightest(look, 560, 400), 30);  // above the closed one
    EXPECT_GT(brightest(look, 545, 306, 15), 100);
}

}  // namespace
