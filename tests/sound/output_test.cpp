// Every output played for real: what comes out, when, and what the clock says of it.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <mutex>
#include <sstream>

#include "render/quit.h"
#include "sound/sound.h"
#include "tests/memory_file.h"
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
        const Reading reading{steadySeconds(), sound::position(stream)};
        if (steadySeconds() - reading.time < 0.001) return reading;
    }
}

void readFor(double seconds, const sound::Stream* stream, Readings& readings) {
    for (const double end = steadySeconds() + seconds; steadySeconds() < end; sleepSeconds(0.01))
        readings.push_back(read(stream));
}

// What all of them play; a player is told by who has made it.
std::string noisePath() {
    if (const char* made = std::getenv("PLAYER_FILE")) return made;
    static const MemoryFile file;
    static std::once_flag once;
    std::call_once(once, [] { writeVorbis(file.name, makeNoise(12, recordRate), recordRate, 2); });
    return file.name;
}

// Insists on an output that is there: on a busy machine its server may answer later than the mixer waits.
sound::Stream* startPlaying(int output, bool insist = true) {
    const std::string path = noisePath();
    sound::setOutput(output);
    for (int i = 0; i < 20 && insist && sound::output() != output; i++) sound::setOutput(output);
    sound::start(recordRate, 16);
    sound::Stream* stream = sound::openStream(path.c_str());
    sound::play(0, stream);
    return stream;
}

// Seeks, and expects the position there at once: it may have run on for as long as that took, and a quarter.
void seek(sound::Stream* stream, int target) {
    const double before = steadySeconds();
    sound::setPosition(stream, target);
    const int position = sound::position(stream);
    EXPECT_GE(position, target);
    EXPECT_LE(position, target + (steadySeconds() - before) * 1250);
}

