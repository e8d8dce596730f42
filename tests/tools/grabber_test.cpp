// Frames on their way from GL to whoever writes them, between two threads: built once more under the
// sanitizer for those.
#include "tools/capture/grabber.h"

#include <functional>

#include "tests/gl_window.h"

// The sanitizer asks for it: what the driver's threads do among themselves it can't tell.
extern "C" const char* __tsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions() {
    return "race:swrast_dri.so\nrace:libgallium\n";
}

namespace {

struct Grabbing : GlWindow {
    // Of frames that are told apart by their blue.
    static bool grab(Grabber& grabber, int frame) {
        glClearColor(0, 0, float(frame) / 255, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        return grabber.grab();
    }

    // That loses its second frame in the given way, of three.
    static void expectLoss(const std::function<void(Grabber&)>& lose) {
        int written = 0;
        Grabber grabber([&](const Picture&) { return ++written > 0; });
        EXPECT_TRUE(grabber.grab());
        lose(grabber);
        EXPECT_FALSE(grabber.grab() && grabber.grab());
        EXPECT_FALSE(grabber.finish());
        EXPECT_LE(written, 1);
        EXPECT_EQ(grabber.problem.find("a frame could not be read back: GL error 0x"), 0u);
    }
};

TEST_F(Grabbing, AllFramesAreWrittenInTheirOrder) {
    std::vector<int> written;
    Grabber grabber([&](const Picture& picture) {
        if (written.size() % 5 == 0) SDL_Delay(20);  // now it is the one that is waited for, now the other
        written.push_back(picture.front() == picture[picture.size() - 4] ? picture.front() : -1);
        return true;
    });
    for (int frame = 0; frame < 25; frame++) {
        if (frame % 7 == 0) SDL_Delay(20);
        EXPECT_TRUE(grab(grabber, frame));
    }
    EXPECT_TRUE(grabber.finish());
    ASSERT_EQ(written.size(), 25u);
    for (int frame = 0; frame < 25; frame++) EXPECT_EQ(written[size_t(frame)], frame);
}

TEST_F(Grabbing, NothingIsWrittenAfterAFailure) {
    int written = 0;
    Grabber grabber([&](const Picture&) { return ++written < 3; });
    int frame = 0;
    while (grab(grabber, frame)) ASSERT_LT(++frame, 20);
    EXPECT_FALSE(grabber.finish());
    EXPECT_EQ(written, 3);
}

PFNGLMAPBUFFERPROC mapBuffer = nullptr;
PFNGLUNMAPBUFFERPROC unmapBuffer = nullptr;
int calls = 0;

TEST_F(Grabbing, AFrameThatCantBeReadBackIsAFailure) {
    expectLoss([](Grabber& grabber) {  // too small for the frame
        glBindBuffer(GL_PIXEL_PACK_BUFFER, grabber.buffers[1]);
        glBufferData(GL_PIXEL_PACK_BUFFER, 16, nullptr, GL_STREAM_READ);
        glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    });
    mapBuffer = __glewMapBuffer;
    expectLoss([](Grabber&) {
        calls = 0;
        __glewMapBuffer = [](GLenum target, GLenum access) -> void* {
            return ++calls == 2 ? nullptr : mapBuffer(target, access);
        };
    });
    __glewMapBuffer = mapBuffer;
    unmapBuffer = __glewUnmapBuffer;
    expectLoss([](Grabber&) {  // whose content went away in the meantime
        calls = 0;
        __glewUnmapBuffer = [](GLenum target) -> GLboolean { return unmapBuffer(target) && ++calls != 2; };
    });
    __glewUnmapBuffer = unmapBuffer;
}

}  // namespace
