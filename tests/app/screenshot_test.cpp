#include "app/screenshot.h"

#include <unistd.h>

#include "app/keys.h"
#include "tests/app/shell_window.h"
#include "tests/scratch.h"

namespace {

class Screenshot : public ShellWindow {
public:
    ScratchDirectory scratch;
    WorkingDirectory working{scratch.path};

    static Pixel pixelOf(const Image& image, int x, int y) {
        const uint8_t* p = image.pixels + y * image.stride + x * 3;
        return {p[0], p[1], p[2], 255};
    }
};

TEST_F(Screenshot, IsAnUprightPictureOfTheBackBuffer) {
    std::filesystem::create_directories("w:/shots");
    fillRect(0, 0, 800, 600, Pixel{10, 20, 30, 0});
    fillRect(0, 590, 800, 10, Pixel{255, 0, 0, 255});
    fillRect(0, 0, 1, 1, Pixel{0, 255, 0, 255});
    app.screenshotRequested = true;
    saveScreenshot();
    EXPECT_FALSE(app.screenshotRequested);

    Image shot;
    ASSERT_EQ(loadImage("w:/shots/shot0000.png", &shot, 0), 0);
    EXPECT_EQ(shot.width, 800);
    EXPECT_EQ(shot.height, 600);
    EXPECT_EQ(shot.channels, 3);
    EXPECT_EQ(pixelOf(shot, 400, 0), (Pixel{255, 0, 0, 255})) << "the top of the screen comes first";
    EXPECT_EQ(pixelOf(shot, 400, 10), (Pixel{10, 20, 30, 255}));
    EXPECT_EQ(pixelOf(shot, 0, 599), (Pixel{0, 255, 0, 255}));
    delete[] shot.pixels;
}

TEST_F(Screenshot, ShotsAreNumberedAndReuseTheirBuffer) {
    std::filesystem::create_directories("w:/shots");
    saveScreenshot();
    const uint8_t* const buffer = app.screenshot.pixels;
    fillRect(0, 0, 800, 600, Pixel{255, 255, 255, 255});
    saveScreenshot();
    EXPECT_EQ(app.screenshot.pixels, buffer);
    app.screenshotNumber = 12345;
    saveScreenshot();
    EXPECT_EQ(app.screenshotNumber, 12346);

    for (const char* name : {"shot0000.png", "shot0001.png", "shot12345.png"}) {
        EXPECT_TRUE(std::filesystem::exists(scratch.path / "w:/shots" / name)) << name;
    }
    Image shot;
    ASSERT_EQ(loadImage("w:/shots/shot0001.png", &shot, 0), 0);
    EXPECT_EQ(pixelOf(shot, 5, 5), (Pixel{255, 255, 255, 255}));
    delete[] shot.pixels;
}

TEST_F(Screenshot, WithoutTheDirectoryTheNumberAdvancesAllTheSame) {
    app.screenshotRequested = true;
    testing::internal::CaptureStderr();
    saveScreenshot();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "can't open w:/shots/shot0000.png\n");
    EXPECT_EQ(app.screenshotNumber, 1);
    EXPECT_FALSE(app.screenshotRequested);
}

// What is asked for a hundred times in a folder that takes nothing: a line each, and what was there stays.
TEST_F(Screenshot, AFolderThatTakesNoShotsLosesNothingElse) {
    std::filesystem::create_directories("w:/shots");
    scratch.write("w:/shots/shot0007.png", "an earlier shot");
    std::filesystem::permissions(scratch.path, std::filesystem::perms(0755));
    std::filesystem::permissions("w:/shots/shot0007.png", std::filesystem::perms(0444));
    std::filesystem::permissions("w:/shots", std::filesystem::perms(0555));
    const auto user = geteuid();
    // Root may write everywhere.
    ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0);
    std::string expected;
    testing::internal::CaptureStderr();
    for (int i = 0; i < 100; i++) {
        handleKey(SDLK_F11);
        saveScreenshot();
        char line[80];
        snprintf(line, sizeof line, "can't open w:/shots/shot%04d.png\n", i);
        expected += line;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), expected);
    EXPECT_EQ(seteuid(user), 0);
    EXPECT_EQ(std::filesystem::file_size("w:/shots/shot0007.png"), 15u);
    EXPECT_EQ(app.screenshotNumber, 100);
}

TEST_F(Screenshot, AFullDiskLosesTheShotsAlone) {
    std::filesystem::create_directories("w:/shots");
    for (int i = 0; i < 100; i++) {
        char name[80];
        snprintf(name, sizeof name, "w:/shots/shot%04d.png", i);
        std::filesystem::create_symlink("/dev/full", name);
    }
    std::string expected;
    testing::internal::CaptureStderr();
    for (int i = 0; i < 100; i++) {
        handleKey(SDLK_F11);
        saveScreenshot();
        expected += "write_png: Error 3\n";
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), expected);
    saveScreenshot();
    EXPECT_TRUE(std::filesystem::is_regular_file("w:/shots/shot0100.png"));
}

}  // namespace
