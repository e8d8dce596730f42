#include "app/screenshot.h"

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

TEST_F(Screenshot, AFullDiskLosesItsShotAlone) {
    std::filesystem::create_directories("w:/shots");
    std::filesystem::create_symlink("/dev/full", "w:/shots/shot0000.png");
    testing::internal::CaptureStderr();
    saveScreenshot();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "write_png: Error 3\n");
    saveScreenshot();
    EXPECT_TRUE(std::filesystem::is_regular_file("w:/shots/shot0001.png"));
}

}  // namespace
