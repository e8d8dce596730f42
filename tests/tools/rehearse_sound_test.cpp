// Stems and meters of a rehearsal: what is heard with which keys, and how loud it is said to be.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "production/making/laying.h"
#include "tests/production/meter.h"
#include "tests/sound/signal.h"
#include "tests/sound/sound_server.h"
#include "tests/tools/rehearsal_window.h"
#include "tests/tools/rehearse_program.h"

namespace {

namespace fs = std::filesystem;

constexpr double seconds = 40;

std::vector<float> scaled(std::vector<float> samples, float gain) {
    for (float& sample : samples) sample *= gain;
    return samples;
}

double rmsOf(const std::vector<float>& samples) {
    double sum = 0;
    for (const float sample : samples) sum += sample * sample;
    return std::sqrt(sum / double(samples.size()));
}

// Whether a busy machine had nothing to play between two frames of a recording.
bool hasGap(const std::vector<float>& recorded, long from, long to) {
    constexpr long least = 8;  // that the signals here are never silent for
    return std::search_n(recorded.begin() + from, recorded.begin() + to, least, 0.0f) !=
           recorded.begin() + to;
}

using Moments = std::vector<std::pair<double, int>>;  // each with the music's millisecond

// How much of what was recorded from one of the moments on, of 1, is something else than what is due then;
// all of it if that is nowhere there.
double restOf(const std::vector<float>& due, const Moments& moments, Recorder& recorder) {
    constexpr long frames = recordRate / 10;
    const std::vector<float>& recorded = recorder.samples();
    for (const auto& [moment, ms] : moments) {
        const long at = recorder.frameAt(moment);
        if (at < 0 || at + frames > long(recorded.size()) || hasGap(recorded, at, at + frames)) continue;
        const auto place = locate(recorded, at, due, long(ms) * recordRate / 1000, 20000);
        if (!place) continue;
        const std::vector<float> heard(recorded.begin() + at, recorded.begin() + at + frames);
        std::vector<float> rest = heard;
        for (size_t i = 0; i < rest.size(); i++) rest[i] -= due[size_t(*place) + i];
        return rmsOf(rest) / rmsOf(heard);
    }
    return 1;
}

// Noise, by which any moment is known, and two tones; the track is their sum.
struct Stems3 {
    std::vector<float> noise = scaled(makeNoise(seconds, recordRate), 0.5f);
    std::vector<float> hum = scaled(makeTone(seconds, recordRate, 220), 0.4f);
    std::vector<float> beep = scaled(makeTone(seconds, recordRate, 3000), 0.4f);
    std::vector<float> track = noise;

