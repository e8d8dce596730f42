// The heap over a run of beats: which boxes turn, when, and how they come to rest.
#include "effects/cube_heap.h"

#include <algorithm>
#include <set>

#include "render/random.h"
#include "tests/effects/effect_window.h"

namespace {

class CubeHeapTest : public EffectWindow {
public:
    CubeHeap heap{nullptr, "laatikko"};

    void SetUp() override {
        EffectWindow::SetUp();
        addTextures({"shiptex", "envmap"});
        addBox("laatikko", 55, 9, 22);
        heap.demo = demo;
        goTo(50);
    }

    // A frame `seconds` after the one before.
    void step(float seconds) {
        goTo(demo->clock.time() + seconds);
        heap.draw();
    }

    int movingCubes() const {
        return int(std::count_if(std::begin(heap.cubes), std::end(heap.cubes), [](const CubeState& cube) {
            return cube.angle != cube.targetAngle || cube.scale != 1;
        }));
    }
};

// The boxes that the next beat picks, asked of the generator and put back.
std::multiset<int> picksFromSeed(unsigned seed) {
    restartRandomNumbers(seed);
    std::multiset<int> picks;
    for (int i = 0; i < 5; i++) picks.insert(randomNumber() % 20);
    restartRandomNumbers(seed);
    return picks;
}

TEST_F(CubeHeapTest, ABeatTurnsItsFivePicksByAQuarter) {
    step(0.016f);
    EXPECT_EQ(movingCubes(), 0);
    // Several seeds, so that some beat picks a box twice.
    bool pickedTwice = false;
    for (unsigned seed = 1; seed <= 6; seed++) {
        const std::multiset<int> picks = picksFromSeed(seed);
        CubeState before[20];
        std::copy_n(heap.cubes, 20, before);
        goTo(demo->clock.time() + 0.5f);
        demo->clock.registerBeat();
        step(0);  // the beat's own frame, with no time passing
        for (int i = 0; i < 20; i++) {
            const bool picked = picks.contains(i);
            EXPECT_EQ(heap.cubes[i].targetAngle, before[i].angle + (picked ? 90 : 0)) << seed << ", " << i;
            EXPECT_EQ(heap.cubes[i].scale, picked ? 1.5f : 1) << seed << ", " << i;
            pickedTwice |= picks.count(i) > 1;
        }
        for (int frame = 0; frame < 60; frame++) step(0.01f);
        EXPECT_EQ(movingCubes(), 0) << "half a second settles everything";
    }
    EXPECT_TRUE(pickedTwice);
}

TEST_F(CubeHeapTest, OneBeatTriggersOnce) {
    const auto turnsAfter = [&](float sinceBeat) {
        for (CubeState& cube : heap.cubes) cube = {0, 0, 1, 1};
        demo->clock.currentTime = sinceBeat;
        demo->clock.delta = 0;
        heap.advance();
        return movingCubes() > 0;
    };
    EXPECT_FALSE(turnsAfter(0.06f)) << "0.8 is not above 0.8";
    EXPECT_EQ(demo->clock.beatPulse(), 0.8f);
    EXPECT_TRUE(turnsAfter(0.059f));
    EXPECT_FALSE(turnsAfter(0)) << "the latch is set";
    EXPECT_FALSE(turnsAfter(0.12f));
    EXPECT_EQ(demo->clock.beatPulse(), 0.6f);
    EXPECT_FALSE(turnsAfter(0)) << "0.6 is not below 0.6";
    EXPECT_FALSE(turnsAfter(0.125f));
    EXPECT_TRUE(turnsAfter(0)) << "released";
}

TEST_F(CubeHeapTest, MotionFollowsTheFrameTime) {
    CubeState& cube = heap.cubes[2];
    cube = {90, 180, 1.5f, 1};
    step(0);
    EXPECT_EQ(cube.angle, 90) << "nothing moves while the music is paused";
    EXPECT_EQ(cube.scale, 1.5f);
    step(0.25f);
    EXPECT_NEAR(cube.angle, 210, 1e-2f) << "past the target for a frame";
    EXPECT_NEAR(cube.scale, 0.75f, 1e-4f);
    step(0.01f);
    EXPECT_EQ(cube.angle, 180);
    EXPECT_EQ(cube.scale, 1);

    cube.targetAngle = 270;
    step(-0.125f);
    EXPECT_NEAR(cube.angle, 120, 1e-2f) << "a seek backwards turns it back";
    step(1);
    step(0.01f);
    EXPECT_EQ(cube.angle, 270);
}

}  // namespace
