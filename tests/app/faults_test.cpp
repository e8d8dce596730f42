// What goes wrong around the program: files that are missing, and a sound server that freezes.
#include "render/shaders.h"
#include "script/resources.h"
#include "tests/app/program.h"
#include "tests/virtual_screen.h"

namespace {

struct Faults : UndrawnShow {};

TEST_F(Faults, AMissingModelOrPictureEndsTheStartWithItsName) {
    const std::string picture = textureRows().back().path, model = meshRows().back().path;
    std::filesystem::remove(scratch.path / picture);
    Outcome outcome = run("-win -nosound");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "can't open " + picture + "\nerror: File [%s] not found.\n");
    EXPECT_EQ(outcome.output, "");
    // Models come first, so it is the model's name now.
    std::filesystem::remove(scratch.path / model);
    outcome = run("-win -nosound");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "File " + model + " not found!\n");
}

TEST_F(Faults, MissingShadersAreLeftOutAndNothingIsPrinted) {
    int which = 0;
    for (const ShaderRow& row : shaderRows())
        std::filesystem::remove(scratch.path / (std::string(row.base) + shaderEndings[which++ % 2]));
    EXPECT_EQ(start("-nosound"), "Using No sound.\n");
    EXPECT_EQ(end(false), 0);
    EXPECT_EQ(errors(), "");
}

TEST_F(Faults, NoWayOutWaitsForAFrozenServer) {
    const VirtualScreen screen(1024, 768, false);
    ASSERT_EQ(screen.problem, "");
    for (const std::string way : {"Escape", "close button"}) {
        SoundServer server;
        EXPECT_EQ(start(""), "Using ALSA.\n") << way;
        sleepSeconds(1);
        // The worst moment is while the device holds sound that nobody takes any more: a third of a second.
        kill(server.id(), SIGSTOP);
        if (way == "Escape") press(way, 0);
        if (way == "close button") screen.closeWindow();
        EXPECT_EQ(waitForProcess(process), 0) << way << ": " << errors();
    }
}

}  // namespace
