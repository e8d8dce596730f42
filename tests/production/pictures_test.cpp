// What the program and the scenes rely on in the pictures of data/: sizes, row order, black grounds, real
// alpha, seams and darkness. Read from data/ in the working directory, as the program does.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "image/image.h"

namespace {

struct Picture {
    int width = 0, height = 0, channels = 0;
    std::vector<uint8_t> bytes;

    explicit Picture(const std::string& file) {
        Image image;
        if (loadImage(("data/" + file).c_str(), &image, 0) != 0) {
            ADD_FAILURE() << "data/" << file << " is missing: build the target `data`";
            return;
        }
        width = image.width, height = image.height, channels = image.channels;
        bytes.assign(image.pixels, image.pixels + size_t(image.stride) * image.height);
        delete[] image.pixels;
    }

    int sample(int x, int y, int channel) const {
        return bytes[(size_t(y) * width + x) * channels + channel];
    }
    int brightest(int x, int y) const {
        return std::max({sample(x, y, 0), sample(x, y, 1), sample(x, y, 2)});
    }
    // Mean of red, green and blue over a rectangle, 0..255.
    double mean(int left, int top, int right, int bottom) const {
        double sum = 0;
        for (int y = top; y < bottom; y++)
            for (int x = left; x < right; x++) sum += sample(x, y, 0) + sample(x, y, 1) + sample(x, y, 2);
        return sum / 3 / (right - left) / (bottom - top);
    }
    double mean() const { return mean(0, 0, width, height); }
    int brightestOfBorder() const {
        int most = 0;
        for (int i = 0; i < width; i++) most = std::max({most, brightest(i, 0), brightest(i, height - 1)});
        for (int i = 0; i < height; i++) most = std::max({most, brightest(0, i), brightest(width - 1, i)});
        return most;
    }
};

struct Rows {
    int first, count;
};

// Runs of rows that hold a pixel for which ink(x, y) is true, between two columns.
template <class Ink>
std::vector<Rows> inkedRows(const Picture& picture, int left, int right, Ink ink) {
    std::vector<Rows> runs;
    bool before = false;
    for (int y = 0; y < picture.height; y++) {
        bool inked = false;
        for (int x = left; x < right && !inked; x++) inked = ink(x, y);
        if (inked && !before) runs.push_back({y, 0});
        if (inked) runs.back().count++;
        before = inked;
    }
    return runs;
}

// Between two rows of the first `width` columns.
double rowDifference(const Picture& picture, int width, int upper, int lower) {
    double sum = 0;
    for (int x = 0; x < width; x++)
        for (int c = 0; c < 3; c++)
            sum += std::abs(picture.sample(x, upper, c) - picture.sample(x, lower, c));
    return sum / width;
}

double columnDifference(const Picture& picture, int left, int right) {
    double sum = 0;
    for (int y = 0; y < picture.height; y++)
        for (int c = 0; c < 3; c++) sum += std::abs(picture.sample(left, y, c) - picture.sample(right, y, c));
    return sum / picture.height;
}

}  // namespace

