#include "image/image.h"

#include <algorithm>

#include "tests/image/picture.h"
#include "tests/memory_file.h"
#include "tests/scratch.h"

namespace {

std::vector<Bytes> reversed(std::vector<Bytes> rows) {
    std::reverse(rows.begin(), rows.end());
    return rows;
}

int write(int (*writer)(const char*, int, int, int, int, uint32_t, const uint8_t*), const std::string& path,
          const Image& image) {
    return writer(path.c_str(), image.width, image.height, image.channels, image.bytesPerPixel, image.stride,
                  image.pixels);
}

class ImageFile : public testing::Test {
protected:
    MemoryFile file;

    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    // What the reader that ends nothing says of the file; empty if it reads it.
    std::string complaint() const {
        std::string problem;
        Picture read;
        if (const auto image = readJpeg(file.read(), &problem)) static_cast<Image&>(read) = *image;
        EXPECT_EQ(read.pixels != nullptr, problem.empty());
        return problem;
    }
};

TEST(FlipImage, MirrorsRowsAndPixelsAsWholes) {
    for (const int side : {1, 4, 5}) {
        SCOPED_TRACE(side);
        Picture vertical(3, side, 3), horizontal(side, 2, 3);
        const Picture original(side, 2, 3);
        const auto before = vertical.rows();
        flipImage(vertical, false, false);
        EXPECT_EQ(vertical.rows(), before);
        flipImage(vertical, true, false);
        EXPECT_EQ(vertical.rows(), reversed(before));
        flipImage(horizontal, false, true);
        for (int y = 0; y < 2; y++)
            for (int x = 0; x < side; x++) EXPECT_EQ(horizontal.pixel(x, y), original.pixel(side - 1 - x, y));
    }
}

TEST(FlipImage, BothTurnRoundButForTheMiddleColumn) {
    for (const auto& [width, height] : {std::pair{4, 2}, {4, 3}, {3, 2}}) {
        Picture picture(width, height, 4);
        const Picture original(width, height, 4);
        flipImage(picture, true, true);
        for (int y = 0; y < height; y++)
            for (int x = 0; x < width; x++) {
                const bool middle = 2 * x + 1 == width;
                EXPECT_EQ(picture.pixel(x, y), original.pixel(width - 1 - x, middle ? y : height - 1 - y))
                    << x << " " << y << " of " << width << " x " << height;
            }
    }
}

TEST(CopyImageRect, MovesWholeRowsOfDestinationPixels) {
    Picture source(6, 5, 3), target(4, 4, 3), untouched(4, 4, 3);
    EXPECT_EQ(copyImageRect(target, 1, 2, source, 3, 1, 2, 2), 2);
    for (int y = 0; y < 4; y++)
        for (int x = 0; x < 4; x++) {
            const bool inside = x >= 1 && x < 3 && y >= 2;
            EXPECT_EQ(target.pixel(x, y), inside ? source.pixel(x + 2, y - 1) : untouched.pixel(x, y));
        }
    EXPECT_EQ(copyImageRect(target, 0, 0, source, 0, 0, 4, 0), 0);
}

TEST_F(ImageFile, KindIsToldByTheLastThreeLettersAlone) {
    const Picture picture(2, 2, 3);
    const ScratchDirectory directory;
    const auto loads = [&](auto writer, const char* name) {
        const std::string path = directory.file(name);
        Picture loaded;
        return write(writer, path, picture) == 0 && loadImage(path.c_str(), &loaded, false) == 0;
    };
    for (const char* name : {"a.png", "a.PNG", "nodotpng"}) EXPECT_TRUE(loads(writePng, name)) << name;
    for (const char* name : {"a.jpg", "a.jpeg", "a.JPG", "a.JPEG"})
        EXPECT_TRUE(loads(writeJpeg, name)) << name;
    for (const char* name : {"a.Png", "a.gif", "a.jpG", "ng", ""}) {
        Picture loaded;
        EXPECT_EQ(errorsOf([&] { EXPECT_EQ(loadImage(name, &loaded, false), -1); }),
                  std::string("couldn't recognize format of ") + name + "\n");
    }
}

TEST_F(ImageFile, WhatCannotBeOpenedIsNamed) {
    const std::string told = "can't open /nowhere/a\n";
    Picture picture(2, 2, 3);
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(loadPng("/nowhere/a", &picture, false), -1); }), told);
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(loadJpeg("/nowhere/a", &picture, false), -1); }), told);
    EXPECT_EQ(errorsOf([&] { EXPECT_NE(write(writePng, "/nowhere/a", picture), 0); }), told);
    EXPECT_EQ(errorsOf([&] { EXPECT_NE(write(writeJpeg, "/nowhere/a", picture), 0); }), told);
    EXPECT_EQ(errorsOf([&] { EXPECT_NE(write(writePpm, "/nowhere/a", picture), 0); }), "");
}

