// What goes wrong around the program: files that are missing, a sound server that dies, keys in a storm.
#include <algorithm>
#include <sstream>

#include "script/resources.h"
#include "tests/app/program.h"
#include "tests/virtual_screen.h"

namespace {

// Takes a file away as long as it lives.
struct Missing {
    std::filesystem::path path, elsewhere = path.string() + "-kept";

    explicit Missing(const std::filesystem::path& path) : path(path) {
        std::filesystem::rename(path, elsewhere);
    }
    ~Missing() { std::filesystem::rename(elsewhere, path); }
    Missing(const Missing&) = delete;
    Missing& operator=(const Missing&) = delete;
};

class Faults : public Program {
public:
    void SetUp() override {
        leaveDrawingOut();
        linkData();
    }

    static std::string repeated(const std::string& keys, int times) {
        std::string all;
        for (int i = 0; i < times; i++) all += keys + " ";
        return all;
    }
    // To 190 s. Each key has a frame of its own, as the line of a shot that can't be written tells: the clock
    // takes one seek a frame.
    void seekToTheLastSeconds() const {
        for (const char* key : {"Page_Up", "Page_Down", "Page_Down", "Page_Down", "Page_Down", "Page_Down",
                                "Page_Down", "Up", "Up"}) {
            const size_t before = errors().size();
            press(std::string(key) + " F11", 0);
            await(process, [&] { return errors().size() != before; });
        }
    }
};

TEST_F(Faults, EachMissingModelOrPictureEndsTheStartWithItsName) {
    int models = 0, pictures = 0;
    for (const auto& file : dataFiles()) {
        const bool model = file.extension() == ".AML";
        if (!model && file.extension() != ".png" && file.extension() != ".jpg") continue;
        const Missing missing(scratch.path / file);
        const Outcome outcome = run("-win -nosound");
        EXPECT_EQ(outcome.status, model ? 1 : 0) << file;
        EXPECT_EQ(outcome.errors, model ? "File " + file.string() + " not found!\n"
                                        : "can't open " + file.string() + "\nerror: File [%s] not found.\n");
        EXPECT_EQ(outcome.output, "");
        ++(model ? models : pictures);
    }
    EXPECT_EQ(models, resourceCounts().meshes);
    EXPECT_EQ(pictures, resourceCounts().textures + 1) << "with the loading picture";
}

TEST_F(Faults, EachMissingShaderIsLeftOutAndNothingIsPrinted) {
    int shaders = 0;
    for (const auto& file : dataFiles()) {
        if (file.parent_path() != "data/shaders") continue;
        shaders++;
        const Missing missing(scratch.path / file);
        EXPECT_EQ(start("-nosound"), "Using No sound.\n") << file;
        EXPECT_EQ(end(false), 0) << file;
        EXPECT_EQ(errors(), "") << file;
    }
    EXPECT_EQ(shaders, 2 * resourceCounts().shaders);
}

TEST_F(Faults, TheShowEndsInTimeWhateverBecomesOfItsKeysShotsAndServer) {
    SoundServer server;
    EXPECT_EQ(start(""), "Using ALSA.\n");
    // A hundred seeks in ten seconds, and the server dies in the middle of them.
    press(repeated("Right Left", 25), 100);
    server.kill();
    press(repeated("Up Down", 25), 100);
    press(repeated("F11", 100), 30);
    std::istringstream lines(errors());
    int shots = 0;
    for (std::string line; std::getline(lines, line); shots++) {
        char expected[80];
        snprintf(expected, sizeof expected, "can't open w:/shots/shot%04d.png", shots);
        EXPECT_EQ(line, expected);
    }
    EXPECT_GT(shots, 0);
    EXPECT_LE(shots, 100);
    // Silent or not, the show ends where it should.
    seekToTheLastSeconds();
    EXPECT_EQ(end(true), 0);
}

TEST_F(Faults, NoWayOutWaitsForAFrozenServer) {
    const VirtualScreen screen(1024, 768, false);
    ASSERT_EQ(screen.problem, "");
    for (const std::string way : {"Escape", "close button", "end"}) {
        SoundServer server;
        EXPECT_EQ(start(""), "Using ALSA.\n") << way;
        sleepSeconds(1);
        if (way == "end") seekToTheLastSeconds();
        // The worst moment is while the device holds sound that nobody takes any more: a third of a second.
        kill(server.id(), SIGSTOP);
        if (way == "Escape") press(way, 0);
        if (way == "close button") screen.closeWindow();
        EXPECT_EQ(waitForProcess(process), 0) << way << ": " << errors();
    }
}

}  // namespace
