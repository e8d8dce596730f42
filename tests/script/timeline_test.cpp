#include "script/timeline.h"

#include <cmath>
#include <functional>
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

// What a frame looks like without its motion: whether its camera, its shock or its card is another one.
TEST_F(Programme, ScenesChangeAtTheirOwnThresholds) {
    const auto eye = [this](int ms) {
        step(ms);
        return demo->camera.eye[1];
    };
    const auto target = [this](int ms) {
        step(ms);
        return demo->camera.target[1];
    };
    const auto eyeOnABeat = [this](int ms) {
        step(ms, 0);
        return demo->camera.target[2];
    };
    const auto boom = [this](int ms) { return boomAt(ms, 0); };
    const auto tear = [this](int ms) {
        step(ms);
        return uniform("distort", "time");
    };
    // Where something was drawn over the black rooms of these scenes.
    const auto middle = [this](int ms) {
        stepSeen(ms, 0);
        return float(readPixel(400, 300).r);
    };
    const auto modelsCard = [this](int ms) {
        stepSeen(ms);
        return float(readPixel(700, 250).r);
    };
    const auto musicCard = [this](int ms) {
        stepSeen(ms);
        return float(readPixel(100, 500).r);
    };
    using showtime::Moment;
    const struct {
        const char* name;
        Moment moment;
        std::function<float(int)> look;
        bool isFirst;  // the moment itself belongs to what begins there
    } thresholds[] = {
        {"beat zero", showtime::beatZero, eye, true},
        {"second tear", showtime::secondTear, tear, false},
        {"its end", showtime::secondTearEnd, tear, true},
        {"heap, second view", showtime::heapSecondView, eye, false},
        {"robot, low view", showtime::robotLowView, target, false},
        {"robot, high view", showtime::robotHighView, target, false},
        {"shocks on the greetings", showtime::greetingShocks, boom, false},
        {"word", showtime::word, middle, false},
        {"shocks in the room", showtime::roomShocks, boom, false},
        {"white flashes", showtime::roomShocks, middle, false},
        {"breathing", showtime::roomBreathing, eyeOnABeat, true},
        {"first card", showtime::codeCard, boom, false},
        {"models", showtime::modelsCard, modelsCard, true},
        {"end of the models", showtime::gfxCard, modelsCard, true},
        {"music", showtime::musicCard, musicCard, true},
        {"glimpse", showtime::glimpse, middle, false},
        {"its end", showtime::glimpseEnd, middle, true},
    };
    for (const auto& [name, moment, look, isFirst] : thresholds) {
        const float before = look(moment.ms - 1), at = look(moment.ms), after = look(moment.ms + 1);
        EXPECT_GT(std::fabs(after - before), 0.5f) << name;
        EXPECT_NEAR(at, isFirst ? after : before, 0.1f) << name;
    }
}

}  // namespace
