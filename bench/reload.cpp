// From a save to its picture, while the show plays in the room: the 95th of a hundred, of code the last of
// ten, and from a key to a turned number's, beside the frame's time and against what the rehearsal promises.
#include <GL/glew.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "app/startup.h"
#include "bench/bench.h"
#include "render/demo.h"
#include "tests/scratch.h"
#include "tools/capture/stepped_show.h"
#include "tools/capture/window.h"
#include "tools/loading/loading.h"
#include "tools/process.h"
#include "tools/rehearse/rehearsal.h"
#include "tools/times.h"

namespace fs = std::filesystem;

namespace {

constexpr int saves = 100;
constexpr int moment = 150000;    // milliseconds
constexpr double promised = 250;  // milliseconds
constexpr int savesOfCode = 10;
constexpr double promisedOfCode = 3000;  // milliseconds

// Milliseconds of each of the saves, sorted.
std::vector<double> saveTimes(Rehearsal& rehearsal, const std::string& path, const std::string contents[2]) {
    std::vector<double> times;
    for (int i = 0; i < saves; i++) {
        // The same moment each time, and nothing under way.
        rehearsal.transport.setPosition(moment);
        rehearsal.frame();
        rehearsal.frame();
        std::ofstream(path + "~", std::ios::binary) << contents[i % 2];
        const double start = steadySeconds();
        fs::rename(path + "~", path);
        rehearsal.loaded = 0;
        while (rehearsal.loaded == 0) rehearsal.frame();
        glFinish();
        times.push_back((steadySeconds() - start) * 1000);
    }
    std::sort(times.begin(), times.end());
    return times;
}

// In a rehearsal of its own, which is held and has built its code once.
struct CodeRehearsal {
    pid_t process;
    std::string window;
    FILE* hands;  // an xdotool that waits for what to press: its own start is none of the desk's time

    explicit CodeRehearsal(const fs::path& root) {
        for (const char* part : {"effects", "script", "render", "geometry", "image", "tools/rehearse/live",
                                 "app/clock.h", "production/making/at_its_start"}) {
            fs::create_directories(fs::absolute(part).parent_path());
            fs::copy(root / part, part, fs::copy_options::recursive);
        }
        process = startProgram(
            {root / "build/rehearse", "112", "--held", "--numbers", "-nosound", "--state", "state"}, {},
            Group::ours);
        await("exact: 1");
        await("number: ");
        runProgram({"xdotool", "search", "--all", "--pid", std::to_string(process), "--name", "rehearsal"},
                   [&](const std::string& line) { window = line.substr(0, line.find('\n')); });
        hands = popen("xdotool - 2>/dev/null", "w");
        press("Down");
        await("chosen: ");
    }
    ~CodeRehearsal() {
        pclose(hands);
        kill(process, SIGTERM);
        waitForEnd(process);
    }
    void press(const std::string& key) const {
        fprintf(hands, "key --window %s %s\n", window.c_str(), key.c_str());
        fflush(hands);
    }
    // Milliseconds from the key that turns the first number of the list to its picture.
    double turn(const std::string& key) const {
        const auto turned = [] {
            const std::string text = contentOf("state");
            const size_t at = text.find("turned: ");
            return at == std::string::npos ? "" : text.substr(at, text.find('\n', at) - at);
        };
        const std::string before = turned();
        const double start = steadySeconds();
        press(key);
        while (turned() == before) usleep(1000);
        return (steadySeconds() - start) * 1000;
    }
    static void await(const std::string& words) {
        while (contentOf("state").find(words) == std::string::npos) usleep(1000);
    }
    // Milliseconds until it is shown, and the last to be.
    static double save(const std::string& file) {
        std::ofstream(file, std::ios::app) << "// saved\n";
        const double start = steadySeconds();
        const std::string told = "message: loaded " + file + "\n";
        while (!contentOf("state").ends_with(told)) usleep(1000);
        return (steadySeconds() - start) * 1000;
    }
};

}  // namespace

Figures benchReload(const std::string&) {
    const ScratchDirectory scratch;
    fs::copy("data", scratch.path / "data", fs::copy_options::recursive);
    const WorkingDirectory inside(scratch.path);

    Watch watch;
    watch.add("data");
    openCaptureWindow(0);
    Loading loading(true);
    initialiseDemo(loading);
    SteppedShow show(Transport::framesPerSecond, SteppedShow::Loaded{});
    Rehearsal rehearsal(show, loading, watch);
    rehearsal.transport.setPosition(moment);
    rehearsal.transport.goOn();
    double frame = 1e9;
    for (int i = 0; i < 30; i++) frame = std::min(frame, bestSeconds(1, [&] { rehearsal.frame(); }) * 1000);

    const std::string shader = contentOf("data/shaders/boom.fs");
    const std::string shaders[2] = {shader + "// saved\n", shader};
    const std::string pictures[2] = {contentOf("data/envmap2.png"), contentOf("data/envmap4.png")};
    const double shaderTime = saveTimes(rehearsal, "data/shaders/boom.fs", shaders)[saves * 95 / 100 - 1];
    const double pictureTime = saveTimes(rehearsal, "data/envmap4.png", pictures)[saves * 95 / 100 - 1];
    double effectTime = 0, timesTime = 0, numberTime = 0;
    {
        const CodeRehearsal code(inside.previous);
        std::vector<double> turns;
        for (int i = 0; i < saves; i++) turns.push_back(code.turn(i % 2 ? "Left" : "Right"));
        std::sort(turns.begin(), turns.end());
        numberTime = turns[saves * 95 / 100 - 1];
        for (int i = 0; i < savesOfCode; i++)
            effectTime = std::max(effectTime, code.save(i % 2 ? "effects/robo.cpp" : "effects/probes.cpp"));
        timesTime = code.save("script/show_times.h");
    }
    return {{"a frame meanwhile", frame, "ms"},
            {"shader, save to picture", shaderTime, "ms", 0, Goal::valueAtMost, promised},
            {"picture, save to picture", pictureTime, "ms", 0, Goal::valueAtMost, promised},
            {"number, key to picture", numberTime, "ms", 0, Goal::valueAtMost, promised},
            {"effect, save to picture", effectTime, "ms", 0, Goal::valueAtMost, promisedOfCode},
            {"times, save to picture", timesTime, "ms", 0, Goal::valueAtMost, promisedOfCode}};
}
