#include "script/timeline.h"

#include <cmath>
#include <string>

#include "effects/laser_tunnel.h"
#include "script/resources.h"
#include "script/show_times.h"
#include "tests/effects/effect_window.h"
#include "tools/capture/stepped_show.h"

namespace {

// Tells that it was drawn, by its key; draws nothing.
struct Told : EffectBase {
    const char* key;
    std::string& log;

    Told(const char* key, std::string& log) : EffectBase(::demo), key(key), log(log) {}
    void draw() override { log.append(key).append(" "); }
    void drawAt(float, float) override { draw(); }
};

struct ToldLaser : LaserTunnel {
    std::string& log;

    explicit ToldLaser(std::string& log) : LaserTunnel(::demo, "spot"), log(log) {}
    void draw() override { log.append(beamsOn ? "laser " : "dark "); }
};

// Keeps what an effect finds when it is drawn; draws nothing.
struct Looking : EffectBase {
    Matrix4 view{};
    float depth = 0;  // at the middle of the screen
    bool depthTested = false;

    Looking() : EffectBase(::demo) {}
    void draw() override {
        glGetFloatv(GL_MODELVIEW_MATRIX, view.m);
        glReadPixels(400, 300, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
        depthTested = glIsEnabled(GL_DEPTH_TEST);
    }
};

// The programme without its content: which effects and which shaders a frame asks for, at what cameras.
struct Programme : GlWindow {
    std::string drawn;  // keys of the effects of this frame, in order

    void SetUp() override {
        GlWindow::SetUp();
        for (const EffectRow& row : effectRows()) {
            if (row.key != std::string("laser")) demo->effects[row.key] = new Told(row.key, drawn);
        }
        auto* laser = new ToldLaser(drawn);
        laser->beamsOn = false;
        demo->effects["laser"] = laser;
        demo->meshes["sphere"] = new MeshSet;
        addSolidTexture("loading", {0, 0, 0, 255});
        for (const char* name : {"code", "models", "gfx", "music", "greetsit", "mix", "white"})
            addSolidTexture(name, {255, 255, 255, 255});
        loadShaders();
        glColor3f(1, 1, 1);
    }

    void TearDown() override {
        for (auto& [key, effect] : demo->effects) delete effect;
        delete demo->meshes["sphere"];
        GlWindow::TearDown();
    }

    // One frame at `ms`, the last beat `sinceBeat` seconds ago; all but its picture.
    void step(int ms, float sinceBeat = 10) {
        const OnePixel unseen;
        stepSeen(ms, sinceBeat);
    }
    void stepSeen(int ms, float sinceBeat = 10) {
        drawn.clear();
        music.ms = ms;
        demo->clock.update();
        demo->clock.lastBeatTime = demo->clock.time() - sinceBeat;
        demo->clock.autoBeatLatch = true;
        runTimeline(demo->clock.time(), demo->clock.delta);
    }

    std::string drawnAt(int ms) {
        step(ms);
        return drawn;
    }

    // In the place of an effect of the programme.
    static Looking* lookFrom(const char* key) {
        delete demo->effects[key];
        auto* looking = new Looking;
        demo->effects[key] = looking;
        return looking;
    }

    static float uniform(const char* shader, const char* name) {
        float value = 0;
        const GLhandleARB program = demo->shaders[shader];
        glGetUniformfvARB(program, glGetUniformLocationARB(program, name), &value);
        return value;
    }

