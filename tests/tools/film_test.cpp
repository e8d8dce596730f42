// Films as other programs see them: what they say of themselves, and what comes back out of them.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <sstream>
#include <tuple>
#include <vector>

#include "render/screen.h"
#include "tests/tools/run.h"
#include "tools/capture/film.h"
#include "tools/capture/grabber.h"
#include "tools/capture/hash.h"
#include "tools/capture/manifest.h"
#include "tools/process.h"

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
    return outputOf("ffprobe -v error -select_streams v -show_entries packet=flags -of csv=p=0 " + film +
                    " | cut -c1 | tr -d '\\n' | tr _ .");
}

// All frames as an ordinary player shows them: by the film's tags, as bytes of red, green and blue.
std::vector<uint8_t> shownPixels(const std::string& film, const std::string& filters = "") {
    const std::string command = "ffmpeg -v error -i " + film +
                                " -vf scale=flags=accurate_rnd+full_chroma_int+bicubic,format=rgb24" +
                                filters + " -fps_mode passthrough -f rawvideo -";
    const std::string pixels = outputOf(command);
    return {pixels.begin(), pixels.end()};
}

// How many of 100 pixels have what was drawn, within 3 levels: their brightness, or each of their colours,
// where both pictures are averaged over squares, since a film's colours are coarser than its brightness.
double brightnessInPlace(const std::vector<uint8_t>& shown, const std::vector<uint8_t>& drawn) {
    const auto brightness = [](const uint8_t* rgb) {
        return 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2];
    };
    size_t near = 0;
    for (size_t i = 0; i < drawn.size(); i += 3)
        near += std::abs(brightness(&shown[i]) - brightness(&drawn[i])) <= 3;
    return 300.0 * near / drawn.size();
}
double colourInPlace(const std::string& film, const std::string& part) {
    const std::string averaged = ",scale=iw/8:ih/8:flags=area";
    const std::vector<uint8_t> shown = shownPixels(film, averaged), drawn = shownPixels(part, averaged);
    size_t near = 0;
    for (size_t i = 0; i < drawn.size(); i += 3)
        near += std::equal(&drawn[i], &drawn[i] + 3, &shown[i],
                           [](int a, int b) { return std::abs(a - b) <= 3; });
    return 300.0 * near / drawn.size();
}

const Fields taggedForTheNet = {{"codec_name", "h264"},      {"pix_fmt", "yuv420p"},
                                {"color_range", "tv"},       {"color_space", "bt709"},
                                {"color_transfer", "bt709"}, {"color_primaries", "bt709"},
                                {"has_b_frames", "0"},       {"chroma_location", "center"}};

// What a browser says of a film that it has played to its end. Its helpers write its profile for a moment
// longer than it lives itself: they are awaited, by the output that they share with it.
std::string playedByBrowser(const std::string& film) {
    const ScratchDirectory home;
    const std::string page = home.write(
        "page.html", "<video id=film src='" + film +
                         "'></video><script>film.onerror = () => console.log('{refused}');\n"
                         "film.onended = () => "
                         "console.log(`{${film.getVideoPlaybackQuality().totalVideoFrames} frames, ` +\n"
                         "                                 `${(film.duration - "
                         "film.currentTime).toFixed(2)} s left}`);\n"
                         "film.play().catch(error => console.log(`{${error}}`));</script>");
    pid_t browser = 0;
    std::string said;
    const auto take = [&](const std::string& line) {
        const size_t begin = line.find('{'), end = line.find('}');
        if (browser == 0) browser = std::stoi(line);
        if (!said.empty() || begin >= end || end == std::string::npos) return;
        said = line.substr(begin + 1, end - begin - 1);
        kill(browser, SIGTERM);
    };
    runProgram({"sh", "-c",
                "echo $$; exec timeout 60 chromium --headless --no-sandbox --disable-dev-shm-usage "
                "--disable-gpu --mute-audio --autoplay-policy=no-user-gesture-required "
                "--enable-logging=stderr --user-data-dir=" +
                    home.file("profile") + " file://" + page},
               take);
    return said;
}

