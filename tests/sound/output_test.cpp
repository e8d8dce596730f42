// Every output played for real: what comes out, when, and what the clock says of it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "render/quit.h"
#include "sound/sound.h"
#include "tests/scratch.h"
#include "tests/sound/alsa_faults.h"
#include "tests/sound/esd_server.h"
#include "tests/sound/signal.h"
#include "tests/sound/sound_server.h"

namespace {

struct Reading {
    double time;   // seconds
    int position;  // ms
};
using Readings = std::vector<Reading>;

// Time and position of one moment: what was interrupted between the two is read again.
Reading read(const sound::Stream* stream) {
    for (;;) {
        const Reading reading{secondsNow(), sound::position(stream)};
        if (secondsNow() - reading.time < 0.001) return reading;
    }
}

void readFor(double seconds, const sound::Stream* stream, Readings& readings) {
    for (const double end = secondsNow() + seconds; secondsNow() < end; sleepSeconds(0.01))
        readings.push_back(read(stream));
}

sound::Stream* startPlaying(int output, const std::string& path) {
    sound::setOutput(output);
    sound::start(44100, 16);
    sound::Stream* stream = sound::openStream(path.c_str());
    sound::play(0, stream);
    return stream;
}

// Seeks, and expects the position there at once: it may have run on for as long as that took, and a quarter.
void seek(sound::Stream* stream, int target) {
    const double before = secondsNow();
    sound::setPosition(stream, target);
    const int position = sound::position(stream);
    EXPECT_GE(position, target);
    EXPECT_LE(position, target + (secondsNow() - before) * 1250);
}

// Plays, seeks and pauses, and reads the position all the while.
Readings playShow(int output, const std::string& path) {
    Readings readings;
    sound::Stream* stream = startPlaying(output, path);
    readFor(1.5, stream, readings);
    seek(stream, 10000);
    readFor(1.2, stream, readings);
    sound::setPaused(0, true);
    const int standing = sound::position(stream);
    sleepSeconds(0.4);
    EXPECT_EQ(sound::position(stream), standing);
    sound::setPosition(stream, 5000);
    EXPECT_EQ(sound::position(stream), 5000);
    sound::setPaused(0, false);
    readFor(1.2, stream, readings);
    sound::stop();
    return readings;
}

// The clock leans towards a device by no more than 75 ms at a time, and both readings are of whole
// milliseconds.
constexpr double mostLeaning = 77;

// While it plays, the position neither stands nor steps back nor leaps.
void expectSteady(const Readings& readings, double tolerance = 0.3) {
    for (size_t i = 1; i < readings.size(); i++) {
        const double elapsed = (readings[i].time - readings[i - 1].time) * 1000;
        const int moved = readings[i].position - readings[i - 1].position;
        if (std::abs(moved) > 2000 || elapsed > 200) continue;
        EXPECT_GE(moved, elapsed * (1 - tolerance) - 2) << "at " << readings[i].position;
        EXPECT_LE(moved, elapsed * (1 + tolerance) + 2) << "at " << readings[i].position;
    }
}

// What was heard at the time of most readings is the stream, and where the position says within 20 ms: from
// the first reading on and again after every leap of the position.
void expectHeard(const Readings& readings, const std::vector<float>& recording, auto frameAt,
                 const std::vector<float>& reference) {
    for (auto first = readings.begin(); first != readings.end();) {
        const auto leap = std::adjacent_find(first, readings.end(), [](const Reading& a, const Reading& b) {
            return std::abs(b.position - a.position) > 2000;
        });
        const auto end = leap == readings.end() ? leap : leap + 1;
        std::vector<double> differences;
        int sought = 0;
        for (; end - first > 10; sought++) {
            first += 10;
            const long expected = long(first->position * (recordRate / 1000.0));
            if (const auto found = locate(recording, frameAt(first->time), reference, expected, 6000))
                differences.push_back(std::abs(double(*found - expected)) * 1000 / recordRate);
        }
        ASSERT_GT(sought, 5);
        ASSERT_GT(int(differences.size()), sought * 6 / 10) << "up to " << first->position;
        std::sort(differences.begin(), differences.end());
        EXPECT_LT(differences[differences.size() / 2], 20) << "up to " << first->position;
        first = end;
    }
}

std::string noiseFile() {
    static const std::string path = [] {
        const std::string made = scratchPath("noise.ogg");
        writeVorbis(made, makeNoise(15, recordRate), recordRate, 2);
        return made;
    }();
    return path;
}

// The null sink sleeps in steps of 2 s until something wants to hear it at once.
void wakeSink() {
    sleepSeconds(2.2);
}

// This program again, as a player of its own.
struct Player {
    std::string output = scratchPath("player.out"), errors = scratchPath("player.err");
    pid_t process = -1;