    explicit Stems3(const fs::path& folder, const fs::path& trackFile) {
        for (size_t i = 0; i < track.size(); i++) track[i] += hum[i] + beep[i];
        fs::create_directories(folder);
        for (const auto& [name, samples] : {std::pair{"noise", &noise}, {"hum", &hum}, {"beep", &beep}})
            writeVorbis(folder / (name + std::string(".ogg")), *samples, recordRate, 2);
        std::ofstream(folder / "list") << "noise\nhum\nbeep\n";
        fs::remove(trackFile);
        writeVorbis(trackFile, track, recordRate, 2);
    }
};

class RehearseSound : public RehearseProgram {
public:
    void SetUp() override {
        RehearseProgram::SetUp();
        stems.emplace(scratch.path / "build/stems", scratch.path / music);
    }
    // When frames were shown, and of which milliseconds, after what the output holds now has been heard:
    // several, since a busy machine may have nothing to play at one.
    Moments nextMoments() const {
        Moments moments;
        double from = steadySeconds() + 0.7;
        for (int i = 0; i < 5; i++) {
            double now = 0;
            int ms = 0;
            await([&] {
                const std::string all = desk();
                return sscanf(all.c_str(), "now: %lf time: %d", &now, &ms) == 2 && now > from;
            });
            moments.emplace_back(now, ms);
            from = now + 0.2;
        }
        sleepSeconds(0.5);
        return moments;
    }
    std::optional<Stems3> stems;
};

// From its files as they are: there are no sources beside them. Each moment is found in what is due, to the
// frame, and there is nothing else in it.
TEST_F(RehearseSound, KeysMuteAndSoloStemsInStepWithTheTrack) {
    SoundServer server;
    Recorder recorder(server);
    rehearse({"20"});
    EXPECT_GE(time(), 20000);
    std::vector<std::pair<std::vector<float>, Moments>> all;
    const auto listenFor = [&](const std::vector<float>& due) { all.emplace_back(due, nextMoments()); };
    const std::vector<float> track = decodeVorbis(scratch.file(music));
    const std::vector<float> noise = decodeVorbis(scratch.file("build/stems/noise.ogg"));
    std::vector<float> noiseAndHum = decodeVorbis(scratch.file("build/stems/hum.ogg"));
    for (size_t i = 0; i < noise.size(); i++) noiseAndHum[i] += noise[i];

    act("key --window %1 m");
    ASSERT_TRUE(says("\nstem: noise\nstem: hum\nstem: beep\n")) << desk();
    act("key --window %1 Home");
    EXPECT_TRUE(await([&] { return time() < 15000; }));
    listenFor(track);
    act("key --window %1 3");
    ASSERT_TRUE(says("\nstem: noise\nstem: hum\nstem: beep, muted, not heard\n"));
    listenFor(noiseAndHum);
    act("key --window %1 shift+1");
    ASSERT_TRUE(says("\nstem: noise, soloed\nstem: hum, not heard\nstem: beep, muted, not heard\n"));
    listenFor(noise);
    act("key --window %1 Right");
    listenFor(noise);
    act("key --window %1 0");
    ASSERT_TRUE(says("\nstem: noise\nstem: hum\nstem: beep\n"));
    listenFor(track);

    for (const auto& [due, moments] : all)
        EXPECT_LT(restOf(due, moments, recorder), 0.002) << moments.front().second;
}

TEST_F(RehearseSound, BrokenStemsAreOneLine) {
    const std::string hum = contentOf(scratch.file("build/stems/hum.ogg"));
    scratch.write("build/stems/hum.ogg", hum.substr(0, hum.size() / 2));
    rehearse({"2", "-nosound"});
    act("key --window %1 m");
    const std::string problem = "\nproblem: no stems: build/stems/hum.ogg: the file ends too early\n";
    ASSERT_TRUE(says(problem)) << desk();
    act("key --window %1 1 Home");
    EXPECT_TRUE(says(problem));
    EXPECT_EQ(state("stem"), "");

    scratch.write("build/stems/hum.ogg", hum);
    act("key --window %1 m");
    act("key --window %1 m");
    EXPECT_TRUE(says("\nstem: noise\nstem: hum\nstem: beep\n")) << desk();
    EXPECT_EQ(state("problem"), "");
    fs::remove(scratch.path / "build/stems/list");
    act("key --window %1 m");
    act("key --window %1 m");
    EXPECT_TRUE(says("\nproblem: no stems: build/stems/list: No such file or directory\n"));
}

// Of the track and of a stem alone, at a few places that are held; the meter that is asked rounds to 0.1.
TEST_F(RehearseSound, LoudnessAndPeaksAreThoseOfAnIndependentMeter) {
    fs::remove(scratch.path / music);
    fs::copy(music, scratch.path / music);
    rehearse({"60", "--held", "-nosound"});
    const auto compare = [&](const std::string& file, double second) {
        EXPECT_TRUE(await([&] { return !state("loudness").empty() && time() == int(second * 1000); }));
        const LoudnessAt expected = measureAt(scratch.file(file), second);
        double left = 0, right = 0;
        std::istringstream(state("peaks")) >> left >> right;
        EXPECT_NEAR(std::atof(state("loudness").c_str()), expected.shortTerm, 0.1) << file << second;
        EXPECT_NEAR(left, expected.left, 0.3) << file << second;
        EXPECT_NEAR(right, expected.right, 0.3) << file << second;
    };
    compare(music, 60);
    act("key --window %1 Page_Down");
    compare(music, 90);
    act("key --window %1 Home");
    act("key --window %1 Up");
    compare(music, 5);
    act("key --window %1 m");
    ASSERT_TRUE(says("\nstem: noise\nstem: hum\nstem: beep\n"));
    const std::string before = state("loudness");
    act("key --window %1 shift+1");
    EXPECT_TRUE(await([&] { return !state("loudness").empty() && state("loudness") != before; }));
    compare("build/stems/noise.ogg", 5);
}

// What the sound's thread reads while faders move: no step that the sound itself has not, and the sums that
// are due.
TEST(StemMix, ChangesWithoutAClickAndKeepsItsPlace) {
    const ScratchDirectory scratch;
    fs::create_directories(scratch.path / "data");
    const Stems3 stems(scratch.path / "stems", scratch.path / music);
    const auto fileOf = [&](const std::string& path) {
        return std::make_shared<const std::string>(contentOf(scratch.file(path)));
    };
    const auto faders = std::make_shared<Faders>();
    const std::vector<SoundFile> files = {fileOf("stems/noise.ogg"), fileOf("stems/hum.ogg"),
                                          fileOf("stems/beep.ogg")};
    StemMix mix(sound::Decoder::open(scratch.file(music).c_str()), faders);
    std::vector<std::unique_ptr<sound::Decoder>> alone;
    for (const char* path : {"stems/noise.ogg", "stems/hum.ogg", "stems/beep.ogg", music})
        alone.push_back(sound::Decoder::open(scratch.file(path).c_str()));
    constexpr int count = 441;
    std::vector<float> heard(2 * count), one(2 * count);
    const auto seek = [&](sound::Time to) {
        mix.seek(to, recordRate);
        for (const auto& decoder : alone) decoder->seek(to, recordRate);
    };
    // The largest difference from what `due` says, over a tenth of a second; its first 30 ms may be a fade.
    const auto errorOf = [&](const std::vector<int>& due) {
        float most = 0;
        for (int block = 0; block < 10; block++) {
            mix.read(heard.data(), count);
            std::vector<float> rest = heard;
            for (size_t i = 0; i < alone.size(); i++) {
                alone[i]->read(one.data(), count);
                if (std::find(due.begin(), due.end(), int(i)) == due.end()) continue;
                for (size_t k = 0; k < rest.size(); k++) rest[k] -= one[k];
            }
            for (const float sample : rest)
                if (block > 2) most = std::max(most, std::fabs(sample));
        }
        return most;
    };
    seek(std::chrono::milliseconds(12345));
    EXPECT_LT(errorOf({3}), 1e-5f);
    faders->setStems(files, 7);
    EXPECT_LT(errorOf({3}), 1e-5f);
    faders->hear(5);
    EXPECT_LT(errorOf({0, 2}), 1e-5f);
    faders->hear(1);
    EXPECT_LT(errorOf({0}), 1e-5f);
    seek(std::chrono::nanoseconds(20'000'012'345));
    EXPECT_LT(errorOf({0}), 1e-5f);
    faders->hear(3);
    EXPECT_LT(errorOf({0, 1}), 1e-5f);
    faders->setStems({files[2], files[1]}, 2);
    EXPECT_LT(errorOf({1}), 1e-5f);
    faders->hear(0);
    EXPECT_LT(errorOf({}), 1e-5f);
    faders->setStems({}, 0);
    EXPECT_LT(errorOf({3}), 1e-5f);

    // The tones alone: their own steepest bend, and that of every change among them.
    faders->setStems({files[1], files[2]}, 3);
    errorOf({3});
    faders->hear(2);
    errorOf({2});
    float before[2] = {}, steady = 0, changing = 0;
    int seen = 0;
    for (int block = 0; block < 300; block++) {
        const uint32_t choices[] = {2, 1, 0};
        if (block >= 100) faders->hear(choices[block / 7 % 3]);
        mix.read(heard.data(), count);
        for (int i = 0; i < count; i++) {
            const float now = heard[size_t(2 * i)];
            const float bend = std::fabs(now - 2 * before[1] + before[0]);
            if (seen++ > 1)
                (block < 100 ? steady : changing) = std::max(block < 100 ? steady : changing, bend);
            before[0] = before[1];
            before[1] = now;
        }
    }
    EXPECT_GT(changing, 0.5f * steady);
    EXPECT_LT(changing, 1.2f * steady);
}

// Made when they are shown, and again when what they rest on was made again; not while they are hidden.
class RehearseStems : public RehearsalWindow {
public:
    ScratchDirectory scratch;
    std::optional<WorkingDirectory> inside;

    void SetUp() override {
        RehearsalWindow::SetUp();
        linkDataSet(scratch.path);
        stems.emplace(scratch.path / "ready", scratch.path / "made.ogg");
        inside.emplace(scratch.path);
        fs::remove(::music);
        ASSERT_TRUE(lay({{"made.ogg", fs::path(::music).filename()}}, "data"));
        begin("", {});
        rehearsal->stems.build.command = {
            "sh", "-c",
            "echo >>runs; cat error 2>/dev/null && exit 1; mkdir -p build && rm -rf build/stems && "
            "cp -r ready build/stems"};
    }
    void TearDown() override {
        RehearsalWindow::TearDown();
        inside.reset();
    }
    size_t runs() const { return contentOf("runs").size(); }
    bool await(const std::function<bool()>& condition) {
        for (int i = 0; i < 3000 && !condition(); i++) {
            rehearsal->frame();
            usleep(10000);
        }
        return condition();
    }
    void makeData() {
        rehearsal->build.command = {"true"};
        rehearsal->build.request();
        ASSERT_TRUE(await([&] { return !rehearsal->build.requested && !rehearsal->build.running(); }));
    }
    std::optional<Stems3> stems;
};

TEST_F(RehearseStems, AreMadeWhenTheyAreShownAndAgainWithTheScore) {
    const auto faders = [&] { return rehearsal->stems.faders->state(); };
    key(SDLK_1);
    makeData();
    EXPECT_EQ(runs(), 0u);
    EXPECT_TRUE(faders().isTrack());
    key(SDLK_m);
    ASSERT_TRUE(await([&] { return rehearsal->desk.stems.size() == 3; }));
    EXPECT_EQ(runs(), 1u);
    EXPECT_TRUE(faders().isTrack());
    key(SDLK_1);
    EXPECT_EQ(faders().heard, 6u);
    ASSERT_TRUE(await([&] { return !rehearsal->desk.stems[2].waveform.empty(); }));
    EXPECT_TRUE(rehearsal->desk.stems[0].muted);

    const int edition = faders().edition;
    makeData();
    ASSERT_TRUE(await([&] { return faders().edition > edition; }));
    EXPECT_EQ(runs(), 2u);
    EXPECT_EQ(faders().heard, 6u);

    // A score that is broken leaves those before.
    std::ofstream("error") << "score.cpp:1: error: no such note\n";
    makeData();
    ASSERT_TRUE(await([&] { return !rehearsal->desk.problems.empty(); }));
    EXPECT_EQ(rehearsal->desk.problems.front(), "score.cpp:1: error: no such note");
    EXPECT_EQ(faders().heard, 6u);

    key(SDLK_m);
    EXPECT_TRUE(faders().isTrack());
    EXPECT_EQ(rehearsal->desk.stems.size(), 3u);
    rehearsal->frame();
    EXPECT_TRUE(rehearsal->desk.stems.empty());
    makeData();
    EXPECT_EQ(runs(), 3u);

    // Of a soundtrack that the score has not made there are none.
    fs::copy_file("ready/hum.ogg", ::music, fs::copy_options::overwrite_existing);
    key(SDLK_m);
    rehearsal->frame();
    EXPECT_TRUE(rehearsal->stems.problem.starts_with("no stems: data/KVX - Ondrevane2.ogg is yours"));
    EXPECT_TRUE(rehearsal->desk.stems.empty());
    EXPECT_TRUE(faders().isTrack());
    EXPECT_EQ(runs(), 3u);
}

}  // namespace