// Strangers' tools go by what a film says of itself, in its stream and in its container.
TEST(Film, CanBePutOnTheNetAsItIs) {
    const ScratchDirectory scratch;
    // Of its kind, whatever the case of its ending; from one segment into the next.
    const std::string film = scratch.file("film.MP4");
    const Result result = capture("--fps 20 --from 32 --to 32.6 --out " + film);
    ASSERT_EQ(result.status, 0) << result.output;
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"film.MP4"});
    expectFields(streamOf(film, "v"), taggedForTheNet);
    expectFields(streamOf(film, "v"), {{"profile", "Constrained Baseline"},
                                       {"width", "800"},
                                       {"height", "600"},
                                       {"r_frame_rate", "20/1"},
                                       {"avg_frame_rate", "20/1"},
                                       {"nb_read_packets", "12"}});
    expectFields(streamOf(film, "a"), {{"codec_name", "aac"}, {"channels", "2"}, {"sample_rate", "48000"}});
    EXPECT_GE(std::stoi(streamOf(film, "a")["bit_rate"]), 192000);

    EXPECT_EQ(groupsOf(film), "K.........K.");
    EXPECT_EQ(playedByBrowser(film), "12 frames, 0.00 s left");
    const std::string bytes = contentOf(film);
    EXPECT_LT(bytes.find("moov"), bytes.find("mdat"));
    EXPECT_NE(bytes.find("colrnclx"), std::string::npos);
    // The stream alone, without its container.
    ASSERT_EQ(shell("ffmpeg -v error -i " + film + " -c:v copy -f h264 " + scratch.file("film.h264")).status,
              0);
    expectFields(streamOf(scratch.file("film.h264"), "v"),
                 {{"color_range", "tv"}, {"color_space", "bt709"}, {"chroma_location", "center"}});

    const std::string told = shell(
                                 "ffprobe -v error -show_entries "
                                 "chapter=start_time,end_time:chapter_tags=title:format_tags -of compact " +
                                 film)
                                 .output;
    for (const char* tag :
         {"chapter|start_time=0.000000|end_time=0.347000|tag:title=tunnel\n",
          "chapter|start_time=0.347000|end_time=0.600000|tag:title=stripes\n", "|tag:title=Valojuova",
          "|tag:copyright=CC BY 4.0, ", "|tag:creation_time=20", "|tag:comment=drawn by "})
        EXPECT_NE(told.find(tag), std::string::npos) << tag << " is not in " << told;
}

// The sound keeps below the peaks that it was mastered to, but for what a coder's rounding adds.
TEST(Film, HoldsThePeaksOfItsSound) {
    const ScratchDirectory scratch;
    const std::string film = scratch.file("sound.mp4");
    const std::string track = "data/KVX - Ondrevane2.ogg";
    Film sound(film, soundInput(film, FilmKind::Net, {track, 0, 60, ""}));
    ASSERT_TRUE(sound.problem.empty() && sound.finish(true) && sound.place()) << sound.problem;
    const auto peakOf = [](const std::string& words) {
        const std::string said =
            shell("ffmpeg -nostdin " + words + " -map 0:a -af ebur128=peak=true -f null -").output;
        return std::stod(said.substr(said.rfind("Peak:") + 5));
    };
    const double mastered = peakOf("-t 60 -i '" + track + "'"), filmed = peakOf("-i " + film);
    EXPECT_LE(filmed, mastered + 0.5) << "dBFS";
    EXPECT_LE(filmed, -0.5) << "dBFS";
}

