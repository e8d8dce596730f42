// What the program and the scenes rely on in the pictures of data/: sizes, alpha, black grounds, seams and
// darkness. Read from data/ in the working directory, as the program does.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "image/image.h"
#include "production/pictures/pictures.h"
#include "production/shared/atlas.h"

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
    int brightestOfBorder() const {
        int most = 0;
        for (int i = 0; i < width; i++) most = std::max({most, brightest(i, 0), brightest(i, height - 1)});
        for (int i = 0; i < height; i++) most = std::max({most, brightest(0, i), brightest(width - 1, i)});
        return most;
    }
};

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
// size shows a part of itself only (the greetings are none: they may be as fine as they like); and textures
// are RGB or RGBA, of powers of two.
TEST(Pictures, HaveTheSizesAndChannelsThatTheProgramAssumes) {
    const std::map<std::string, std::pair<int, int>> taken = {
        {"loading.jpg", {512, 512}}, {"overlay.jpg", {1024, 1024}},  {"white.png", {64, 64}},
        {"noise1.png", {256, 256}},  {"greetsit.png", {4096, 1024}}, {"shiptex.png", {2048, 2048}}};
    for (const Product& product : pictureProducts) {
        SCOPED_TRACE(product.file);
        const std::string file = product.file;
        const Picture picture(file);
        const bool seeThrough = file == "tex.png" || file == "shiptex.png" || file == "cubetex.png" ||
                                file == "greetsit.png" || file == "star2.png" || file == "envmap2.png" ||
                                file == "envmap3.png" || file.starts_with("credits");
        EXPECT_EQ(picture.channels, seeThrough ? 4 : 3);
        if (const auto known = taken.find(file); known != taken.end()) {
            EXPECT_EQ(std::pair(picture.width, picture.height), known->second);
        } else if (file.starts_with("credits")) {  // as fine as a quarter of the screen
            EXPECT_EQ(std::pair(picture.width, picture.height), std::pair(512, 256));
        } else {
            EXPECT_EQ(picture.width, picture.height);
            EXPECT_TRUE(std::has_single_bit(unsigned(picture.width)) && picture.width <= 1024);
        }
    }
}

// "distort" tells the ship from the tunnel by the alpha that they leave in the frame.
TEST(Pictures, TheShipIsSolidAndTheTunnelIsNot) {
    const Picture walls("cubetex.png"), hull("shiptex.png");
    int most = 0, solid = 0;
    for (int y = 0; y < walls.height; y++)
        for (int x = 0; x < walls.width / 2; x++) most = std::max(most, walls.sample(x, y, 3));
    EXPECT_EQ(most, 0);
    for (size_t i = 3; i < hull.bytes.size(); i += 4) solid += hull.bytes[i] == 255;
    EXPECT_GT(solid, hull.width * hull.height / 2);
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

// A side of the heap's house that is blank, dark or glaring is seen twenty times over.
TEST(Pictures, HousesOfTheHeapAreDarkPlacesWithLightsInThem) {
    const Picture hull("shiptex.png");
    const double cell = hull.width / 16.0;
    for (const atlas::Cells& rooms :
         {atlas::hull::gable, atlas::hull::houseWall(0), atlas::hull::houseWall(1), atlas::hull::soffit})
        for (int third = 0; third < 3; third++) {
            const int left = int((rooms.left + rooms.width * third / 3) * cell), top = int(rooms.top * cell),
                      right = int(left + rooms.width / 3 * cell), bottom = int(rooms.bottom() * cell);
            int bright = 0, dark = 0;
            for (int y = top; y < bottom; y++)
                for (int x = left; x < right; x++) {
                    bright += hull.brightest(x, y) > 150;
                    dark += hull.brightest(x, y) < 50;
                }
            const int all = (right - left) * (bottom - top);
            EXPECT_GT(bright * 50, all) << rooms.left << ", " << rooms.top << ", " << third;
            EXPECT_LT(bright * 3, all * 2) << rooms.left << ", " << rooms.top << ", " << third;
            EXPECT_GT(dark * 10, all) << rooms.left << ", " << rooms.top << ", " << third;
        }
}

// What is not over a half of both alphas together is cut away, and the halo fills it: drivers differ by a few
// levels in where.
TEST(Pictures, NothingOfTheSeaIsCutAway) {
    const Picture hull("shiptex.png"), stripes("tex.png");
    int least = 255;
    for (int y = 0; y < hull.height; y++)
        for (int x = 0; x < hull.width; x++) least = std::min<int>(least, hull.sample(x, y, 3));
    for (int y = 0; y < stripes.height; y++) EXPECT_GT(least * stripes.sample(0, y, 3), 138 * 255) << y;
}
