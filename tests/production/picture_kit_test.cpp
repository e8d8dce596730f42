// The picture kit: blurs keep the light, files hold what was painted, and distances are in pixels.
#include <gtest/gtest.h>

#include <vector>

#include "image/image.h"
#include "production/kit/picture/lettering.h"
#include "production/kit/picture/noise.h"
#include "tests/scratch.h"

namespace {

using namespace picture;

Rgba sumOf(const Canvas& canvas) {
    Rgba sum;
    for (const Rgba& pixel : canvas.pixels) sum = sum + pixel;
    return sum;
}

TEST(PictureKit, BlursSpreadTheLightAndKeepIt) {
    constexpr int size = 64;
    for (const float sigma : {0.8f, 3.0f, 5.5f}) {
        for (const Edge edge : {Edge::Clamp, Edge::Wrap, Edge::Empty}) {
            Canvas spark(size, size);
            spark.at(32, 32) = opaque(1, 0.5f, 0.25f);
            const Canvas soft = blurred(spark, sigma, edge);
            EXPECT_NEAR(sumOf(soft).r, 1, 1e-3f);
            EXPECT_NEAR(sumOf(soft).b, 0.25f, 1e-3f);
            float variance = 0;
            for (int y = 0; y < size; y++)
                for (int x = 0; x < size; x++) variance += soft.at(x, y).r * (x - 32) * (x - 32);
            EXPECT_NEAR(std::sqrt(variance), sigma, 0.25f);
        }
    }
    // What leaves on one side comes in on the other, stays or is gone.
    Canvas corner(size, size);
    corner.at(0, 0) = grey(1);
    EXPECT_NEAR(sumOf(blurred(corner, 3, Edge::Wrap)).r, 1, 1e-3f);
    EXPECT_NEAR(blurred(corner, 3, Edge::Wrap).at(size - 1, size - 1).r,
                blurred(corner, 3, Edge::Wrap).at(1, 1).r, 1e-5f);
    EXPECT_LT(sumOf(blurred(corner, 3, Edge::Empty)).r, 0.5f);
    EXPECT_NEAR(blurred(Canvas(size, size, grey(0.7f)), 4, Edge::Clamp).at(0, 0).r, 0.7f, 1e-4f);
}

struct Saved {
    Image image;

