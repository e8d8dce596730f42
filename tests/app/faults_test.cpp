// What goes wrong around the program: files that are missing, a sound server that dies, keys in a storm.
#include <algorithm>
#include <sstream>

#include "script/resources.h"
#include "tests/app/program.h"
#include "tests/sound/sound_server.h"

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

// Only what is read and printed is looked at here, so the GL driver takes everything and draws nothing, or,
// where its driver for that can't start (Mesa 25), prepares everything and leaves the pixels out.
class Faults : public Program {
public:
    void SetUp() override {
        static const bool noDriver = run("-win -nosound", "GALLIUM_NOOP=1").status == 0;
        environment.set(noDriver ? "GALLIUM_NOOP" : "LP_NO_RAST", "1");
        linkData();
    }

    static std::string repeated(const std::string& keys, int times) {
        std::string all;
        for (int i = 0; i < times; i++) all += keys + " ";
        return all;
    }

private:
    Environment environment;
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
    press("Page_Up " + repeated("Page_Down", 6) + "Up Up", 200);
    EXPECT_EQ(end(true), 0);
}

}  // namespace
