// What is asked of SDL for the window, and what becomes of the desktop when the program ends. In processes of
// their own: the tests' window is none of the program's.
#include "app/window.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "geometry/res_desc.h"
#include "image/image.h"
#include "tests/scratch.h"

namespace {

bool telling = false;  // what is asked of SDL, on standard error
bool refusing = false;
bool withoutAlpha = false;  // as on a display whose windows have none

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// In front of the library's own, which they go on to.
extern "C" SDL_Surface* SDL_SetVideoMode(int width, int height, int bits, Uint32 flags) {
    if (telling) fprintf(stderr, "%d x %d, %d bits, flags %x\n", width, height, bits, flags);
    if (refusing) return nullptr;
    return next<decltype(SDL_SetVideoMode)>("SDL_SetVideoMode")(width, height, bits, flags);
}

extern "C" int SDL_GL_SetAttribute(SDL_GLattr attribute, int value) {
    if (telling && attribute == SDL_GL_SWAP_CONTROL) fprintf(stderr, "swaps wait for %d\n", value);
    const bool refused = withoutAlpha && attribute == SDL_GL_ALPHA_SIZE;
    return next<decltype(SDL_GL_SetAttribute)>("SDL_GL_SetAttribute")(attribute, refused ? 0 : value);
}

extern "C" int SDL_ShowCursor(int toggle) {
    if (telling) fprintf(stderr, "cursor %d\n", toggle);
    return next<decltype(SDL_ShowCursor)>("SDL_ShowCursor")(toggle);
}

extern "C" void SDL_Quit() {
    if (telling) fprintf(stderr, "the desktop is as before\n");
    next<decltype(SDL_Quit)>("SDL_Quit")();
}

namespace {

class WindowDeathTest : public testing::Test {
public:
    ScratchDirectory scratch;

    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static void refuseWindow(bool fullscreen) {
        telling = refusing = true;
        openWindow(fullscreen, 0, fullscreen);
    }
    static void openTelling() {
        openWindow(false);
        telling = true;
    }
};

TEST_F(WindowDeathTest, AsksForTheFlagsOfItsOptionAndHidesTheCursorInFullScreen) {
    EXPECT_EXIT(refuseWindow(true), testing::ExitedWithCode(0),
                "^cursor 0\nswaps wait for 1\n800 x 600, 32 bits, flags 80000007\n");
    EXPECT_EXIT(refuseWindow(false), testing::ExitedWithCode(0), "^800 x 600, 32 bits, flags 7\n");
}

TEST_F(WindowDeathTest, TellsOnceOfAWindowWithoutAlphaAndOfNoOther) {
    const auto openTwice = [](bool alpha) {
        withoutAlpha = !alpha;
        openWindow(false);
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        openWindow(false);
        exit(0);
    };
    EXPECT_EXIT(openTwice(true), testing::ExitedWithCode(0), "^$");
    EXPECT_EXIT(openTwice(false), testing::ExitedWithCode(0), "^This display keeps no alpha[^\n]*\n$");
}

TEST_F(WindowDeathTest, ReadersThatEndTheProgramLeaveTheDesktopAsItWas) {
    const std::string broken = scratch.write("broken.jpg", "\xff\xd8\xff\xe0 no picture");
    const auto readMesh = [] {
        openTelling();
        ResDescFile("no such file");
    };
    const auto readPicture = [&] {
        openTelling();
        Image image;
        loadImage(broken.c_str(), &image, 0);
    };
    EXPECT_EXIT(readMesh(), testing::ExitedWithCode(1), "not found!\nthe desktop is as before\n");
    EXPECT_EXIT(readPicture(), testing::ExitedWithCode(1), "the desktop is as before\n");
}

}  // namespace