TEST_F(ImageFile, PpmHasThreeBytesAPixel) {
    const auto ppm = [this](int channels) {
        const Picture picture(4, 2, channels);  // of which 3 columns are written
        EXPECT_EQ(writePpm(file.path(), 3, 2, channels, channels, picture.stride, picture.pixels), 0);
        return file.read();
    };
    const std::string header = "P6\n3 2\n255\n";
    std::string grey = header, colour = header, opaque = header;
    for (const int first : {0, 4}) {
        for (int i = first; i < first + 3; i++) grey += std::string(3, char(i * 7 + 1));
        for (int i = 3 * first; i < 3 * first + 9; i++) colour += char(i * 7 + 1);
        for (int i = 4 * first; i < 4 * first + 12; i++)
            if (i % 4 != 3) opaque += char(i * 7 + 1);
    }
    EXPECT_EQ(ppm(1), grey);
    EXPECT_EQ(ppm(3), colour);
    EXPECT_EQ(ppm(4), opaque);
    EXPECT_EQ(ppm(2), header);
}

TEST_F(ImageFile, JpegKeepsThePictureAndFlipsRows) {
    Picture picture(16, 24, 3);
    for (int y = 0; y < 24; y++) std::fill_n(picture.pixels + y * 48, 48, uint8_t(y * 10));
    ASSERT_EQ(write(writeJpeg, file.name, picture), 0);
    Picture loaded, flipped;
    ASSERT_EQ(loadJpeg(file.path(), &loaded, false), 0);
    ASSERT_EQ(loadJpeg(file.path(), &flipped, true), 0);
    EXPECT_EQ(loaded.width, 16);
    EXPECT_EQ(loaded.height, 24);
    EXPECT_EQ(loaded.channels, 3);
    EXPECT_EQ(loaded.stride, 48u);
    EXPECT_EQ(complaint(), "");
    for (int y = 0; y < 24; y++) EXPECT_NEAR(loaded.pixel(8, y)[1], y * 10, 12);
    EXPECT_EQ(flipped.rows(), reversed(loaded.rows()));
}

TEST_F(ImageFile, BrokenJpegAndForeignChannelsEndAsLibjpegDoes) {
    file.write("\xff\xd8\xff\xe0 nothing that follows makes sense");
    Picture loaded;
    EXPECT_EXIT(loadJpeg(file.path(), &loaded, false), testing::ExitedWithCode(EXIT_FAILURE), ".");
    EXPECT_NE(complaint(), "");
    file.write("");
    EXPECT_EXIT(loadJpeg(file.path(), &loaded, false), testing::ExitedWithCode(EXIT_FAILURE),
                "^Empty input file\n");
    EXPECT_EQ(complaint(), "Empty input file");

    const Picture picture(4, 4, 3);
    ASSERT_EQ(write(writeJpeg, file.name, picture), 0);
    std::string huge = file.read();
    huge.replace(huge.find("\xff\xc0") + 5, 4, "\xff\xdc\xff\xdc");  // height and width
    file.write(huge);
    EXPECT_EXIT(loadJpeg(file.path(), &loaded, false), testing::ExitedWithCode(EXIT_FAILURE), "16384");
    EXPECT_NE(complaint().find("16384"), std::string::npos);

    const Picture grey(4, 4, 1);
    EXPECT_EXIT(write(writeJpeg, file.name, grey), testing::ExitedWithCode(EXIT_FAILURE), "colorspace");
}

TEST_F(ImageFile, TruncatedJpegStillHasItsSize) {
    const Picture picture(64, 64, 3);
    ASSERT_EQ(write(writeJpeg, file.name, picture), 0);
    const std::string whole = file.read();
    file.write(whole.substr(0, whole.size() - whole.size() / 3));
    Picture loaded;
    EXPECT_EQ(errorsOf([&] { ASSERT_EQ(loadJpeg(file.path(), &loaded, false), 0); }),
              "Premature end of JPEG file\n");
    EXPECT_EQ(loaded.rows().size(), 64u);
    EXPECT_EQ(complaint(), "Premature end of JPEG file");
}

TEST_F(ImageFile, FullDiskIsReported) {
    const Picture small(2, 2, 3);
    Picture noise(200, 200, 3);  // more than libpng holds back
    uint32_t state = 1;
    for (int i = 0; i < 200 * 600; i++) noise.pixels[i] = (state = state * 1664525 + 1013904223) >> 24;
    for (const Picture* picture : {&small, &std::as_const(noise)}) {
        const std::string errors = errorsOf([&] { EXPECT_NE(write(writePng, "/dev/full", *picture), 0); });
        EXPECT_TRUE(errors.ends_with("write_png: Error 3\n")) << errors;
    }
    EXPECT_NE(write(writePpm, "/dev/full", small), 0);
    EXPECT_EXIT(write(writeJpeg, "/dev/full", small), testing::ExitedWithCode(EXIT_FAILURE), ".");
}

}  // namespace