    Player(int wanted, const std::string& end, Environment& environment) {
        environment.set("PLAYER_OUTPUT", std::to_string(wanted));
        environment.set("PLAYER_END", end);
        environment.set("PLAYER_FILE", noiseFile());
        const int outputFile = open(output.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600);
        const int errorFile = open(errors.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600);
        process = startProcess({std::filesystem::read_symlink("/proc/self/exe"),
                                "--gtest_filter=Player.DISABLED_Plays", "--gtest_also_run_disabled_tests"},
                               outputFile, errorFile);
        close(outputFile);
        close(errorFile);
    }
};

// What the player printed of its position.
Readings readingsOf(const Player& player) {
    std::ifstream lines(player.output);
    Readings readings;
    for (std::string word; lines >> word;) {
        if (word != "reading") continue;
        readings.emplace_back();
        lines >> readings.back().time >> readings.back().position;
    }
    return readings;
}

TEST(Player, DISABLED_Plays) {
    if (!std::getenv("PLAYER_OUTPUT")) GTEST_SKIP() << "started by the other tests";
    const int output = std::atoi(std::getenv("PLAYER_OUTPUT"));
    const std::string end = std::getenv("PLAYER_END"), file = std::getenv("PLAYER_FILE");
    const auto print = [](const Readings& readings) {
        for (const Reading& reading : readings) printf("reading %.6f %d\n", reading.time, reading.position);
    };
    if (end == "show") {
        print(playShow(output, file));
        return;
    }
    sound::Stream* stream = startPlaying(output, file);
    if (end == "stall") {
        Readings readings;
        readFor(1.5, stream, readings);
        raise(SIGSTOP);
        readFor(2.5, stream, readings);
        print(readings);
        return;
    }
    printf("output %d\n", sound::output());
    sleepSeconds(0.5);
    if (end == "return") return;
    if (end == "quit") quit();
    if (end == "exit") exit(3);
    kill(atoi(std::getenv("PLAYER_SERVER")), SIGSTOP);
    if (end == "seek, frozen") sound::setPosition(stream, 5000);
    sleepSeconds(1.5);
    exit(3);
}

class AlsaOutput : public testing::TestWithParam<SoundServer::Kind> {};

TEST_P(AlsaOutput, IsHeardWhereThePositionIs) {
    const std::vector<float> reference = decodeVorbis(noiseFile());
    SoundServer server(GetParam());
    if (!server.isRunning()) GTEST_SKIP() << "no such server here; ./test fetches it";
    Recorder recorder(server);
    wakeSink();
    const Readings readings = playShow(sound::Alsa, noiseFile());
    expectSteady(readings);
    const auto& recording = recorder.samples();
    expectHeard(
        readings, recording, [&](double time) { return recorder.frameAt(time); }, reference);
}

INSTANTIATE_TEST_SUITE_P(Servers, AlsaOutput, testing::Values(SoundServer::PulseAudio, SoundServer::PipeWire),
                         [](const auto& server) {
                             return server.param == SoundServer::PulseAudio ? "PulseAudio" : "PipeWire";
                         });

TEST(Output, ThePositionNeverStepsBack) {
    SoundServer server;
    const AlsaFaultsEnd end;
    alsaFaults.delayJitter = recordRate / 10;
    alsaFaults.holdUp = 20;
    sound::Stream* stream = startPlaying(sound::Alsa, noiseFile());
    int steps = 0;
    for (int latest = 0; latest < 2000;) {
        const int position = sound::position(stream);
        steps += position < latest;
        latest = position;
    }
    EXPECT_EQ(sound::output(), sound::Alsa);
    EXPECT_EQ(steps, 0);
    sound::stop();
}

TEST(Output, ASpareHandleOfAnotherRateIsNotPlayed) {
    const std::vector<float> reference = decodeVorbis(noiseFile());
    SoundServer server;
    Recorder recorder(server);
    wakeSink();
    const AlsaFaultsEnd end;
    alsaFaults.laterRate = 48000;
    sound::Stream* stream = startPlaying(sound::Alsa, noiseFile());
    EXPECT_EQ(alsaFaults.handles, 2);
    sleepSeconds(0.5);
    seek(stream, 5000);
    // One handle takes longer to start again than two that change places.
    sleepSeconds(1);
    Readings readings;
    readFor(1, stream, readings);
    sound::stop();
    const auto& recording = recorder.samples();
    expectHeard(
        readings, recording, [&](double time) { return recorder.frameAt(time); }, reference);
}

// The Open Sound System's device as the sound server stands in for it.
TEST(Output, OssIsHeardWhereThePositionIs) {
    if (std::filesystem::exists("/dev/dsp")) GTEST_SKIP() << "would play on the machine's own device";
    const std::vector<float> reference = decodeVorbis(noiseFile());
    SoundServer server;
    Recorder recorder(server);
    wakeSink();
    Environment environment;
    environment.set("LD_PRELOAD", "/usr/$LIB/pulseaudio/libpulsedsp.so");
    Player player(sound::Oss, "show", environment);
    ASSERT_EQ(waitForProcess(player.process), 0) << contentOf(player.output);
    const Readings readings = readingsOf(player);
    expectSteady(readings);
    const auto& recording = recorder.samples();
    expectHeard(
        readings, recording, [&](double time) { return recorder.frameAt(time); }, reference);
}

TEST(Output, AStallCostsItsOwnLengthAndNoMore) {
    const std::vector<float> reference = decodeVorbis(noiseFile());
    SoundServer server;
    Recorder recorder(server);
    wakeSink();
    Environment environment;
    Player player(sound::Alsa, "stall", environment);
    int status = 0;
    ASSERT_EQ(waitpid(player.process, &status, WUNTRACED), player.process);
    ASSERT_TRUE(WIFSTOPPED(status)) << contentOf(player.output);
    // The device runs dry in a third of that.
    sleepSeconds(0.6);
    kill(player.process, SIGCONT);
    ASSERT_EQ(waitForProcess(player.process), 0);

    Readings readings = readingsOf(player);
    expectSteady(readings);
    const auto after = std::adjacent_find(readings.begin(), readings.end(),
                                          [](const auto& a, const auto& b) { return b.time - a.time > 0.5; });
    ASSERT_NE(after, readings.end());
    const double elapsed = (after[1].time - after[0].time) * 1000;
    EXPECT_NEAR(after[1].position - after[0].position, elapsed, mostLeaning);
    const double sinceThen = (readings.back().time - after->time) * 1000;
    EXPECT_NEAR(readings.back().position - after->position, sinceThen, 2 * mostLeaning)
        << "the show fell behind";
    // Half a second later at most it is heard again, where the position says.
    readings.erase(readings.begin(), after + 1);
    std::erase_if(readings, [&, resumed = readings.front().time](const Reading& reading) {
        return reading.time < resumed + 0.5;
    });
    const auto& recording = recorder.samples();
    expectHeard(
        readings, recording, [&](double time) { return recorder.frameAt(time); }, reference);
}

TEST(Output, EsdIsHeardWhereThePositionIs) {
    const std::vector<float> reference = decodeVorbis(noiseFile());
    // A clock this far off would show soon if the position did not follow it.
    EsdServer server(false, 1.004);
    ASSERT_TRUE(server.isListening());
    sound::setOutput(sound::Esd);
    ASSERT_EQ(sound::output(), sound::Esd);
    const Readings readings = playShow(sound::Esd, noiseFile());
    expectSteady(readings);
    const auto& heard = server.samples();
    EXPECT_EQ(server.refused, 0);
    expectHeard(
        readings, heard, [&](double time) { return server.frameAt(time); }, reference);
}

TEST(Output, EsdIsFoundByTcpToo) {
    const std::vector<float> reference = decodeVorbis(noiseFile());
    EsdServer server(true, 1);
    ASSERT_TRUE(server.isListening());
    Readings readings;
    readFor(1.5, startPlaying(sound::Esd, noiseFile()), readings);
    EXPECT_EQ(sound::output(), sound::Esd);
    sound::stop();
    const auto& heard = server.samples();
    expectHeard(
        readings, heard, [&](double time) { return server.frameAt(time); }, reference);
}

TEST(Output, NoneRunsAtRealSpeed) {
    const std::string path = scratchPath("short.ogg");
    writeVorbis(path, makeTone(2, recordRate, 441), recordRate, 2);
    const double before = secondsNow();
    sound::Stream* stream = startPlaying(sound::None, path);
    const double after = secondsNow();
    EXPECT_EQ(sound::output(), sound::None);
    // The second half lies past the stream's end.
    for (int i = 0; i < 40; i++) {
        const double earliest = (secondsNow() - after) * 1000;
        const int position = sound::position(stream);
        EXPECT_GE(position, std::floor(earliest) - 1);
        EXPECT_LE(position, (secondsNow() - before) * 1000);
        sleepSeconds(0.05);
    }
    const double sought = secondsNow();
    sound::setPosition(stream, -5);
    const int position = sound::position(stream);
    EXPECT_LE(position, (secondsNow() - sought) * 1000);
    sound::setPosition(stream, 3600000);
    EXPECT_GE(sound::position(stream), 3600000);
    sound::stop();
}

TEST(Output, AStreamStandsUntilItPlays) {
    sound::Stream* first = startPlaying(sound::None, noiseFile());
    sound::Stream* second = sound::openStream(noiseFile().c_str());
    sound::setPosition(second, 4000);
    sound::play(16, second);
    sound::play(-1, second);
    sound::play(3, nullptr);
    sound::setPaused(99, true);
    sleepSeconds(0.05);
    EXPECT_EQ(sound::position(second), 4000);
    // It takes the place of the first one, which stands from then on.
    sound::play(0, second);
    const int left = sound::position(first);
    sleepSeconds(0.05);
    EXPECT_GE(left, 50);
    EXPECT_EQ(sound::position(first), left);
    EXPECT_GE(sound::position(second), 4050);

    sound::Stream* none = sound::openStream("no such file");
    EXPECT_EQ(none, nullptr);
    sound::setPosition(none, 1000);
    EXPECT_EQ(sound::position(none), 0);
    sound::stop();
}

TEST(Output, TheSpectrumIsThatOfWhatIsHeard) {
    const std::string path = scratchPath("bands.ogg");
    // Band 64 for two seconds, then band 128: well before the device would have played what is written.
    std::vector<float> tones = makeTone(2, recordRate, 64.0 * recordRate / 1024);
    const std::vector<float> second = makeTone(2, recordRate, 128.0 * recordRate / 1024);
    tones.insert(tones.end(), second.begin(), second.end());
    writeVorbis(path, tones, recordRate, 2);
    sound::Stream* stream = startPlaying(sound::None, path);
    EXPECT_EQ(sound::spectrum()[64], 0);
    sound::setSpectrumActive(true);
    // On a busy machine every look at one of the tones may be interrupted: it is played again then.
    int firstHeard = 0, secondHeard = 0;
    while (firstHeard == 0 || secondHeard == 0) {
        sound::setPosition(stream, 1500);
        while (sound::position(stream) < 2300) {
            const int before = sound::position(stream);
            const float* bands = sound::spectrum();
            const bool interrupted = sound::position(stream) - before > 5;
            const long loudest = std::max_element(bands, bands + 512) - bands;
            // 23 ms are heard together.
            if (!interrupted && before > 1800 && before < 1990) {
                EXPECT_EQ(loudest, 64) << before;
                EXPECT_NEAR(bands[64], 0.5, 0.05);
                EXPECT_LT(bands[70], 0.01);
                firstHeard++;
            }
            if (!interrupted && before > 2035) {
                EXPECT_EQ(loudest, 128) << before;
                secondHeard++;
            }
            sleepSeconds(0.005);
        }
    }
    sound::setSpectrumActive(false);
    EXPECT_EQ(*std::max_element(sound::spectrum(), sound::spectrum() + 512), 0);
    sound::stop();
}

TEST(Output, TheShowOutlivesTheServer) {
    SoundServer server;
    sound::Stream* stream = startPlaying(sound::Alsa, noiseFile());
    ASSERT_EQ(sound::output(), sound::Alsa);
    sleepSeconds(0.5);
    server.kill();
    Readings readings;
    readFor(1.5, stream, readings);
    expectSteady(readings);
    EXPECT_NEAR(readings.back().position - readings.front().position,
                (readings.back().time - readings.front().time) * 1000, mostLeaning);
    EXPECT_EQ(sound::output(), sound::None);
    seek(stream, 7000);
    sound::stop();
}

// What was replaced by silence stays silent: a server that comes late must not disturb the clock.
TEST(Output, AServerThatComesLateChangesNothing) {
    Environment environment;
    environment.set("HOME", scratchPath("nobody"));
    environment.set("XDG_RUNTIME_DIR", scratchPath("nowhere"));
    sound::Stream* stream = startPlaying(sound::Alsa, noiseFile());
    const SoundServer server;
    Readings readings;
    readFor(1, stream, readings);
    expectSteady(readings);
    EXPECT_EQ(sound::output(), sound::None);
    sound::stop();
}

TEST(Output, AHundredSeeksInTenSecondsLeaveSoundAndPositionTogether) {
    const std::vector<float> reference = decodeVorbis(noiseFile());
    SoundServer server;
    Recorder recorder(server);
    wakeSink();
    sound::Stream* stream = startPlaying(sound::Alsa, noiseFile());
    for (int i = 0; i < 100; i++) {
        seek(stream, i * 7919 % 10000);
        sleepSeconds(0.1);
    }
    Readings readings;
    readFor(2, stream, readings);
    EXPECT_EQ(sound::output(), sound::Alsa);
    sound::stop();
    expectSteady(readings);
    const auto& recording = recorder.samples();
    expectHeard(
        readings, recording, [&](double time) { return recorder.frameAt(time); }, reference);
}

TEST(Output, EveryWayOutEndsTheThread) {
    SoundServer server;
    struct Way {
        const char* end;
        int output;
        int status;
    };
    const Way ways[] = {{"return", sound::Alsa, 0}, {"quit", sound::Alsa, 0},
                        {"exit", sound::Alsa, 3},   {"exit", sound::None, 3},
                        {"frozen", sound::Alsa, 3}, {"seek, frozen", sound::Alsa, 3}};
    for (const Way& way : ways) {
        Environment environment;
        environment.set("PLAYER_SERVER", std::to_string(server.id()));
        Player player(way.output, way.end, environment);
        EXPECT_EQ(waitForProcess(player.process), way.status) << way.end;
        EXPECT_NE(contentOf(player.output).find("output " + std::to_string(way.output)), std::string::npos);
        EXPECT_EQ(contentOf(player.errors), "") << way.end;
        kill(server.id(), SIGCONT);
    }
}

TEST(Output, AServerThatDoesNotAnswerCantBeOpened) {
    SoundServer server;
    kill(server.id(), SIGSTOP);
    Environment environment;
    Player player(sound::Alsa, "exit", environment);
    EXPECT_EQ(waitForProcess(player.process), 3);
    EXPECT_NE(contentOf(player.output).find("output 0"), std::string::npos);
    EXPECT_EQ(contentOf(player.errors), "");
}

TEST(Output, WhatCantBeOpenedIsReplacedQuietly) {
    SoundServer server;
    server.kill();
    for (const int output : {int(sound::Alsa), int(sound::Oss), 17}) {
        Environment environment;
        Player player(output, "exit", environment);
        EXPECT_EQ(waitForProcess(player.process), 3);
        EXPECT_NE(contentOf(player.output).find("output 0"), std::string::npos) << output;
        EXPECT_EQ(contentOf(player.errors), "");
    }
}

}  // namespace
