// The rehearsal and `look` as their users meet them: processes with a window, keys and a mouse.
#include <algorithm>
#include <sstream>
#include <utility>

#include "image/image.h"
#include "tests/tools/rehearse_program.h"
#include "tools/rehearse/desk.h"

namespace {

TEST_F(RehearseProgram, KeysAndMouseMoveTheMusic) {
    rehearse({"80", "--held", "-nosound"});
    act("key --window %1 w space");
    EXPECT_TRUE(await([&] {
        return state("Q") == "1" && state("message") == "Beat 80.00 delta 80.00 bpm 1";
    })) << desk();
    act("mousemove --window %1 " + std::to_string(xAt(100)) + " 540 click 1");
    EXPECT_TRUE(await([&] { return std::abs(time() - 100000) < 400; })) << time();
    EXPECT_EQ(state("segment"), "robot");
    const auto at = [](double seconds) { return std::to_string(xAt(seconds)) + " 540 "; };
    act("keydown Shift mousemove --window %1 " + at(10) + "mousedown 1 mousemove --window %1 " + at(12) +
        "sleep 0.3 mouseup 1 keyup Shift");
    int from = 0, to = 0;
    EXPECT_TRUE(await([&] { return std::istringstream(state("loop")) >> from >> to && to - from > 1000; }));
    EXPECT_NEAR(from, 10000, 400);
    EXPECT_NEAR(to, 12000, 400);
    act("key --window %1 l Escape");
    act("key --window %1 Escape");
    EXPECT_EQ(waitForProcess(process), 0);
    process = -1;
}

TEST_F(RehearseProgram, ItBeginsWithWhateverIsThere) {
    const auto damage = [&](const char* file, const char* content) {
        std::filesystem::remove(scratch.path / file);
        scratch.write(file, content);
    };
    damage("data/spot.png", "no picture");
    damage("data/loading.jpg", "no picture either");
    damage("data/ring.AML", "no model");
    damage(music, "no music");
    damage("data/shaders/boom.fs", "void main() { gl_FragColor = colour; }\n");
    rehearse({"50", "--held", "-nosound"});
    for (const char* problem : {"data/spot.png: ", "data/loading.jpg: ", "data/ring.AML: ",
                                "data/KVX - Ondrevane2.ogg: ", "data/shaders/boom.fs:1:"})
        EXPECT_TRUE(says(std::string("problem: ") + problem)) << desk();

    // The same mistake once more is still one; a shader is good again when its program is.
    damage("data/shaders/boom.fs", "void main() { gl_FragColor = colour; }\n");
    damage("data/spot.png", contentOf("data/spot.png").c_str());
    std::filesystem::copy_file("data/loading.jpg", scratch.file("data/loading.jpg"),
                               std::filesystem::copy_options::overwrite_existing);
    EXPECT_TRUE(says("good again: data/loading.jpg"));
    EXPECT_NE(desk().find("problem: data/shaders/boom.fs:1:"), std::string::npos);
    EXPECT_EQ(desk().find("good again: data/shaders"), std::string::npos);
}

// Whatever is saved while it starts is seen, and ends nothing.
TEST_F(RehearseProgram, WhatIsSavedDuringTheStartIsSeen) {
    for (const double moment : {0.0, 0.15, 0.4, 0.8}) {
        std::filesystem::remove(scratch.file("state"));
        process = startProcess(
            {"env", "-C", scratch.path, REHEARSE_PROGRAM, "--state", "state", "50", "--held", "-nosound"});
        sleepSeconds(moment);
        for (const char* file : {"data/ring.AML", "data/spot.png"}) {
            scratch.write("half", contentOf(file).substr(0, 5000));
            std::filesystem::rename(scratch.file("half"), scratch.path / file);
        }
        EXPECT_TRUE(says("problem: data/ring.AML: the file ends too early")) << moment;
        EXPECT_TRUE(says("problem: data/spot.png: ")) << moment;
        EXPECT_TRUE(runs()) << moment;
        endProcess(process, SIGTERM);
        for (const char* file : {"data/ring.AML", "data/spot.png"})
            std::filesystem::copy_file(file, scratch.path / file,
                                       std::filesystem::copy_options::overwrite_existing);
    }
    process = -1;
}

TEST_F(RehearseProgram, APictureThatWasNotWrittenIsAFailure) {
    for (const double moment : {0.3, 0.6, 1.0}) {
        process = startProcess(
            {"env", "-C", scratch.path, REHEARSE_PROGRAM, "100", "--picture", "p.png", "-nosound"});
        sleepSeconds(moment);
        send(SIGTERM);
        // The signal may also come between the picture and the end.
        const bool succeeded = waitForProcess(process) == 0;
        EXPECT_TRUE(std::filesystem::remove(scratch.file("p.png")) || !succeeded) << moment;
    }
    process = -1;
}

// With sources of its own, drawn, so that frames can be compared.
class RehearseCode : public RehearseProgram {
public:
    void SetUp() override {
        RehearseProgram::SetUp();
        environment.set("LP_NO_RAST", "0");
        environment.set("GALLIUM_NOOP", "0");
        for (const char* folder : {"effects", "script", "render", "geometry", "image", "tools/rehearse/live"})
            copy(folder);
        for (const char* file : {"app/clock.h", "production/making/at_its_start",
                                 "production/making/see_moved", "tools/whole_file.cpp", "tools/whole_file.h"})
            copy(file);
        // As an editor marks what it has not saved yet.
        std::filesystem::create_symlink("author@host:1", scratch.path / "effects/.#robo.cpp");
        std::filesystem::create_directories(scratch.path / "w:/shots");
    }
    // With their times: what is younger than the program would be loaded before anything is saved.
    void copy(const std::string& path) const {
        ASSERT_EQ(std::system(("cp -pr --parents " + path + " " + scratch.path.string()).c_str()), 0);
    }
    // It takes a compiler's time, on a machine that may have other work: as long as the held desk changes.
    bool await(const std::function<bool()>& condition) const override {
        const auto shown = [&] {
            const std::string text = desk();
            return text.substr(std::min(text.find('\n'), text.size()));  // behind the time that is on
        };
        for (std::string before; !RehearseProgram::await(condition); before = shown())
            if (!runs() || (shown() == before && state("working").empty())) return false;
        return true;
    }
    // Of what is held, without the desk.
    std::string shot() const {
        EXPECT_TRUE(await([&] { return state("exact") == "1"; }));
        const std::filesystem::path shots = scratch.path / "w:/shots";
        act("key --window %1 F11");
        EXPECT_TRUE(await([&] { return !std::filesystem::is_empty(shots); }));
        const std::filesystem::path file = std::filesystem::directory_iterator(shots)->path();
        const std::string picture = contentOf(file);
        std::filesystem::remove(file);
        return picture;
    }
    // The source with `text` in the place of `place`.
    void save(const std::string& file, const std::string& place, const std::string& text) const {
        std::string content = contentOf(file);
        ASSERT_NE(content.find(place), std::string::npos);
        scratch.write(file, content.replace(content.find(place), place.size(), text));
    }
    // By keys, in the list, where it must be. Returns its place.
    std::string choose(const std::string& file, const std::string& name) const {
        const auto isChosen = [&] {
            const std::string chosen = state("chosen");
            return chosen.starts_with(file + ":") && chosen.ends_with(": " + name);
        };
        EXPECT_TRUE(says("number: " + file)) << desk();
        for (const char* key : {"Down", "Up"})
            for (std::string last = "none"; !isChosen() && state("chosen") != last && !HasFailure();) {
                last = state("chosen");
                act(std::string("key --window %1 ") + key);
            }
        EXPECT_TRUE(isChosen()) << state("chosen");
        return state("chosen");
    }

private:
    Environment environment;
};

// Of the heap, whose boxes are in mid-turn; what goes wrong leaves the music where it was. At first and after
// a new start what is linked is that before.
TEST_F(RehearseCode, TakesItsPlaceOrGivesWayToThatBeforeIt) {
    const std::string heap = "effects/cube_heap.cpp", draw = "void CubeHeap::draw() {\n";
    rehearse({"70", "--held", "-nosound"});
    act("key --window %1 l");
    ASSERT_TRUE(await([&] { return !state("loop").empty(); }));
    const std::string loop = state("loop");
    const std::string film = shot();
    const std::string source = contentOf(heap);
    const long behind = long(source.find(draw) + draw.size());
    const std::string line = std::to_string(1 + std::count(source.begin(), source.begin() + behind, '\n'));
    const std::string loops = "    for (volatile int i = 0;;) i = 1;\n",
                      crashes = "    *static_cast<volatile int*>(nullptr) = 1;\n";
    const std::string looped = ":" + line + ": the new code did not return within 2 s",
                      crashed = ": the new code crashed: ";
    const auto givesWay = [&](const std::string& text, const std::string& told, bool toFilm) {
        save(heap, draw, text);
        ASSERT_TRUE(says("problem: " + heap + told)) << desk();
        EXPECT_EQ(time(), 70000);
        EXPECT_EQ(state("held"), "1");
        EXPECT_EQ(state("loop"), loop);
        EXPECT_EQ(shot() == film, toFilm);
        EXPECT_EQ(contentOf("/proc/" + std::to_string(process) + "/comm"), "rehearse\n");
    };
    const std::string atItsStart = "[[gnu::constructor]] void start() {\n" + crashes + "}\n" + draw;
    givesWay(draw + loops, looped, true);
    givesWay(atItsStart, crashed, true);
    givesWay(draw + loops, looped, true);
    save(heap, draw, draw + "\n");
    ASSERT_TRUE(says("message: loaded " + heap)) << desk();
    EXPECT_TRUE(shot() == film);
    save(heap, draw, draw + "    glTranslatef(0, 10, 0);\n");
    ASSERT_TRUE(await([&] { return shot() != film; }));

    save(heap, draw, draw + "    y = 1;\n");
    EXPECT_TRUE(says("problem: " + heap + ":" + line + ":5: error: "));
    // The code before draws it higher.
    givesWay(atItsStart, crashed, false);
    givesWay(draw + crashes, ":" + line + crashed, false);

    // What is mended before the new start is seen by it.
    const auto libraries = [&] {
        using Files = std::filesystem::directory_iterator;
        return std::count_if(Files(scratch.path / "build/live"), Files(), [](const auto& file) {
            return file.path().filename().string().starts_with("loaded-");
        });
    };
    const auto before = libraries();
    save(heap, draw, draw + loops);
    ASSERT_TRUE(await([&] { return libraries() > before; }));
    save(heap, draw, draw);
    ASSERT_TRUE(await([&] { return state("problem").empty() && shot() == film; }));
    EXPECT_EQ(state("problem"), "");

    save("script/show_times.h", std::to_string(showtime::heap.ms), "60000");
    EXPECT_TRUE(await([&] { return state("bounds").starts_with("1:00.000 - "); }));
    EXPECT_EQ(time(), 70000);
}

// A key that is renamed, a path without a file, and then two keys of one file, which is saved.
TEST_F(RehearseCode, ItsTablesAreLoadedAsTheyAreNow) {
    const std::string table = "script/resources.cpp", picture = "data/shiptex.png",
                      model = "data/laatikko.AML", otherPicture = "data/star2.png",
                      otherModel = "data/block.AML";
    const std::string source = contentOf(table), content = contentOf(picture), box = contentOf(model);
    const auto write = [&](std::initializer_list<std::pair<std::string, std::string>> changes) {
        std::string changed = source;
        for (const auto& [from, to] : changes)
            for (size_t at; (at = changed.find(from)) != std::string::npos;)
                changed.replace(at, from.size(), to);
        scratch.write(table, changed);
    };
    rehearse({"70", "--held", "-nosound"});
    const std::string film = shot();
    write({{"\"laatikko\"", "\"box\""}, {picture, "data/missing.png"}});
    ASSERT_TRUE(says("problem: data/missing.png: No such file or directory"));
    EXPECT_TRUE(await([&] { return shot() == film; }));
    write({{picture, otherPicture}, {model, otherModel}});
    ASSERT_TRUE(await([&] { return state("problem").empty() && shot() != film; }));
    for (const auto& [file, bytes] : {std::pair{otherPicture, content}, {otherModel, box}}) {
        scratch.write("saved", bytes);
        std::filesystem::rename(scratch.file("saved"), scratch.path / file);
    }
    EXPECT_TRUE(await([&] { return shot() == film; }));
}

// Of the heap, whose boxes are in mid-turn, by what the file has before and after.
TEST_F(RehearseCode, ANumberIsTurnedAndWrittenBack) {
    const std::string heap = "effects/cube_heap.cpp", source = contentOf(heap);
    rehearse({"70.1", "--held", "--numbers", "-nosound"});
    const std::string film = shot();
    const std::string place = choose(heap, "turnSpeed");
    act("key --window %1 shift+Right");
    ASSERT_TRUE(await([&] { return state("turned") == place + " = 580 (480)"; })) << state("turned");
    const std::string turned = shot();
    EXPECT_TRUE(turned != film);
    act("key --window %1 c");
    EXPECT_TRUE(shot() == film);
    act("key --window %1 c");
    EXPECT_TRUE(shot() == turned);
    act("key --window %1 ctrl+z");
    EXPECT_TRUE(await([&] { return state("turned").empty(); }));
    EXPECT_TRUE(shot() == film);
    act("key --window %1 ctrl+y");
    EXPECT_TRUE(await([&] { return !state("turned").empty(); }));

    act("key --window %1 Return");
    EXPECT_TRUE(says("message: written: " + place + " = 580\n"));
    std::string expected = source;
    expected.replace(expected.find("480"), 3, "580");
    EXPECT_EQ(contentOf(scratch.file(heap)), expected);
    EXPECT_TRUE(says("message: loaded " + heap)) << desk();
    EXPECT_TRUE(shot() == turned);
    // Undone, and turned otherwise: the source stays until that is written.
    act("key --window %1 ctrl+z");
    EXPECT_TRUE(await([&] { return state("turned") == place + " = 480 (580)"; }));
    EXPECT_TRUE(shot() == film);

    // One that another hand has changed is left to it.
    const std::string theirs = "y = 1;\n" + expected;
    scratch.write(heap, theirs);
    ASSERT_TRUE(says("problem: " + heap + ":1:1: error: "));
    act("key --window %1 Return");
    EXPECT_TRUE(says("message: not written: " + heap + " was changed meanwhile\n"));
    EXPECT_EQ(contentOf(scratch.file(heap)), theirs);
    EXPECT_EQ(state("turned"), place + " = 480 (580)");
    // Nor is it lost without a word when somebody else ends the window.
    act("windowkill %1");
    EXPECT_EQ(waitForProcess(process), 1);
    process = -1;
    EXPECT_NE(errors().find("not written: " + place + " = 480 (580)\n"), std::string::npos) << errors();
}

// A cut goes by beats, and not past its neighbour; a save of something else leaves it turned. The press loads
// code whose programme is another than that which is linked.
TEST_F(RehearseCode, ACutIsDragged) {
    const std::string times = "script/show_times.h", source = contentOf(times),
                      programme = "script/timeline.cpp";
    const auto time = std::filesystem::last_write_time(scratch.path / programme);
    save(programme, "    {showtime::title, sceneSweepText, \"title\"},\n", "");
    std::filesystem::last_write_time(scratch.path / programme, time);
    rehearse({"70", "--held", "-nosound"});
    ASSERT_TRUE(await([&] {
        return state("working").empty() && std::filesystem::exists(scratch.path / "build/live/libshow.so");
    })) << desk();
    const std::string cut = std::to_string(xAt(showtime::heap.seconds()));
    const auto drag = [&](double to) {
        // Slowly: it is undone as one all the same.
        act("mousemove --window %1 " + cut + " 567 mousedown 1 mousemove --window %1 " +
            std::to_string(xAt(to - 5)) + " 567 sleep 1.5 mousemove --window %1 " + std::to_string(xAt(to)) +
            " 567 sleep 0.3 mouseup 1");
    };
    drag(75);
    ASSERT_TRUE(await([&] { return state("segment") == "torn tunnel"; })) << desk();
    const int moved = std::atoi(state("turned").substr(state("turned").find("= ") + 2).c_str());
    EXPECT_NEAR(moved, 75000, 400);
    const double beats = (moved - showtime::heap.ms) * showtime::beatsPerMinute / 60000.0;
    EXPECT_NEAR(beats, std::round(beats), 0.002);
    save("effects/probes.cpp", "probeScale = 0.3f", "probeScale = 0.31f");
    ASSERT_TRUE(says("message: loaded effects/probes.cpp")) << desk();
    EXPECT_EQ(state("segment"), "torn tunnel");
    act("key --window %1 Return");
    ASSERT_TRUE(says("message: written: " + times));
    std::string expected = source;
    expected.replace(expected.find("62761"), 5, std::to_string(moved));
    EXPECT_EQ(contentOf(scratch.file(times)), expected);
    act("key --window %1 ctrl+z");
    EXPECT_TRUE(await([&] { return state("segment") == "heap"; }));
    drag(100);
    EXPECT_TRUE(await([&] { return state("segment") == "torn tunnel"; }));
    EXPECT_EQ(state("bounds").find(" - 1:18.030"), std::string::npos);
}

// Shaders have numbers, too: what a uniform is unless it is told, and constants. Of code what has to be a
// constant is none, and one that it crashes with leads back to what the source has.
TEST_F(RehearseCode, ShadersAreTurnedAndACrashLeadsBack) {
    const std::string probes = "effects/probes.cpp", top = "constexpr float probeScale",
                      draw = "void Probes::draw() {\n", shader = "data/shaders/smoke2.fs";
    std::string code = "#include <array>\n" + contentOf(probes), text = contentOf(shader);
    code.insert(code.find(draw) + draw.size(), "    inLanes[size_t(lanes)] = 10 / parts;\n");
    code.insert(code.find(top),
                "constexpr int lanes = 2;\nconstexpr int parts = 1;\n"
                "std::array<volatile int, 2 * lanes> inLanes;\n");
    scratch.write(probes, code);
    text.replace(text.find("110"), 3, "120");
    text.insert(text.find("void main"), "uniform float gain = 1.0;\nconst float lift = 0.0;\n");
    text.insert(text.rfind('}'), "gl_FragColor.rgb = gain * gl_FragColor.rgb + lift;\n");
    std::filesystem::remove(scratch.path / shader);
    scratch.write(shader, text);
    rehearse({"90", "--held", "--numbers", "-nosound"});
    std::string before = shot();
    for (const char* name : {"gain", "lift"}) {
        choose(shader, name);
        ASSERT_FALSE(HasFailure());
        act("key --window %1 Right");
        const std::string turned = shot();
        EXPECT_TRUE(turned != before) << name;
        act("key --window %1 Return");
        ASSERT_TRUE(says("message: loaded " + shader)) << desk();
        EXPECT_TRUE(shot() == turned) << name;
        before = turned;
    }
    const std::string scale = choose(probes, "probeScale");
    ASSERT_FALSE(HasFailure());
    act("key --window %1 Right");
    before = shot();
    choose(probes, "parts");
    ASSERT_FALSE(HasFailure());
    EXPECT_EQ(desk().find(": lanes"), std::string::npos);
    // The window goes with the press, so there may be none to release the key in.
    act("keydown --window %1 Left");
    const std::string told = ": parts = 0 (1): the code crashed: Floating point exception";
    ASSERT_TRUE(says(told)) << desk();
    EXPECT_TRUE(shot() == before);
    EXPECT_NE(state("problem").find(told), std::string::npos) << state("problem");
    // What else was turned is so on, and has no share in what new code does.
    EXPECT_TRUE(state("turned").starts_with(scale + " = ")) << desk();
    scratch.write(probes, code.insert(code.find(draw) + draw.size(), "    __builtin_trap();\n"));
    EXPECT_TRUE(says(": the new code crashed: Illegal instruction; the code before goes on")) << desk();
    EXPECT_TRUE(shot() == before);
    EXPECT_TRUE(state("turned").starts_with(scale + " = ")) << desk();
}

// And no window in the terminal.
TEST_F(RehearseProgram, WithoutADisplayThereIsOneLine) {
    for (const char* tool : {REHEARSE_PROGRAM " 5", LOOK_PROGRAM " 5", CAPTURE_PROGRAM}) {
        program = tool;
        const Outcome outcome = run("", "env -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER DISPLAY=:no");
        EXPECT_EQ(outcome.status, 1) << tool;
        EXPECT_TRUE(outcome.errors.ends_with(
            ": no window can be opened: the display that DISPLAY names does not answer\n"))
            << outcome.errors;
        EXPECT_EQ(outcome.output + outcome.errors.substr(outcome.errors.find('\n')), "\n");
    }
}

// As the package installs them: beside data of another show they draw their own, and write where the caller
// is.
TEST(Look, AndCaptureDrawTheInstalledShow) {
    const ScratchDirectory scratch;
    namespace fs = std::filesystem;
    const fs::path tools = scratch.path / "libexec/valojuova-tools", here = scratch.path / "100 %d";
    fs::create_directories(tools);
    for (const char* tool : {LOOK_PROGRAM, CAPTURE_PROGRAM}) fs::copy(tool, tools);
    linkDataSet(scratch.path / "share/valojuova");
    scratch.write("100 %d/data/white.png", "of another show");
    const auto run = [&](const std::string& words) {
        return shell("cd '" + here.string() + "' && ../libexec/valojuova-tools/" + words);
    };
    EXPECT_EQ(run("look 65.4 look.png").status, 0);
    EXPECT_EQ(run("capture --from 65.4 --to 65.41 --out frames/%d.png").status, 0);
    EXPECT_TRUE(contentOf(here / "look.png") == contentOf(here / "frames/3924.png"));
    for (const char* words : {"", "195.28", "5 picture.jpg", "5 /proc/picture.png", "1 2.png 3"})
        EXPECT_EQ(run(std::string("look ") + words).status, 1) << words;
    EXPECT_EQ(namesIn(here), (std::set<std::string>{"data", "frames", "look.png"}));
    const std::string missing = "part.mp4: there is no such part\n";
    EXPECT_EQ(run("capture --join part.mp4").output, "capture: the show is that of " +
                                                         scratch.file("share/valojuova") +
                                                         "\ncapture: " + here.string() + "/" + missing);
    fs::remove_all(here / "data");
    linkDataSet(here);
    fs::remove(here / "data/loading.jpg");
    EXPECT_EQ(run("capture --join part.mp4").output, "capture: " + missing)
        << "an author's, though it isn't whole";
}

}  // namespace