// The screen quad maps a picture by the size that the texture table sets, so a full-screen one of another
// size shows a part of itself only; and textures are RGB or RGBA, of powers of two.
TEST(Pictures, HaveTheSizesAndChannelsThatTheProgramAssumes) {
    const struct {
        const char* file;
        int width, height, channels;
    } expected[] = {
        {"loading.jpg", 512, 512, 3},
        {"overlay.jpg", 1024, 1024, 3},
        {"white.png", 64, 64, 3},
        {"noise1.png", 256, 256, 3},
        {"tex.png", 0, 0, 4},
        {"spot.png", 0, 0, 3},
        {"shiptex.png", 0, 0, 3},
        {"cubetex.png", 0, 0, 3},
        {"envmap.png", 0, 0, 3},
        {"envmap2.png", 0, 0, 3},
        {"envmap3.png", 0, 0, 3},
        {"envmap4.png", 0, 0, 3},
        {"start.jpg", 0, 0, 3},
        {"redlaser.png", 0, 0, 3},
        {"greenlaser.png", 0, 0, 3},
        {"star2.png", 0, 0, 3},
        {"roboscreen.png", 0, 0, 3},
        {"greetsit.png", 2048, 512, 3},
        {"vornel.png", 0, 0, 3},
        {"credits-music.png", 0, 0, 4},
        {"credits-code.png", 0, 0, 4},
        {"credits-gfx.png", 0, 0, 4},
        {"credits-models.png", 0, 0, 4},
    };
    for (const auto& row : expected) {
        SCOPED_TRACE(row.file);
        const Picture picture(row.file);
        EXPECT_EQ(picture.channels, row.channels);
        if (row.width > 0) {
            EXPECT_EQ(picture.width, row.width);
            EXPECT_EQ(picture.height, row.height);
        } else {
            EXPECT_EQ(picture.width, picture.height);
            EXPECT_TRUE(picture.width > 0 && (picture.width & (picture.width - 1)) == 0) << picture.width;
            EXPECT_LE(picture.width, 1024);
        }
    }
}

// A full-screen quad puts the first row at the bottom: from there up lie a short line, the name, a long
// streak.
TEST(Pictures, LoadingIsStoredBottomRowFirst) {
    const Picture picture("loading.jpg");
    const auto ink = [&](int x, int y) { return picture.brightest(x, y) > 140; };
    const auto runs = inkedRows(picture, 0, picture.width, ink);
    ASSERT_EQ(runs.size(), 3u);
    int inked[3] = {};
    for (int i = 0; i < 3; i++)
        for (int x = 0; x < picture.width; x++) inked[i] += ink(x, runs[i].first + runs[i].count / 2);
    EXPECT_LT(runs[0].count * 2, runs[1].count);
    EXPECT_LT(inked[0] * 2, inked[2]);
}

TEST(Pictures, LetteringWithItsOwnCoordinatesIsStoredTopRowFirst) {
    const Picture title("start.jpg");  // the name stands above its dimmer reflection
    EXPECT_GT(title.mean(0, 0, title.width, title.height * 6 / 10),
              2 * title.mean(0, title.height * 6 / 10, title.width, title.height));

    const Picture greetings("greetsit.png");  // the first block grows from a small line to a tall one
    const auto block =
        inkedRows(greetings, 0, 250, [&](int x, int y) { return greetings.brightest(x, y) > 128; });
    ASSERT_EQ(block.size(), 6u);  // the four lines stand between two rules
    EXPECT_LT(block[1].count * 1.5, block[4].count);

    const Picture word("vornel.png");  // L lies on its foot
    const auto inked = [&](int x, int y) { return word.brightest(x, y) > 40; };
    int first = word.height, last = 0;
    for (int y = 0; y < word.height; y++)
        if (inked(word.width * 11 / 20, y)) first = std::min(first, y), last = y;
    int atTop = 0, atBottom = 0;
    for (int x = word.width / 2; x < word.width * 3 / 5; x++)
        for (int y = 0; y < 8; y++) atTop += inked(x, first + y), atBottom += inked(x, last - y);
    EXPECT_GT(atBottom, atTop * 1.3);

    for (const char* file :
         {"credits-music.png", "credits-code.png", "credits-gfx.png", "credits-models.png"}) {
        SCOPED_TRACE(file);
        const Picture card(file);
        const auto lines = inkedRows(card, 0, card.width, [&](int x, int y) {
            return card.sample(x, y, 3) > 200 && card.brightest(x, y) > 200;
        });
        ASSERT_GE(lines.size(), 4u);  // the role, the figure with what it counts, its marks, and a small line
        EXPECT_GT(lines[1].count, lines.front().count * 3);
        EXPECT_GT(lines[1].count, lines.back().count * 3);
    }
}

