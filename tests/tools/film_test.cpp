// Films as other programs see them: what they say of themselves, and what comes back out of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <sstream>
#include <vector>

#include "render/screen.h"
#include "tests/tools/run.h"
#include "tools/capture/hash.h"
#include "tools/capture/manifest.h"

namespace {

using Fields = std::map<std::string, std::string>;

// What ffprobe tells of the first video or audio stream.
Fields streamOf(const std::string& film, const char* stream) {
    const Result result = shell("ffprobe -v error -count_packets -select_streams " + std::string(stream) +
                                " -show_entries stream -of default=noprint_wrappers=1 " + film);
    Fields fields;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
        const size_t middle = line.find('=');
        if (middle != std::string::npos) fields[line.substr(0, middle)] = line.substr(middle + 1);
    }
    return fields;
}

void expectFields(const Fields& fields, const Fields& expected) {
    for (const auto& [name, value] : expected) {
        const auto field = fields.find(name);
        EXPECT_EQ(field == fields.end() ? "(none)" : field->second, value) << name;
    }
}

// The frames of a film with the places of those that need none before them marked.
std::string groupsOf(const std::string& film) {
    const Result result =
        shell("ffprobe -v error -select_streams v -show_entries packet=flags -of csv=p=0 " + film);
    std::string groups;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) groups += line[0] == 'K' ? 'K' : '.';
    return groups;
}

// All frames as an ordinary player shows them: by the film's tags, as bytes of red, green and blue.
std::vector<uint8_t> shownPixels(const std::string& film) {
    const std::string command = "ffmpeg -v error -i " + film +
                                " -vf scale=flags=accurate_rnd+full_chroma_int+bicubic,format=rgb24"
                                " -fps_mode passthrough -f rawvideo -";
    const std::string pixels = outputOf(command);
    return {pixels.begin(), pixels.end()};
}

double brightness(const uint8_t* rgb) {
    return 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2];
}

// How many of 100 pixels have the brightness that was drawn, within 3 levels.
double pixelsInPlace(const std::vector<uint8_t>& shown, const std::vector<uint8_t>& drawn) {
    size_t near = 0;
    for (size_t i = 0; i < drawn.size(); i += 3)
        near += std::abs(brightness(&shown[i]) - brightness(&drawn[i])) <= 3;
    return 300.0 * near / drawn.size();
}

// The same of colours, where both pictures are averaged over squares: a film's colours are coarser than its
// brightness.
double colourInPlace(const std::vector<uint8_t>& shown, const std::vector<uint8_t>& drawn) {
    constexpr int square = 8;
    size_t near = 0, squares = 0;
    constexpr size_t frameBytes = size_t(screenWidth) * screenHeight * 3;
    for (size_t frame = 0; frame < drawn.size(); frame += frameBytes) {
        for (int y = 0; y < screenHeight; y += square) {
            for (int x = 0; x < screenWidth; x += square, squares++) {
                int sum[3] = {};
                for (int i = 0; i < square * square; i++) {
                    const size_t at = frame + ((y + i / square) * size_t(screenWidth) + x + i % square) * 3;
                    for (int channel = 0; channel < 3; channel++)
                        sum[channel] += shown[at + channel] - drawn[at + channel];
                }
                near += std::all_of(sum, sum + 3, [](int s) { return std::abs(s) <= 3 * square * square; });
            }
        }
    }
    return 100.0 * near / squares;
}

// What the film of a part of the show tells of its pictures.
Fields filmed(const std::string& words, const std::string& film) {
    const Result result = capture(words + " --out " + film);
    EXPECT_EQ(result.status, 0) << result.output;
    return streamOf(film, "v");
}

const Fields taggedForTheNet = {
    {"codec_name", "h264"},       {"profile", "High"},          {"pix_fmt", "yuv420p"},
    {"color_range", "tv"},        {"color_space", "bt709"},     {"color_transfer", "bt709"},
    {"color_primaries", "bt709"}, {"r_frame_rate", "60/1"},     {"avg_frame_rate", "60/1"},
    {"has_b_frames", "0"},        {"chroma_location", "center"}};

// Strangers' tools go by what a film says of itself, in its stream and in its container.
TEST(Film, CanBePutOnTheNetAsItIs) {
    const ScratchDirectory scratch;
    const std::string film = scratch.file("film.mp4");
    const Fields video = filmed("--from 24 --to 24.6", film);
    expectFields(video, taggedForTheNet);
    expectFields(video, {{"width", "800"}, {"height", "600"}, {"nb_read_packets", "36"}});
    expectFields(streamOf(film, "a"), {{"codec_name", "aac"}, {"channels", "2"}, {"sample_rate", "48000"}});
    EXPECT_GE(std::stoi(streamOf(film, "a")["bit_rate"]), 192000);

    EXPECT_EQ(groupsOf(film), "K" + std::string(29, '.') + "K.....");
    const std::string bytes = content(film);
    EXPECT_LT(bytes.find("moov"), bytes.find("mdat"));
    EXPECT_NE(bytes.find("colrnclx"), std::string::npos);
    // The stream alone, without its container.
    ASSERT_EQ(shell("ffmpeg -v error -i " + film + " -c:v copy -f h264 " + scratch.file("film.h264")).status,
              0);
    expectFields(streamOf(scratch.file("film.h264"), "v"),
                 {{"color_range", "tv"}, {"color_space", "bt709"}, {"chroma_location", "center"}});
}