    Saved(const Canvas& canvas, Rows rows, void (*save)(const Canvas&, const char*, Rows)) {
        const ScratchDirectory scratch;
        const std::string path = scratch.file("saved.png");
        save(canvas, path.c_str(), rows);
        EXPECT_EQ(loadImage(path.c_str(), &image, 0), 0);
    }
    ~Saved() { delete[] image.pixels; }
    int at(int x, int y, int channel) const {
        return image.pixels[size_t(y) * image.stride + x * image.channels + channel];
    }
};

TEST(PictureKit, FilesHoldAlphaUndoneAndRowsAsAsked) {
    Canvas canvas(8, 8);
    canvas.at(2, 1) = opaque(1, 0.5f, 0) * 0.5f;
    const Saved top(canvas, Rows::TopFirst, saveRgba), bottom(canvas, Rows::BottomFirst, saveRgba);
    EXPECT_EQ(top.at(2, 1, 0), 255);
    EXPECT_NEAR(top.at(2, 1, 1), 128, 1);
    EXPECT_EQ(top.at(2, 1, 2), 0);
    EXPECT_NEAR(top.at(2, 1, 3), 128, 1);
    EXPECT_EQ(top.at(3, 1, 3), 0);
    EXPECT_NEAR(bottom.at(2, 6, 3), 128, 1);
    EXPECT_EQ(Saved(canvas, Rows::TopFirst, saveRgb).image.channels, 3);
}

TEST(PictureKit, DitherKeepsTheMeanAndLeavesBlackAndWhiteExact) {
    constexpr int size = 64;
    Canvas canvas(size, size);
    constexpr float tone = 0.3f;  // 76.5 of 255
    paint(canvas, [](float, float y, Rgba) { return y < 1 ? grey(0) : y < 2 ? grey(1) : grey(tone); });
    const Saved saved(canvas, Rows::TopFirst, saveRgb);
    double sum = 0;
    for (int x = 0; x < size; x++) {
        EXPECT_EQ(saved.at(x, 0, 0), 0);
        EXPECT_EQ(saved.at(x, 1, 0), 255);
        for (int y = 2; y < size; y++) {
            EXPECT_TRUE(saved.at(x, y, 0) == 76 || saved.at(x, y, 0) == 77);
            sum += saved.at(x, y, 0);
        }
    }
    EXPECT_NEAR(sum / (size * (size - 2)), tone * 255, 0.05);
}

// "I" is one upright stroke, from the baseline to the capitals' height.
TEST(PictureKit, LetteringIsAFieldOfDistances) {
    for (const float pixelAspect : {1.0f, 4.0f / 3}) {
        const Lettering style = {.height = 60, .weight = 0.2f, .pixelAspect = pixelAspect};
        LetteringField field(100, 100, 20);
        setText(field, style, {"i", 50, 80, Align::Centre});
        const float half = style.weight * style.height / 2;  // of the stroke, in pixel heights
        EXPECT_NEAR(textWidth("I", style), 2 * half / pixelAspect, 0.1f);
        EXPECT_NEAR(field.at(49, 50), -half + 0.5f * pixelAspect, 0.1f);
        EXPECT_NEAR(field.at(50, 50), field.at(49, 50), 0.1f);
        const int outside = int(50 + half / pixelAspect) + 2;
        EXPECT_NEAR(field.at(outside + 3, 50) - field.at(outside, 50), 3 * pixelAspect, 0.05f);
        EXPECT_NEAR(field.at(50, 80 + 7), 7.5f, 0.1f);
        EXPECT_NEAR(field.at(50, 20 - 7), 6.5f, 0.1f);
        EXPECT_EQ(field.at(5, 5), field.reach);
    }
    // Letters that are not there are spaces, and letters keep clear of each other.
    const Lettering style = {.height = 60};
    EXPECT_EQ(textWidth("A*V", style), textWidth("a v", style));
    EXPECT_EQ(textWidth("\xc3\xa4iti", style), textWidth("\xc3\x84ITI", style));
    EXPECT_GT(textWidth("II", style), 2 * textWidth("I", style) + 0.4f * style.gap * style.height);
    EXPECT_LT(textWidth("AV", style),
              textWidth("A", style) + textWidth("V", style) + style.gap * style.height);
}

TEST(PictureKit, ShapesAreSignedDistances) {
    const std::vector<Point> square = {{-4, -4}, {4, -4}, {4, 4}, {-4, 4}};
    for (const Point p : {Point{0, 0}, {3, 1}, {7, 0}, {7, 8}, {-4, 2}})
        EXPECT_NEAR(polygon(p, square), box(p, {}, {4, 4}), 1e-4f);
    EXPECT_NEAR(box({7, 8}, {}, {4, 4}), 5, 1e-5f);
    EXPECT_NEAR(segment({3, 4}, {0, 0}, {10, 0}), 4, 1e-5f);
    EXPECT_EQ(coverage(-1), 1);
    EXPECT_EQ(coverage(0), 0.5f);
}

TEST(PictureKit, NoiseRepeatsAndIsBalanced) {
    double sum = 0;
    for (int i = 0; i < 4000; i++) {
        const float x = 0.0371f * i, y = 0.0113f * i;
        EXPECT_NEAR(fractalNoise(x, y, 4, 3, 7), fractalNoise(x + 4, y - 8, 4, 3, 7), 1e-3f);
        sum += fractalNoise(x, y, 64, 3, 7);
        const float random = randomAt(i, -i, 3);
        EXPECT_TRUE(0 <= random && random < 1);
    }
    EXPECT_NEAR(sum / 4000, 0, 0.1);
}

}  // namespace
