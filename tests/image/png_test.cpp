#include <algorithm>

#include "image/image.h"
#include "tests/image/picture.h"
#include "tests/memory_file.h"
#include "tests/scratch.h"

namespace {

class PngFile : public testing::Test {
protected:
    MemoryFile file;

    // Of every kind there is one, of eight columns and five rows, in which each byte is 37 more than the one
    // before.
    static std::string kept(const std::string& kind) { return contentOf(KEPT_INPUTS "/png/" + kind); }
    // By both: the one that prints, and the one that tells its caller, which have to agree.
    int loadBytes(const std::string& bytes) {
        file.write(bytes);
        Picture loaded, read;
        const int result = loadPng(file.path(), &loaded, false);
        std::string problem;
        if (const auto image = readPng(bytes, &problem)) static_cast<Image&>(read) = *image;
        EXPECT_EQ(read.pixels != nullptr, result == 0);
        EXPECT_EQ(problem.empty(), result == 0);
        EXPECT_EQ(read.rows(), loaded.rows());
        return result;
    }
};

TEST_F(PngFile, EveryKindIsKeptAsStored) {
    const struct {
        const char* name;
        int channels;
        uint32_t stride;
    } kinds[] = {
        {"grey", 1, 8},    {"grey of one bit", 1, 1},    {"grey with alpha", 2, 16},   {"palette", 1, 8},
        {"colour", 3, 24}, {"colour of 16 bits", 3, 48}, {"colour with alpha", 4, 32}, {"interlaced", 3, 24}};
    for (const auto& kind : kinds) {
        SCOPED_TRACE(kind.name);
        std::vector<Bytes> rows(5, Bytes(kind.stride));
        uint8_t value = 0;
        for (Bytes& row : rows)
            for (uint8_t& byte : row) byte = value += 37;
        file.write(kept(kind.name));
        Picture loaded, flipped;
        ASSERT_EQ(loadPng(file.path(), &loaded, false), 0);
        ASSERT_EQ(loadPng(file.path(), &flipped, true), 0);
        EXPECT_EQ(loaded.width, 8);
        EXPECT_EQ(loaded.height, 5);
        EXPECT_EQ(loaded.channels, kind.channels);
        EXPECT_EQ(loaded.stride, kind.stride);
        EXPECT_EQ(loaded.rows(), rows);
        EXPECT_EQ(loadBytes(file.read()), 0);
        std::reverse(rows.begin(), rows.end());
        EXPECT_EQ(flipped.rows(), rows);
    }
}

TEST_F(PngFile, WriterKeepsEveryChannelCount) {
    for (int channels : {1, 2, 3, 4}) {
        const Picture picture(7, 3, channels);
        ASSERT_EQ(writePng(file.path(), 5, 3, channels, channels, picture.stride, picture.pixels), 0);
        Picture loaded;
        ASSERT_EQ(loadPng(file.path(), &loaded, false), 0);
        EXPECT_EQ(loaded.channels, channels);
        ASSERT_EQ(loaded.stride, 5u * channels);
        for (int y = 0; y < 3; y++) EXPECT_EQ(loaded.pixel(4, y), picture.pixel(4, y));
    }
}

TEST_F(PngFile, WriterTurnsDownWhatPngHasNot) {
    const Picture picture(4, 4, 4);
    for (const auto& [side, channels] : {std::pair{4, 5}, {4, 0}, {0, 3}}) {
        const std::string errors = errorsOf(
            [&] { EXPECT_NE(writePng(file.path(), side, 4, channels, channels, 16, picture.pixels), 0); });
        EXPECT_TRUE(errors.ends_with("write_png: Error 3\n")) << errors;
    }
}

TEST_F(PngFile, TruncationAnywhereFails) {
    const std::string whole = kept("colour");
    testing::internal::CaptureStderr();
    for (size_t length = 0; length < whole.size(); length++)
        EXPECT_EQ(loadBytes(whole.substr(0, length)), -1) << length;
    EXPECT_EQ(loadBytes(whole), 0);
    testing::internal::GetCapturedStderr();
}

TEST_F(PngFile, ClaimOfAHugePictureFails) {
    std::string bytes = kept("colour");
    bytes.replace(16, 8, "\x3f\xff\xff\xff\x3f\xff\xff\xff");  // width and height
    EXPECT_EQ(loadBytes(bytes), -1);
    std::string problem;
    EXPECT_FALSE(readPng(bytes, &problem));
    EXPECT_EQ(problem, "its header claims more than the file can hold");
}

}  // namespace