// Cards are blended over the room: letters from white to gold, clear all round, and only darkness between.
TEST(Pictures, CreditsAreGoldOnClearGround) {
    for (const char* file :
         {"credits-music.png", "credits-code.png", "credits-gfx.png", "credits-models.png"}) {
        SCOPED_TRACE(file);
        const Picture card(file);
        int clear = 0, white = 0, gold = 0, cold = 0;
        for (int y = 0; y < card.height; y++) {
            for (int x = 0; x < card.width; x++) {
                clear += card.sample(x, y, 3) < 8;
                const bool ink = card.sample(x, y, 3) == 255 && card.sample(x, y, 0) > 220;
                white += ink && card.sample(x, y, 2) > 215;
                gold += ink && card.sample(x, y, 2) < 150;
                cold += card.sample(x, y, 2) > card.sample(x, y, 0) + 2;
            }
        }
        EXPECT_GT(clear, card.width * card.height / 3);
        EXPECT_GT(white, card.width * card.height / 200);
        EXPECT_GT(gold, card.width * card.height / 200);
        EXPECT_EQ(cold, 0);
        for (int i = 0; i < card.width; i++) EXPECT_LT(card.sample(i, 0, 3) + card.sample(0, i, 3), 8);
    }
}

// Alpha of one half or less is cut away, and the figure's lines are too fine to be cut. S must not matter.
// All is dark, with less green than red or blue, or its glow is one flat patch; red lies below and blue
// above, and between two heights of green is one without, or there is no shade in what the glow fills.
TEST(Pictures, StripesAreTintedAlongTAndNotCut) {
    const Picture picture("tex.png");
    int greens = 0;
    bool green = false;
    for (int y = 0; y < picture.height; y++) {
        const float r = picture.sample(0, y, 0), g = picture.sample(0, y, 1), b = picture.sample(0, y, 2);
        ASSERT_GT(picture.sample(0, y, 3), 135) << y;
        ASSERT_LT(g, std::max(r, b)) << y;
        ASSERT_LT(g, 24) << y;
        ASSERT_LT(std::max(r, b), 64) << y;
        const bool above = y < picture.height / 2;  // the first row is the eye's height, and T repeats
        if (std::abs(y - picture.height / 2) > 80 && std::min(y, picture.height - y) > 80) {
            ASSERT_GT(above ? b : r, 3 * (above ? r : b)) << y;
        }
        greens += !green && g > 6;
        green = g > (green ? 4 : 6);
        for (int x = 0; x < picture.width; x += 17)
            for (int channel = 0; channel < 4; channel++)
                ASSERT_NEAR(picture.sample(x, y, channel), picture.sample(0, y, channel), 1)
                    << x << ", " << y;
    }
    EXPECT_GE(greens, 4);
}

// Added pictures show a frame round themselves where their border is not black.
TEST(Pictures, AddedPicturesEndInBlack) {
    for (const char* file : {"start.jpg", "vornel.png", "greetsit.png", "spot.png", "loading.jpg"})
        EXPECT_LE(Picture(file).brightestOfBorder(), 6) << file;
}

// Half of the overlay is added to every frame, the last black ones too, where no more than 3 of 255 may stay.
TEST(Pictures, OverlayIsTooDarkToBeSeen) {
    const Picture picture("overlay.jpg");
    int brightest = 0;
    for (int y = 0; y < picture.height; y++)
        for (int x = 0; x < picture.width; x++) brightest = std::max(brightest, picture.brightest(x, y));
    EXPECT_LE(brightest, 6);
    EXPECT_GT(picture.mean(0, 0, 800, 600), 1);  // grain, though
    EXPECT_LT(picture.mean(816, 0, 1024, 1024), 0.5);
    EXPECT_LT(picture.mean(0, 616, 1024, 1024), 0.5);
}

// The screen is a quarter of the greetings; on every second bar one block stands in its middle.
TEST(Pictures, GreetingsAreReadWholeOnTheBar) {
    const Picture picture("greetsit.png");
    const double unit = picture.width / 8.0;
    const auto lettersIn = [&](double from, double to) {
        int lit = 0;
        for (int x = int((from + 4) * unit); x < (to + 4) * unit && x < picture.width; x++)
            for (int y = 0; y < picture.height; y++) lit += picture.brightest(x, y) > 200;
        return lit;
    };
    double before = -4;
    for (const double middle : {-2.884, -0.979, 0.926, 2.831}) {
        EXPECT_GT(lettersIn(middle - 0.86, middle + 0.86), 5000);
        EXPECT_LT(lettersIn(before, middle - 0.86), 500);  // a spark at most
        before = middle + 0.86;
    }
    EXPECT_EQ(lettersIn(before, 4), 0);
}