// Where there is no room for its end, of which ffmpeg 5 makes nothing; and while another capture writes it.
TEST(Film, IsWholeOrNone) {
    const ScratchDirectory scratch;
    const auto before = signal(SIGXFSZ, SIG_IGN);
    rlimit room;
    getrlimit(RLIMIT_FSIZE, &room);
    for (const char* name : {"film.mp4", "film.mkv"}) {
        const std::string path = scratch.file(name);
        const Words words = soundInput(path, FilmKind::Net, {"data/KVX - Ondrevane2.ogg", 20, 2, ""});
        {
            Film film(path, words);
            EXPECT_EQ(Film(path, words).problem, "another capture is writing it");
            EXPECT_TRUE(film.problem.empty() && film.finish(true) && film.place()) << film.problem;
        }
        const std::string whole = contentOf(path);
        EXPECT_EQ(shell("ffmpeg -v error -i " + path + " -f null -").output, "");
        const rlimit tooLittle = {whole.size() - 100, room.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tooLittle);
        EXPECT_FALSE(Film(path, words).finish(true)) << name;
        setrlimit(RLIMIT_FSIZE, &room);
        EXPECT_TRUE(contentOf(path) == whole);
    }
    signal(SIGXFSZ, before);
    EXPECT_EQ(namesIn(scratch.path), (std::set<std::string>{"film.mp4", "film.mkv"}));
}

struct Pictures {
    std::vector<Picture> pictures;  // as a Grabber hands them over

    explicit Pictures(const std::vector<uint8_t>& shown) {
        constexpr size_t pixels = size_t(screenWidth) * screenHeight;
        for (size_t frame = 0; frame < shown.size(); frame += 3 * pixels) {
            Picture picture(4 * pixels);
            for (size_t i = 0; i < pixels; i++) {
                const size_t row = screenHeight - 1 - i / screenWidth;
                std::reverse_copy(&shown[frame + 3 * i], &shown[frame + 3 * i] + 3,
                                  &picture[4 * (row * screenWidth + i % screenWidth)]);
            }
            pictures.push_back(picture);
        }
    }

    void film(const std::string& path, FilmKind kind) const {
        const int fps = rateOf(kind) ? rateOf(kind) : 60;
        Film film(path, filmWords(path, kind, fps, {"data/KVX - Ondrevane2.ogg", 20, 0.2, ""}));
        for (const Picture& picture : pictures) film.writePicture(picture, kind);
        ASSERT_TRUE(film.problem.empty() && film.finish(true) && film.place()) << path << film.problem;
    }
};

// Frames of six scenes: a lossless part is what was drawn, bit for bit, and films of all kinds show it.
struct DrawnScenes : testing::Test {
    static inline ScratchDirectory* scratch = nullptr;
    static inline std::vector<uint8_t> drawn;

    static void SetUpTestSuite() {
        scratch = new ScratchDirectory;
        const Result result =
            capture("--lossless --frames 480-481,1440-1441,4320-4321,5280-5281,7200-7201,10080-10081 --out " +
                    scratch->file("part.mp4"));
        ASSERT_EQ(result.status, 0) << result.output;
        drawn = shownPixels(scratch->file("part.mp4"));
        ASSERT_EQ(drawn.size(), size_t{12} * screenWidth * screenHeight * 3);
    }
    static void TearDownTestSuite() { delete scratch; }
};

TEST_F(DrawnScenes, AreInEveryKindOfFilm) {
    const std::string part = scratch->file("part.mp4"), net = scratch->file("net.mp4"),
                      archive = scratch->file("archive.mkv");
    expectFields(streamOf(part, "v"), {{"codec_name", "h264"},
                                       {"profile", "High 4:4:4 Predictive"},
                                       {"pix_fmt", "gbrp"},
                                       {"color_range", "pc"},
                                       {"color_space", "gbr"},
                                       {"r_frame_rate", "60/1"}});
    Manifest manifest;
    ASSERT_TRUE(readManifest(part, &manifest));
    const Pictures pictures(drawn);
    for (size_t i = 0; i < manifest.frames.size(); i++)
        EXPECT_EQ(hashOfPicture(pictures.pictures[i]), manifest.frames[i].hash) << "frame " << i;

    pictures.film(net, FilmKind::Net);
    const std::vector<uint8_t> shown = shownPixels(net);
    ASSERT_EQ(shown.size(), drawn.size());
    const double pixels = brightnessInPlace(shown, drawn), colours = colourInPlace(net, part);
    printf("within 3 levels: the brightness of %.1f %% of the pixels, the colour of %.1f %% of the squares\n",
           pixels, colours);
    EXPECT_GE(pixels, 95);
    EXPECT_GE(colours, 95);

    pictures.film(archive, FilmKind::Archive);
    EXPECT_TRUE(shownPixels(archive) == drawn);
    EXPECT_EQ(groupsOf(archive), std::string(12, 'K'));
    expectFields(streamOf(archive, "v"),
                 {{"codec_name", "ffv1"}, {"pix_fmt", "bgr0"}, {"r_frame_rate", "60/1"}});
    expectFields(streamOf(archive, "a"),
                 {{"codec_name", "flac"}, {"sample_rate", "44100"}, {"bits_per_raw_sample", "24"}});
    // A decoder tells of what has rotted.
    std::string bytes = contentOf(archive);
    bytes[bytes.size() / 2] ^= 1;
    const std::string rotten = scratch->write("rotten.mkv", bytes);
    EXPECT_NE(shell("ffmpeg -v error -i " + rotten + " -map 0:v -f null -").output.find("CRC mismatch"),
              std::string::npos);
}