    // "distort" of the boom that a frame used, or nothing below 0 if it used none.
    float boomAt(int ms, float sinceBeat = 10) {
        demo->useShader("boom");
        demo->setUniform1f("boom", "distort", -1);
        demo->setUniform1f("boom", "scale", -1);
        demo->useShader();
        step(ms, sinceBeat);
        return uniform("boom", "distort");
    }
};

TEST_F(Programme, EverySegmentBeginsWithItsThreshold) {
    const struct {
        showtime::Moment begin;
        const char* before;
        const char* from;
    } cuts[] = {
        {showtime::tunnel, "sweep ", "laser "},
        {showtime::stripes, "laser ", "stripes tunnel stripes "},
        {showtime::tornTunnel, "stripes tunnel stripes ", "laser "},
        {showtime::heap, "laser ", "tunnel cubes1 "},
        {showtime::probes, "tunnel cubes1 ", "probes "},
        {showtime::robot, "probes ", "robo "},
        {showtime::crossFade, "robo ", "robo huone "},
        {showtime::room, "robo huone ", "huone "},
    };
    for (const auto& cut : cuts) {
        EXPECT_EQ(drawnAt(cut.begin.ms - 1), cut.before) << cut.begin.ms;
        EXPECT_EQ(drawnAt(cut.begin.ms), cut.from) << cut.begin.ms;
    }
    EXPECT_EQ(drawnAt(0), "sweep ");
    EXPECT_EQ(drawnAt(showtime::end.ms - 1), "huone ");
    // The first of the laser's two segments has no boom on an even beat, the second its own on top.
    EXPECT_EQ(boomAt(17200), -1);
    EXPECT_EQ(boomAt(47700), 10);
}

TEST_F(Programme, EndsTheProgramWhenTheMusicIsOver) {
    EXPECT_EXIT(step(showtime::end.ms), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(step(300000), testing::ExitedWithCode(0), "");
}

TEST_F(Programme, EveryFrameBeginsWithLightZeroOffAndEndsWithTheHousekeeping) {
    demo->lights[0].enabled = true;
    demo->lights[3].enabled = true;
    step(1000);
    EXPECT_FALSE(demo->lights[0].enabled);
    EXPECT_TRUE(glIsEnabled(GL_LIGHT3));
    EXPECT_EQ(demo->clock.frameCount, 1);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    // The robot's scene needs its light at once, so it keeps house a second time.
    step(100000);
    EXPECT_EQ(demo->clock.frameCount, 3);
    EXPECT_TRUE(demo->lights[0].enabled);
}

TEST_F(Programme, TheLaserCameraJumpsEveryFourBeatsFromBeatZeroOn) {
    const struct {
        int ms;
        float x, y, z;
    } stops[] = {
        {showtime::tunnel.ms, -200, -100, 350},
        {showtime::beatZero.ms - 1, -200, -100, 350},
        {showtime::beatZero.ms, -112, 90, -100},
        {19040, -112, 90, -100},
        {19045, 200, -100, -500},
        {20950, 112, 150, 190},
        {22900, -200, -100, 350},
        {24800, 16, 122, 140},
        {26700, -112, 90, -100},
        {60500, 112, 150, 190},
    };
    for (const auto& stop : stops) {
        step(stop.ms);
        EXPECT_NEAR(demo->camera.eye[0], stop.x, 1e-3) << stop.ms;
        EXPECT_NEAR(demo->camera.eye[1], stop.y, 1e-3) << stop.ms;
        EXPECT_NEAR(demo->camera.eye[2], stop.z, 1e-3) << stop.ms;
    }
}

// Beat numbers are truncated toward zero, so beat 0 lasts twice as long, and before it odd beats are
// negative.
TEST_F(Programme, ShocksFollowTheBeatInTheLaserScene) {
    const auto middleOf = [](double beat) {
        return int((showtime::beatZero.seconds() + (beat + 0.5) / 2.1) * 1000);
    };
    const struct {
        double beat;
        float distort;
    } shocks[] = {{-16, 13}, {-15, -1}, {-14, 13}, {-2, 13}, {-1, -1}, {0, -1},  {1, 13},
                  {2, -1},   {3, 53},   {4, -1},   {5, 13},  {7, 53},  {27, 53}, {29, 13}};
    for (const auto& shock : shocks)
        EXPECT_EQ(boomAt(middleOf(shock.beat)), shock.distort) << "beat " << shock.beat;

    boomAt(middleOf(3), 0.15f);
    EXPECT_NEAR(uniform("boom", "scale"), 0.15, 1e-4) << "half a pulse";
}

TEST_F(Programme, TheSecondLaserSegmentIsTornInItsFirstBars) {
    const auto distortionAt = [this](int ms) {
        step(ms);
        return uniform("distort", "time");
    };
    EXPECT_NEAR(distortionAt(47700), 0.05 * sin(2 * 47.7), 1e-4);
    EXPECT_NEAR(distortionAt(47900), 1 + 0.1 * sin(3 * 47.9), 1e-4);
    EXPECT_NEAR(distortionAt(showtime::secondTearEnd.ms), 0.05 * sin(2 * showtime::secondTearEnd), 1e-4)
        << "the interval is open";
}

TEST_F(Programme, BackdropsHideNothing) {
    const Looking* tunnel = lookFrom("tunnel");
    const Looking* heap = lookFrom("cubes1");
    const Looking* probes = lookFrom("probes");
    stepSeen(65000);
    for (int row = 0; row < 3; row++)
        EXPECT_NEAR(tunnel->view.m[8 + row], -heap->view.m[4 + row], 1e-6) << "its axis is the heap's";
    stepSeen(85000);
    for (const Looking* effect : {heap, probes}) {
        EXPECT_EQ(effect->depth, 1);
        EXPECT_TRUE(effect->depthTested);
    }
}

// The top layer is the last quad but the overlay. Zoomed, its texture is cut off at the window's left edge.
TEST_F(Programme, TheTopStripesSwellOnBeatsAndTwiceAsFarOnOddOnes) {
    const auto zoomAt = [this](int ms, float sinceBeat) {
        const Feedback picture = feedbackOf([&] { step(ms, sinceBeat); });
        float left = 1;
        for (size_t i = picture.polygons.size() - 4; i < picture.polygons.size() - 2; i++)
            for (const FeedbackVertex& vertex : picture.polygons[i]) left = std::min(left, vertex.s);
        return 1 / (1 - 2 * 1.28f * left);
    };
    const int even = 40000, odd = 40709;
    EXPECT_NEAR(zoomAt(even, 10), 1, 1e-4);
    EXPECT_NEAR(zoomAt(odd, 10), 1, 1e-4);
    EXPECT_NEAR(zoomAt(even, 0), 1.3, 1e-4);
    EXPECT_NEAR(zoomAt(odd, 0), 1.6, 1e-4);
    EXPECT_NEAR(zoomAt(odd, 0.15f), 1.3, 1e-3);
}

TEST_F(Programme, OtherScenesBoomInTheirOwnWay) {
    EXPECT_EQ(boomAt(85000), 8);
    EXPECT_EQ(uniform("boom", "scale"), 0.2f);
    EXPECT_EQ(boomAt(showtime::greetingShocks.ms), -1) << "greetings come in undisturbed";
    EXPECT_EQ(boomAt(showtime::greetingShocks.ms + 1), 13);
    EXPECT_EQ(boomAt(showtime::roomShocks.ms), -1);
    EXPECT_NEAR(boomAt(showtime::roomShocks.ms + 1), 1.001, 1e-3);
    EXPECT_NEAR(boomAt(165000), 24, 1e-3);
    EXPECT_NEAR(boomAt(showtime::codeCard.ms), 28.474, 1e-3) << "no card yet";
    EXPECT_NEAR(boomAt(showtime::codeCard.ms + 1, 0.15f), 10, 1e-2) << "twenty times half a pulse";
    EXPECT_EQ(uniform("boom", "scale"), 0.1f);
}

TEST_F(Programme, CamerasChangeOnlyAfterTheirThresholds) {
    const auto eyeAt = [this](int ms, int axis) {
        step(ms);
        return demo->camera.eye[axis];
    };
    EXPECT_EQ(eyeAt(showtime::heapSecondView.ms, 1), 100);
    EXPECT_EQ(eyeAt(showtime::heapSecondView.ms + 1, 1), 40);
    EXPECT_NEAR(eyeAt(65000, 0), 34 * sin(0.7 * 65), 1e-3);
    EXPECT_NEAR(eyeAt(75000, 2), 34 * sin(0.7 * 75) + 200, 1e-3);

    const auto robotTarget = [](double t, double height) { return 20 * cos(0.55 * t) + height; };
    step(showtime::robotLowView.ms);
    EXPECT_EQ(demo->camera.target[1], 70);
    step(showtime::robotLowView.ms + 1);
    EXPECT_NEAR(demo->camera.target[1], robotTarget(showtime::robotLowView + 0.001, 100), 1e-3);
    step(showtime::robotHighView.ms + 1);
    EXPECT_NEAR(demo->camera.target[1], robotTarget(showtime::robotHighView + 0.001, 120), 1e-3);

    // From a circle to an ellipse that the beat widens; this bound belongs to the later one.
    EXPECT_NEAR(eyeAt(showtime::roomBreathing.ms - 1, 0), cos(0.4 * (showtime::roomBreathing - 0.001)) * 260,
                1e-3);
    EXPECT_NEAR(eyeAt(showtime::roomBreathing.ms, 2), sin(0.4 * showtime::roomBreathing) * 220 * 1.04, 1e-3);
    step(160000, 0);
    EXPECT_NEAR(demo->camera.eye[0], cos(0.4 * 160) * 260 * 1.04, 1e-2);
    EXPECT_EQ(demo->camera.target[2], 10);
}

TEST_F(Programme, EachCreditCardStandsInItsOwnCorner) {
    const struct {
        int ms;
        int x, y;  // pixels, inside of the card alone
    } cards[] = {{showtime::codeCard.ms + 1, 100, 100}, {showtime::modelsCard.ms - 1, 100, 100},
                 {showtime::modelsCard.ms, 700, 250},   {showtime::gfxCard.ms - 1, 700, 250},
                 {showtime::gfxCard.ms, 700, 500},      {showtime::musicCard.ms - 1, 700, 500},
                 {showtime::musicCard.ms, 100, 500},    {showtime::afterCredits.ms - 1, 100, 500}};
    const auto lit = [](int x, int y) { return readPixel(x, y).r > 100; };
    for (const auto& card : cards) {
        stepSeen(card.ms);
        EXPECT_TRUE(lit(card.x, card.y)) << card.ms;
        EXPECT_FALSE(lit(800 - card.x, card.y)) << card.ms;
        EXPECT_FALSE(lit(card.x, card.y == 250 ? 550 : 600 - card.y)) << card.ms;
    }
    for (int ms : {showtime::codeCard.ms - 1, showtime::codeCard.ms, showtime::afterCredits.ms}) {
        stepSeen(ms);
        for (const auto& card : cards) EXPECT_FALSE(lit(card.x, card.y)) << ms;
    }
}

// At half a unit a second, or 200 pixels.
TEST_F(Programme, GreetingsComeInFromTheRight) {
    for (const auto& [ms, edge] : {std::pair{1000, 733}, {2000, 533}, {3000, 333}}) {
        stepSeen(showtime::greetings.ms + ms);
        EXPECT_LT(readPixel(edge - 5, 300).r, 100) << ms;
        EXPECT_GT(readPixel(edge + 5, 300).r, 200) << ms;
    }
}

TEST_F(Programme, WordAndWhiteFlashesKeepToTheirTimes) {
    const auto brightnessAt = [this](int ms, float sinceBeat) {
        stepSeen(ms, sinceBeat);
        return readPixel(400, 300).r;
    };
    EXPECT_EQ(brightnessAt(showtime::word.ms, 10), 0);
    EXPECT_GT(brightnessAt(showtime::word.ms + 1, 10), 250);
    EXPECT_GT(brightnessAt(141400, 10), 20);
    EXPECT_EQ(brightnessAt(141501, 10), 0);
    EXPECT_EQ(brightnessAt(showtime::roomShocks.ms, 0), 0) << "not yet on beats";
    EXPECT_NEAR(brightnessAt(showtime::roomShocks.ms + 1, 0), 0.76 * 255, 2);
    EXPECT_EQ(brightnessAt(showtime::roomShocks.ms + 1, 0.31f), 0);
    EXPECT_EQ(brightnessAt(showtime::afterCredits.ms + 6501, 0), 0) << "faded";
    EXPECT_NEAR(brightnessAt(192600, 0), 0.76 * 255, 2) << "the last glimpse";
    EXPECT_EQ(brightnessAt(showtime::glimpse.ms + 1, 0.31f), 0);
    EXPECT_EQ(brightnessAt(showtime::glimpseEnd.ms, 0), 0);
}

}  // namespace