// The glow adds the frame to itself about three times: added reflections are dark but for lines and for the
// rims that outlines show, and the robot's, which are its only picture, stay low. Skies are up: in the last
// rows.
TEST(Pictures, SphereMapsAreDarkWithTheirSkyInTheLastRows) {
    const struct {
        const char* file;
        double most;
    } maps[] = {{"envmap.png", 0.13}, {"envmap2.png", 0.25}, {"envmap3.png", 0.25}, {"envmap4.png", 0.25}};
    for (const auto& map : maps) {
        SCOPED_TRACE(map.file);
        const Picture picture(map.file);
        const int half = picture.height / 2;
        EXPECT_LT(picture.mean(), map.most * 255);
        EXPECT_GT(picture.mean(0, half, picture.width, 2 * half),
                  1.2 * picture.mean(0, 0, picture.width, half));
        int most = 0;
        for (int y = 0; y < picture.height; y++)
            for (int x = 0; x < picture.width; x++) most = std::max(most, picture.brightest(x, y));
        EXPECT_GT(most, 100);
    }
}

// Where a picture repeats, its last row and column meet its first like any two neighbours. Of the walls' that
// is the tunnel's part, the left half.
TEST(Pictures, RepeatingTexturesHaveNoSeam) {
    const struct {
        const char* file;
        double part;  // of its width
    } rows[] = {{"shiptex.png", 1}, {"cubetex.png", 0.5}, {"noise1.png", 1}, {"tex.png", 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file);
        const Picture picture(row.file);
        const int width = int(picture.width * row.part);
        double across = 0, along = 0;
        for (int i = 1; i < picture.height; i++)
            across = std::max(across, rowDifference(picture, width, i - 1, i));
        for (int i = 1; i < width; i++) along = std::max(along, columnDifference(picture, i - 1, i));
        EXPECT_LE(rowDifference(picture, width, picture.height - 1, 0), across);
        EXPECT_LE(columnDifference(picture, width - 1, 0), along);
    }
}

// The sky is a ball folded into a square: each edge is its own mirror image about its middle.
TEST(Pictures, SkyMeetsItselfWhereItIsFolded) {
    const Picture sky("star2.png");
    const int last = sky.width - 1;
    double folded = 0, unfolded = 0;
    for (int i = 0; i < sky.width / 2; i++) {
        for (int c = 0; c < 3; c++) {
            const auto apart = [&](int k, int x) {
                return std::abs(sky.sample(i, x, c) - sky.sample(k, x, c)) +
                       std::abs(sky.sample(x, i, c) - sky.sample(x, k, c));
            };
            folded += apart(last - i, 0) + apart(last - i, last);
            unfolded +=
                apart((i + sky.width / 2) % sky.width, 0) + apart((i + sky.width / 2) % sky.width, last);
        }
    }
    EXPECT_LT(folded * 4, unfolded);
}

// The first row is the tint of all that is high up on the robot; filtering must not pull the glow into it.
TEST(Pictures, RobotBandsBeginDimAndHaveNoColumns) {
    for (const char* file : {"redlaser.png", "greenlaser.png"}) {
        SCOPED_TRACE(file);
        const Picture band(file);
        EXPECT_LT(band.mean(0, 0, band.width, 1), 0.1 * 255);
        EXPECT_NEAR(band.mean(0, 0, band.width, 1), band.mean(0, 0, band.width, 10), 2);
        EXPECT_GT(band.mean(0, band.height - 1, band.width, band.height), band.mean(0, 0, band.width, 1));
        for (int y = 0; y < band.height; y++)
            EXPECT_NEAR(band.sample(0, y, 0), band.sample(band.width / 2, y, 0), 1) << y;
    }
}