TEST_F(DrawnScenes, AreWideForPlatformsAndParties) {
    const Pictures one(std::vector<uint8_t>(drawn.begin() + 2 * screenWidth * screenHeight * 3,
                                            drawn.begin() + 3 * screenWidth * screenHeight * 3));
    for (const auto& [kind, profile, height, rate] :
         {std::tuple{FilmKind::Upload, "Constrained Baseline", 1080, "60/1"},
          {FilmKind::Upload2160, "Constrained Baseline", 2160, "60/1"},
          {FilmKind::Party, "Main", 720, "30/1"}}) {
        const std::string film = scratch->file(optionOf(kind) + std::string(".mp4"));
        const int width = height * 16 / 9;
        one.film(film, kind);
        const Fields video = streamOf(film, "v");
        expectFields(video, taggedForTheNet);
        expectFields(video, {{"profile", profile},
                             {"width", std::to_string(width)},
                             {"height", std::to_string(height)},
                             {"r_frame_rate", rate},
                             {"nb_read_packets", "1"}});
        expectFields(streamOf(film, "a"), {{"codec_name", "aac"}, {"sample_rate", "48000"}});
        const std::vector<uint8_t> pixels = shownPixels(film);
        ASSERT_EQ(pixels.size(), size_t(width) * height * 3);
        int bars = 0, picture = 0;  // the brightest in the middle row, beside the picture and in it
        for (int x = 0; x < width; x++) {
            const bool beside = x < width / 8 - 4 || x >= width * 7 / 8 + 4;
            int* side = beside ? &bars : &picture;
            *side = std::max<int>(*side, pixels[(size_t(width) * (height / 2) + x) * 3 + 1]);
        }
        EXPECT_LE(bars, 1) << film;
        EXPECT_GE(picture, 100) << film;
    }
}

// Edges are smooth, and the copies of the screen that scenes are made from show the same picture.
TEST_F(DrawnScenes, AreSmoothedBySamplesThatSurviveCopies) {
    // The ship in its tunnel, all of which goes through copies of the screen.
    const Result result = capture("--samples 4 --frames 1440 --out " + scratch->file("smooth%d.png"));
    if (result.output.find("the driver has no window") != std::string::npos) GTEST_SKIP() << result.output;
    ASSERT_EQ(result.status, 0) << result.output;
    const auto smooth = shownPixels(scratch->file("smooth1440.png"));
    const auto plain = drawn.begin() + 2 * screenWidth * screenHeight * 3;
    double difference = 0;
    size_t changed = 0;
    for (size_t i = 0; i < smooth.size(); i++) {
        difference += std::abs(plain[i] - smooth[i]);
        changed += plain[i] != smooth[i];
    }
    EXPECT_GT(changed, smooth.size() / 1000);
    EXPECT_LT(difference / smooth.size(), 3)
        << "levels on average: a copy that does not resolve is another picture";

    const Result refused = capture("--samples 64 --out " + scratch->file("no%d.png"));
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.output.find("capture: --samples: the driver has no window with 64; its most is"),
              std::string::npos)
        << refused.output;
}

}  // namespace
