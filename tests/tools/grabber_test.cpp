// Frames on their way from GL to whoever writes them, between two threads: built once more under the
// sanitizer for those.
#include "tools/capture/grabber.h"

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

TEST_F(Grabbing, AFrameThatCantBeReadBackIsAFailure) {
    int written = 0;
    Grabber grabber([&](const Picture&) { return ++written > 0; });
    EXPECT_TRUE(grabber.grab());
    GLuint empty = 0;
    glGenFramebuffers(1, &empty);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, empty);
    EXPECT_FALSE(grabber.grab());
    glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
    glDeleteFramebuffers(1, &empty);
    EXPECT_FALSE(grabber.grab()) << "a film with a hole";
    EXPECT_FALSE(grabber.finish());
    EXPECT_LE(written, 1);
    EXPECT_EQ(grabber.problem, "a frame could not be read back: GL error 0x0506");
}

}  // namespace
