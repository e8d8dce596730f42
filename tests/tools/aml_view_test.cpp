// `aml view`: what the window shows of a mesh file, its keys, and what a save changes.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/gl_window.h"
#include "tests/scratch.h"
#include "tools/aml/view.h"

namespace {

namespace fs = std::filesystem;

class AmlToolView : public GlWindow {
public:
    ScratchDirectory scratch;

    // Beside it and into its place, as editors do.
    void save(const char* model, uintmax_t size = 0) const {
        fs::copy_file(model, scratch.file("beside"), fs::copy_options::overwrite_existing);
        if (size) fs::resize_file(scratch.file("beside"), size);
        fs::rename(scratch.file("beside"), scratch.file("mine.AML"));
    }
    static void press(MeshView& view, SDLKey key) {
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.keysym.sym = key;
        view.handleEvent(event);
    }
    // The rows between the words above and below.
    static Screen shown(MeshView& view) {
        view.frame();
        const Screen all = readWindow();
        const auto row = [&](int y) { return all.pixels.begin() + y * all.width; };
        return {all.width, 460, {row(40), row(500)}};
    }
};

TEST_F(AmlToolView, ShowsTheFileAndAnewWhenItIsSaved) {
    save("data/palikka.AML");
    MeshView view(scratch.file("mine.AML"));
    press(view, SDLK_SPACE);
    const Screen probe = shown(view);
    EXPECT_EQ(differing(probe, shown(view)), 0);
    const Pixel ground = probe.at(2, 260);
    int covered = 0;
    for (const Pixel& pixel : probe.pixels) covered += pixel != ground;
    EXPECT_GT(covered, 20000);

    save("data/ring.AML");
    EXPECT_GT(differing(probe, shown(view)), 20000);
    // What can't be read leaves what was there, and says why; the good file brings its picture back.
    const Screen ring = shown(view);
    save("data/palikka.AML", 5000);
    EXPECT_EQ(differing(ring, shown(view)), 0);
    EXPECT_EQ(view.fault, scratch.file("mine.AML") + ": the file ends too early");
    save("CMakeLists.txt");
    EXPECT_EQ(differing(ring, shown(view)), 0);
    EXPECT_EQ(view.fault, scratch.file("mine.AML") + ": File is not AML file (or is format version 0).");
    fs::remove(scratch.file("mine.AML"));
    EXPECT_EQ(differing(ring, shown(view)), 0);
    save("data/palikka.AML");
    EXPECT_EQ(differing(probe, shown(view)), 0);
    EXPECT_EQ(view.fault, "");
}

TEST_F(AmlToolView, KeysShowWireAndNormalsAndTurnIt) {
    save("data/pallero.AML");
    MeshView view(scratch.file("mine.AML"));
    press(view, SDLK_SPACE);
    const Screen plain = shown(view);
    for (const SDLKey key : {SDLK_w, SDLK_n}) {
        press(view, key);
        EXPECT_GT(differing(plain, shown(view)), 2000);
        press(view, key);
        EXPECT_EQ(differing(plain, shown(view)), 0);
    }
    for (const auto& [there, back] : {std::pair{SDLK_LEFT, SDLK_RIGHT}, {SDLK_UP, SDLK_DOWN}}) {
        press(view, there);
        EXPECT_GT(differing(plain, shown(view)), 2000);
        press(view, back);
        EXPECT_EQ(differing(plain, shown(view)), 0);
    }
    press(view, SDLK_PAGEUP);
    EXPECT_GT(differing(plain, shown(view)), 2000);
    press(view, SDLK_ESCAPE);
    EXPECT_TRUE(view.done);
}

}  // namespace
