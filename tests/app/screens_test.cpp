// What reaches people's screens: the picture is whole, upright and 4:3, all else black, full screen and in a
// window, with a window manager and without, and on a Wayland desktop.
#include <SDL/SDL.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

#include "image/image.h"
#include "tests/app/program.h"
#include "tests/virtual_screen.h"

namespace {

// How far a shot differs from what a rectangle of the screen shows, 0..255 at the mean; 255 where the
// rectangle is not wholly on the screen.
double difference(const Image& shot, bool upsideDown, const VirtualScreen& screen,
                  const std::vector<uint32_t>& pixels, const Rect& rect) {
    if (rect.width <= 0 || rect.x < 0 || rect.y < 0 || rect.x + rect.width > screen.width ||
        rect.y + rect.height > screen.height)
        return 255;
    double sum = 0;
    for (int y = 0; y < shot.height; y++) {
        const int row = rect.y + (2 * y + 1) * rect.height / (2 * shot.height);
        const uint8_t* p = shot.pixels + size_t(upsideDown ? shot.height - 1 - y : y) * shot.stride;
        for (int x = 0; x < shot.width; x++, p += 3) {
            const int column = rect.x + (2 * x + 1) * rect.width / (2 * shot.width);
            const uint32_t pixel = pixels[size_t(row) * screen.width + column];
            for (int channel = 0; channel < 3; channel++)
                sum += std::abs(p[channel] - int(pixel >> (16 - 8 * channel) & 255));
        }
    }
    return sum / (3.0 * shot.width * shot.height);
}

// Of the pixels that are further from a rectangle than its edge is wide.
int litOutside(const VirtualScreen& screen, const std::vector<uint32_t>& pixels, const Rect& rect, int edge) {
    int lit = 0;
    for (int y = 0; y < screen.height; y++) {
        for (int x = 0; x < screen.width; x++) {
            const bool inside = x >= rect.x - edge && x < rect.x + rect.width + edge && y >= rect.y - edge &&
                                y < rect.y + rect.height + edge;
            lit += !inside && pixels[size_t(y) * screen.width + x] != 0;
        }
    }
    return lit;
}

// In the middle of the screen, 4:3.
Rect middleRect(const VirtualScreen& screen, int height) {
    const int width = height * 4 / 3;
    return {(screen.width - width) / 2, (screen.height - height) / 2, width, height};
}

// SDL 1.2 as a layer over its successors.
const bool layered = SDL_Linked_Version()->patch >= 50;

class Screens : public Program {
public:
    void SetUp() override { linkData(); }

    // The show's own shot of what it draws now: the second, since the first may be of the frame in which the
    // music is still being moved. Once a third one has been begun, it is whole.
    template <typename Press>
    Image shoot(Press press) const {
        while (!std::filesystem::exists(scratch.path / "w:/shots/shot0002.png") && runs()) press("F11");
        Image shot{};
        EXPECT_EQ(loadImage(scratch.file("w:/shots/shot0001.png").c_str(), &shot, 0), 0);
        return shot;
    }

    // Plays, holds the music in the middle of a scene, and compares what is seen with the show's own shot of
    // it. A scale is that of the Wayland desktop on the screen.
    void lookAt(const VirtualScreen& screen, bool fullscreen, double scale = 0) {
        const auto press = [&](const std::string& keys) {
            if (scale > 0)
                screen.type(keys);
            else
                Program::press(keys, 300);
        };
        const auto whereShown = [&](int look) {
            // SDL 1.2 itself shows the picture as it is drawn, its successors' layer scales it to the
            // desktop's height.
            if (fullscreen) return middleRect(screen, layered ? screen.height : 600);
            if (scale == 0) return screen.windowRect();
            // Over SDL 2 windows are enlarged, over SDL 3 they are not.
            return middleRect(screen, look % 2 ? 600 : int(600 * scale));
        };
        std::filesystem::remove_all(scratch.path / "w:/shots");
        std::filesystem::create_directories(scratch.path / "w:/shots");
        ASSERT_EQ(start(fullscreen ? "-fs -nosound" : "-nosound"), "Using No sound.\n");
        press("p Page_Down");
        const Image shot = shoot(press);
        ASSERT_TRUE(shot.pixels);

        Rect rect{};
        double upright = 255, upsideDown = 0;
        int lit = -1;
        for (int look = 0; look < 50 && (upright > 3 || lit != 0); look++) {
            usleep(100000);
            const std::vector<uint32_t> pixels = screen.grab();
            rect = whereShown(look);
            upright = difference(shot, false, screen, pixels, rect);
            upsideDown = difference(shot, true, screen, pixels, rect);
            // Desktops smooth what they enlarge by halves.
            lit = fullscreen ? litOutside(screen, pixels, rect, scale != int(scale)) : 0;
        }
        delete[] shot.pixels;
        EXPECT_EQ(end(false), 0);
        EXPECT_EQ(errors(), "") << "whatever the driver has refused";
        EXPECT_LT(upright, 3) << rect.width << " x " << rect.height << " at " << rect.x << ", " << rect.y;
        EXPECT_GT(upsideDown, 10);
        EXPECT_EQ(lit, 0);
        EXPECT_EQ(rect.width * 3, rect.height * 4);
        if (!fullscreen && scale == 0) {
            EXPECT_EQ(rect.width, 800);
        }
    }
};

TEST_F(Screens, ShowTheWholePictureInBlackBarsOrAWindow) {
    for (const bool managed : {true, false}) {
        SCOPED_TRACE(managed ? "managed" : "without a window manager");
        const VirtualScreen screen(1280, 720, managed);
        ASSERT_EQ(screen.problem, "");
        lookAt(screen, false);
        lookAt(screen, true);
    }
    const VirtualScreen wide(3440, 1440, true);
    ASSERT_EQ(wide.problem, "");
    lookAt(wide, true);
}

TEST_F(Screens, ShowTheWholePictureOnAWaylandDesktop) {
    if (!layered) GTEST_SKIP() << "SDL 1.2 itself knows no Wayland, whose X servers stretch its full screen";
    for (const double scale : {1.0, 1.5, 2.0}) {
        const VirtualScreen screen(int(1280 * scale), int(720 * scale), false);
        ASSERT_EQ(screen.problem, "");
        for (const bool native : {true, false}) {
            SCOPED_TRACE((native ? "native at " : "through XWayland at ") + std::to_string(scale));
            const WaylandDesktop desktop(screen, scale, native);
            ASSERT_EQ(desktop.problem, "");
            if (scale == int(scale)) lookAt(screen, false, scale);
            lookAt(screen, true, scale);
        }
    }
}

}  // namespace