TEST(Film, ForPlatformsIsWideAndPillarboxed) {
    const ScratchDirectory scratch;
    const std::string film = scratch.file("film.mkv");
    const Fields video = filmed("--upload --from 24 --to 24.05", film);
    expectFields(video, taggedForTheNet);
    expectFields(video, {{"width", "1920"}, {"height", "1080"}, {"nb_read_packets", "3"}});
    const std::vector<uint8_t> pixels = shownPixels(film);
    ASSERT_EQ(pixels.size(), size_t{3} * 1920 * 1080 * 3);
    int bars = 0, picture = 0;  // the brightest in the middle row, beside the picture and in it
    for (int x = 0; x < 1920; x++) {
        int* side = x < 236 || x >= 1684 ? &bars : &picture;
        *side = std::max<int>(*side, pixels[(1920 * 540 + x) * size_t{3} + 1]);
    }
    EXPECT_LE(bars, 1);
    EXPECT_GE(picture, 100);
    EXPECT_EQ(capture("--upload --fps 30").output, "capture: --upload: has 60 frames a second\n");
}

// Frames of six scenes, drawn for both kinds alike: the lossless ones are what was drawn, bit for bit, and
// the others show it.
TEST(Film, ShowsWhatWasDrawn) {
    const ScratchDirectory scratch;
    const std::string net = scratch.file("net.mp4"), lossless = scratch.file("lossless.mp4");
    const std::string frames = "--frames 480-485,1440-1445,4320-4325,5280-5285,7200-7205,10080-10085 ";
    ASSERT_EQ(capture(frames + "--out " + net).status, 0);
    ASSERT_EQ(capture(frames + "--lossless --out " + lossless).status, 0);
    expectFields(streamOf(lossless, "v"), {{"codec_name", "h264"},
                                           {"profile", "High 4:4:4 Predictive"},
                                           {"pix_fmt", "gbrp"},
                                           {"color_range", "pc"},
                                           {"color_space", "gbr"},
                                           {"r_frame_rate", "60/1"}});

    Manifest manifest;
    ASSERT_TRUE(readManifest(lossless, &manifest));
    const std::vector<uint8_t> drawn = shownPixels(lossless);
    ASSERT_EQ(drawn.size(), size_t{36} * screenWidth * screenHeight * 3);
    for (size_t i = 0; i < manifest.frames.size(); i++) {
        Picture picture(size_t(screenWidth) * screenHeight * 4, 0);
        for (int y = 0; y < screenHeight; y++) {
            for (int x = 0; x < screenWidth; x++) {
                const uint8_t* rgb = &drawn[((i * screenHeight + y) * screenWidth + x) * 3];
                uint8_t* bgr = &picture[(size_t(screenHeight - 1 - y) * screenWidth + x) * 4];
                std::reverse_copy(rgb, rgb + 3, bgr);
            }
        }
        EXPECT_EQ(hashOfPicture(picture), manifest.frames[i].hash) << "frame " << manifest.frames[i].number;
    }

    const std::vector<uint8_t> shown = shownPixels(net);
    ASSERT_EQ(shown.size(), drawn.size());
    const double pixels = pixelsInPlace(shown, drawn), colours = colourInPlace(shown, drawn);
    printf("within 3 levels: the brightness of %.1f %% of the pixels, the colour of %.1f %% of the squares\n",
           pixels, colours);
    EXPECT_GE(pixels, 95);
    EXPECT_GE(colours, 95);
    Manifest ofNet;
    ASSERT_TRUE(readManifest(net, &ofNet));
    for (size_t i = 0; i < manifest.frames.size(); i++)
        EXPECT_EQ(ofNet.frames.at(i).hash, manifest.frames[i].hash);
}

// Edges are smooth, and the copies of the screen that scenes are made from show the same picture.
TEST(Film, SamplesSmoothEdgesAndSurviveCopies) {
    const ScratchDirectory scratch;
    // The ship in its tunnel, all of which goes through copies of the screen.
    const std::string words = "--fps 30 --from 24 --to 24.03 --out ";
    ASSERT_EQ(capture("--samples 0 " + words + scratch.file("plain%d.png")).status, 0);
    const Result result = capture("--samples 4 " + words + scratch.file("smooth%d.png"));
    if (result.output.find("the driver has no window") != std::string::npos) GTEST_SKIP() << result.output;
    ASSERT_EQ(result.status, 0) << result.output;
    const auto plain = shownPixels(scratch.file("plain720.png"));
    const auto smooth = shownPixels(scratch.file("smooth720.png"));
    ASSERT_EQ(plain.size(), smooth.size());
    double difference = 0;
    size_t changed = 0;
    for (size_t i = 0; i < plain.size(); i++) {
        difference += std::abs(plain[i] - smooth[i]);
        changed += plain[i] != smooth[i];
    }
    EXPECT_GT(changed, plain.size() / 1000);
    EXPECT_LT(difference / plain.size(), 3)
        << "levels on average: a copy that does not resolve is another picture";

    const Result refused = capture("--samples 64 --out " + scratch.file("no%d.png"));
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.output.find("capture: --samples: the driver has no window with 64; its most is"),
              std::string::npos)
        << refused.output;
}

}  // namespace