// Plays, seeks and pauses, and reads the position all the while.
Readings playShow(int output) {
    Readings readings;
    sound::Stream* stream = startPlaying(output);
    readFor(1.2, stream, readings);
    seek(stream, 10000);
    readFor(1.2, stream, readings);
    sound::setPaused(0, true);
    const int standing = sound::position(stream);
    sleepSeconds(0.3);
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

bool leaps(const Reading& a, const Reading& b) {
    return std::abs(b.position - a.position) > 2000;
}

// While it plays, the position neither stands nor steps back nor leaps.
void expectSteady(const Readings& readings) {
    for (size_t i = 1; i < readings.size(); i++) {
        const double elapsed = (readings[i].time - readings[i - 1].time) * 1000;
        const int moved = readings[i].position - readings[i - 1].position;
        if (leaps(readings[i - 1], readings[i]) || elapsed > 200) continue;
        EXPECT_GE(moved, elapsed * 0.7 - 2) << "at " << readings[i].position;
        EXPECT_LE(moved, elapsed * 1.3 + 2) << "at " << readings[i].position;
    }
}

struct Verdict {
    std::string fault;    // "" where all is well
    bool heldUp = false;  // a player that is a moment late with its readings may be late with its sound
};

// What was heard at most times is the noise, and where the position says within 20 ms: from the first reading
// on and again after every leap of the position.
Verdict judge(const Readings& readings, auto& ear) {
    static const std::vector<float> reference = decodeVorbis(noisePath());
    constexpr long reach = recordRate / 50;
    if (readings.empty()) return {"nothing was played"};
    expectSteady(readings);
    const std::vector<float>& recording = ear.samples();
    Verdict verdict;
    for (auto first = readings.begin(); first != readings.end();) {
        const auto leap = std::adjacent_find(first, readings.end(), leaps);
        const auto end = leap == readings.end() ? leap : leap + 1;
        const auto late = std::adjacent_find(
            first, end, [](const Reading& a, const Reading& b) { return b.time - a.time > 0.03; });
        verdict.heldUp |= late != end;
        int sought = 0, found = 0;
        for (double next = 0; first != end; first++) {
            if (first->time < next) continue;
            next = first->time + 0.07;
            const long expected = std::lround(first->position * (recordRate / 1000.0));
            found += locate(recording, ear.frameAt(first->time), reference, expected, reach).has_value();
            sought++;
        }
        if (sought > 5 && 2 * found > sought) continue;
        verdict.fault += std::to_string(found) + " of " + std::to_string(sought) + " heard up to " +
                         std::to_string(std::prev(end)->position) + " ms; ";
    }
    return verdict;
}

// On a machine that is too busy to play without gaps, what was heard proves nothing: it is played again.
void expectHeard(const std::function<Verdict()>& play) {
    Verdict verdict{"", true};
    for (int i = 0; i < 20 && verdict.heldUp; i++) {
        verdict = play();
        if (verdict.fault.empty()) return;
    }
    ADD_FAILURE() << verdict.fault;
}

// This program again, as a player of its own.
struct Player {
    MemoryFile output, errors;
    pid_t process;

    Player(int wanted, const std::string& end, const std::string& variable = "PLAYER=") {
        process = startProcess(
            {"env", "PLAYER_OUTPUT=" + std::to_string(wanted), "PLAYER_END=" + end,
             "PLAYER_FILE=" + noisePath(), variable, std::filesystem::read_symlink("/proc/self/exe"),
             "--gtest_filter=Player.DISABLED_Plays", "--gtest_also_run_disabled_tests"},
            output.descriptor, errors.descriptor);
    }

    // It played to this output, ended with this status and had nothing to say.
    void expectEnd(int status, int played) {
        EXPECT_EQ(waitForProcess(process), status);
        EXPECT_NE(output.read().find("output " + std::to_string(played)), std::string::npos);
        EXPECT_EQ(errors.read(), "");
    }
    // What it printed of its position.
    Readings readings() const {
        std::istringstream lines(output.read());
        Readings all;
        for (std::string word; lines >> word;) {
            if (word != "reading") continue;
            all.emplace_back();
            lines >> all.back().time >> all.back().position;
        }
        return all;
    }
};

TEST(Player, DISABLED_Plays) {
    if (!std::getenv("PLAYER_OUTPUT")) GTEST_SKIP() << "started by the other tests";
    const int output = std::atoi(std::getenv("PLAYER_OUTPUT"));
    const std::string end = std::getenv("PLAYER_END");
    const auto print = [](const Readings& readings) {
        for (const Reading& reading : readings) printf("reading %.6f %d\n", reading.time, reading.position);
    };
    if (end == "show") return print(playShow(output));
    sound::Stream* stream = startPlaying(output, end != "replaced");
    printf("output %d\n", sound::output());
    if (end == "stall") {
        Readings readings;
        readFor(1, stream, readings);
        raise(SIGSTOP);
        readFor(2, stream, readings);
        print(readings);
        return;
    }
    sleepSeconds(0.3);
    if (end == "return") return;
    if (end == "quit") quit();
    if (end == "exit" || end == "replaced") exit(3);
    kill(atoi(std::getenv("PLAYER_SERVER")), SIGSTOP);
    if (end == "seek, frozen") sound::setPosition(stream, 5000);
    sleepSeconds(0.5);
    exit(3);
}

class AlsaOutput : public testing::TestWithParam<SoundServer::Kind> {};

TEST_P(AlsaOutput, IsHeardWhereThePositionIs) {
    expectHeard([] {
        const SoundServer server(GetParam());
        Recorder recorder(server);
        // In a process of its own: a server that is late at the end takes the mixer's thread with it.
        Player player(sound::Alsa, "show");
        EXPECT_EQ(waitForProcess(player.process), 0) << player.output.read();
        return judge(player.readings(), recorder);
    });
}

INSTANTIATE_TEST_SUITE_P(Servers, AlsaOutput, testing::Values(SoundServer::PulseAudio, SoundServer::PipeWire),
                         [](const auto& server) {
                             return server.param == SoundServer::PulseAudio ? "PulseAudio" : "PipeWire";
                         });

TEST(Output, ThePositionNeverStepsBack) {
    const SoundServer server;
    const AlsaFaultsEnd end;
    alsaFaults.delayJitter = recordRate / 10;
    alsaFaults.holdUp = 20;
    sound::Stream* stream = startPlaying(sound::Alsa);
    EXPECT_EQ(sound::output(), sound::Alsa);
    int steps = 0;
    for (int latest = 0; latest < 1000;) {
        const int position = sound::position(stream);
        steps += position < latest;
        latest = position;
    }
    EXPECT_EQ(steps, 0);
    sound::stop();
}

TEST(Output, ASpareHandleOfAnotherRateIsNotPlayed) {
    expectHeard([] {
        const SoundServer server;
        Recorder recorder(server);
        const AlsaFaultsEnd end;
        alsaFaults.laterRate = 48000;
        sound::Stream* stream = startPlaying(sound::Alsa);
        EXPECT_GE(alsaFaults.handles, 2);
        sleepSeconds(0.3);
        seek(stream, 5000);
        // One handle takes longer to start again than two that change places.
        sleepSeconds(1);
        Readings readings;
        readFor(0.8, stream, readings);
        sound::stop();
        return judge(readings, recorder);
    });
}

// The Open Sound System's device as the sound server stands in for it.
TEST(Output, OssIsHeardWhereThePositionIs) {
    if (std::filesystem::exists("/dev/dsp")) GTEST_SKIP() << "would play on the machine's own device";
    expectHeard([] {
        const SoundServer server;
        Recorder recorder(server);
        Player player(sound::Oss, "show", "LD_PRELOAD=/usr/$LIB/pulseaudio/libpulsedsp.so");
        EXPECT_EQ(waitForProcess(player.process), 0) << player.output.read();
        return judge(player.readings(), recorder);
    });
}

TEST(Output, AStallCostsItsOwnLengthAndNoMore) {
    expectHeard([] {
        const SoundServer server;
        Recorder recorder(server);
        Player player(sound::Alsa, "stall");
        int status = 0;
        waitpid(player.process, &status, WUNTRACED);
        EXPECT_TRUE(WIFSTOPPED(status)) << player.output.read();
        sleepSeconds(0.6);  // the device runs dry in a third of that
        kill(player.process, SIGCONT);
        EXPECT_EQ(waitForProcess(player.process), 0);

        Readings readings = player.readings();
        expectSteady(readings);
        const auto after =
            std::adjacent_find(readings.begin(), readings.end(),
                               [](const auto& a, const auto& b) { return b.time - a.time > 0.5; });
        if (after == readings.end()) return Verdict{"it was not stopped"};
        // It costs no more than the clock may lean, and the show does not fall behind from then on.
        const auto lag = [&](const Reading& from, const Reading& to) {
            return std::abs((to.time - from.time) * 1000 - (to.position - from.position));
        };
        const double stalled = lag(after[0], after[1]), since = lag(after[0], readings.back());
        // Half a second later at most it is heard again, where the position says.
        const double again = after[1].time + 0.5;
        std::erase_if(readings, [&](const Reading& reading) { return reading.time < again; });
        Verdict verdict = judge(readings, recorder);
        if (stalled > mostLeaning || since > 2 * mostLeaning)
            verdict.fault += std::to_string(stalled) + ", then " + std::to_string(since) + " ms behind";
        return verdict;
    });
}

TEST(Output, EsdIsHeardWhereThePositionIs) {
    expectHeard([] {
        // A clock this far off would show soon if the position did not follow it.
        EsdServer server(1.004);
        const Readings readings = playShow(sound::Esd);
        EXPECT_EQ(server.refused, 0);
        Verdict verdict = judge(readings, server);
        verdict.heldUp |= server.heldUp;
        return verdict;
    });
}

TEST(Output, TheShowOutlivesTheServer) {
    SoundServer server;
    sound::Stream* stream = startPlaying(sound::Alsa);
    ASSERT_EQ(sound::output(), sound::Alsa);
    sleepSeconds(0.3);
    server.kill();
    Readings readings;
    readFor(1, stream, readings);
    expectSteady(readings);
    EXPECT_NEAR(readings.back().position - readings.front().position,
                (readings.back().time - readings.front().time) * 1000, mostLeaning);
    EXPECT_EQ(sound::output(), sound::None);
    seek(stream, 7000);
    sound::stop();
}

TEST(Output, ManySeeksLeaveSoundAndPositionTogether) {
    expectHeard([] {
        const SoundServer server;
        Recorder recorder(server);
        sound::Stream* stream = startPlaying(sound::Alsa);
        for (int i = 0; i < 40; i++) {
            seek(stream, i * 7919 % 10000);
            sleepSeconds(0.05);
        }
        Readings readings;
        readFor(1.2, stream, readings);
        EXPECT_EQ(sound::output(), sound::Alsa);
        sound::stop();
        return judge(readings, recorder);
    });
}

TEST(Output, EveryWayOutEndsTheThread) {
    const SoundServer server;
    const std::string id = "PLAYER_SERVER=" + std::to_string(server.id());
    Player returns(sound::Alsa, "return"), quits(sound::Alsa, "quit"), exits(sound::Alsa, "exit"),
        silent(sound::None, "exit");
    returns.expectEnd(0, sound::Alsa);
    quits.expectEnd(0, sound::Alsa);
    exits.expectEnd(3, sound::Alsa);
    silent.expectEnd(3, sound::None);
    for (const char* end : {"frozen", "seek, frozen"}) {
        Player(sound::Alsa, end, id).expectEnd(3, sound::Alsa);
        kill(server.id(), SIGCONT);
    }
}

TEST(Output, WhatCantBeOpenedIsReplacedQuietly) {
    SoundServer server;
    kill(server.id(), SIGSTOP);
    Player(sound::Alsa, "replaced").expectEnd(3, sound::None);
    server.kill();
    Player alsa(sound::Alsa, "replaced"), oss(sound::Oss, "replaced"), other(17, "replaced");
    for (Player* player : {&alsa, &oss, &other}) player->expectEnd(3, sound::None);
}

}  // namespace
