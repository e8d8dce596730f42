// The picture kit: what a picture may ask for and none of the show's does, so that their hashes don't tell.
#include <gtest/gtest.h>

#include "production/kit/picture/lettering.h"
#include "production/kit/picture/noise.h"

namespace {

using namespace picture;

TEST(PictureKit, LettersAreCapitalsAndWhatIsNoneASpace) {
    const Lettering style = {.height = 60};
    EXPECT_EQ(textWidth("A*V", style), textWidth("a v", style));
    EXPECT_EQ(textWidth("\xc3\xa4iti", style), textWidth("\xc3\x84ITI", style));
}

TEST(PictureKit, NoiseRepeatsBelowZeroToo) {
    for (int i = 0; i < 400; i++) {
        const float x = 0.371f * i, y = 0.113f * i;
        EXPECT_NEAR(fractalNoise(x, y, 4, 3, 7), fractalNoise(x + 4, y - 80, 4, 3, 7), 1e-3f);
    }
}

}  // namespace
