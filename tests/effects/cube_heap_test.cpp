// The heap over a run of beats: which boxes turn, when, and how they come to rest.
#include "effects/cube_heap.h"

#include <set>

#include "render/random.h"
#include "tests/effects/effect_window.h"

namespace {

class CubeHeapTest : public EffectWindow {
public:
    void SetUp() override {
        EffectWindow::SetUp();
        addTextures({"shiptex", "envmap"});
        addBox("laatikko", 55, 9, 22);
    }

    // A frame `seconds` after the one before.
    void step(CubeHeap& heap, float seconds) {
        goTo(demo->clock.time() + seconds);
        heap.draw();
    }
};

int movingCubes(const CubeHeap& heap) {
    int count = 0;
    for (const CubeState& cube : heap.cubes) count += cube.angle != cube.targetAngle || cube.scale != 1;
    return count;
}

// The boxes that the next beat picks, asked of the generator and put back.
std::multiset<int> picksFromSeed(unsigned seed) {
    restartRandomNumbers(seed);
    std::multiset<int> picks;
    for (int i = 0; i < 5; i++) picks.insert(randomNumber() % 20);
    restartRandomNumbers(seed);
    return picks;
}

TEST_F(CubeHeapTest, ABeatTurnsItsFivePicksByAQuarter) {
    CubeHeap heap(demo, "laatikko");
    goTo(50);
    step(heap, 0.016f);
    EXPECT_EQ(movingCubes(heap), 0);
    // Several seeds, so that some beat picks a box twice.
    bool pickedTwice = false;
    for (unsigned seed = 1; seed <= 6; seed++) {
        const std::multiset<int> picks = picksFromSeed(seed);
        CubeState before[20];
        std::copy_n(heap.cubes, 20, before);
        goTo(demo->clock.time() + 0.5f);
        demo->clock.registerBeat();
        demo->clock.update();  // the beat's own frame, with no time passing
        heap.draw();
        for (int i = 0; i < 20; i++) {
            const bool picked = picks.contains(i);
            EXPECT_EQ(heap.cubes[i].targetAngle, before[i].angle + (picked ? 90 : 0)) << seed << ", " << i;
            EXPECT_EQ(heap.cubes[i].scale, picked ? 1.5f : 1) << seed << ", " << i;
            pickedTwice |= picks.count(i) > 1;
        }
        for (int frame = 0; frame < 60; frame++) step(heap, 0.01f);
        EXPECT_EQ(movingCubes(heap), 0) << "half a second settles everything";
    }
    EXPECT_TRUE(pickedTwice);
}

TEST_F(CubeHeapTest, OneBeatTriggersOnce) {
    CubeHeap heap(demo, "laatikko");
    const auto drawAtPulse = [&](float sinceBeat) {
        demo->clock.lastBeatTime = 0;
        demo->clock.currentTime = sinceBeat;
        demo->clock.delta = 0;
        const CubeState before = heap.cubes[0];
        for (CubeState& cube : heap.cubes) cube = {before.angle, before.angle, 1, 1};
        heap.draw();
        return movingCubes(heap) > 0;
    };
    demo->clock.currentTime = 0.06f;
    ASSERT_EQ(demo->clock.beatPulse(), 0.8f);
    EXPECT_FALSE(drawAtPulse(0.06f)) << "0.8 is not above 0.8";
    EXPECT_TRUE(drawAtPulse(0.059f));
    EXPECT_FALSE(drawAtPulse(0)) << "the latch is set";
    demo->clock.currentTime = 0.12f;
    ASSERT_EQ(demo->clock.beatPulse(), 0.6f);
    EXPECT_FALSE(drawAtPulse(0.12f));
    EXPECT_FALSE(drawAtPulse(0)) << "0.6 is not below 0.6";
    EXPECT_FALSE(drawAtPulse(0.125f));
    EXPECT_TRUE(drawAtPulse(0)) << "released";
}

TEST_F(CubeHeapTest, MotionFollowsTheFrameTime) {
    CubeHeap heap(demo, "laatikko");
    goTo(50);
    heap.cubes[2] = {90, 180, 1.5f, 1};
    step(heap, 0);
    EXPECT_EQ(heap.cubes[2].angle, 90) << "nothing moves while the music is paused";
    EXPECT_EQ(heap.cubes[2].scale, 1.5f);
    step(heap, 0.25f);
    EXPECT_NEAR(heap.cubes[2].angle, 210, 1e-2f) << "past the target for a frame";
    EXPECT_NEAR(heap.cubes[2].scale, 0.75f, 1e-4f);
    step(heap, 0.01f);
    EXPECT_EQ(heap.cubes[2].angle, 180);
    EXPECT_EQ(heap.cubes[2].scale, 1);

    heap.cubes[2].targetAngle = 270;
    step(heap, -0.125f);
    EXPECT_NEAR(heap.cubes[2].angle, 120, 1e-2f) << "a seek backwards turns it back";
    step(heap, 1);
    step(heap, 0.01f);
    EXPECT_EQ(heap.cubes[2].angle, 270);
}

TEST_F(CubeHeapTest, BulgesAcrossTheBoxInEitherTurn) {
    CubeHeap heap(demo, "laatikko");
    for (CubeState& cube : heap.cubes) cube.scale = 1.5f;
    heap.draw();
    ASSERT_EQ(drawn.size(), 20u);
    for (int i = 0; i < 20; i++) {
        // Either way the mesh's own x axis is the one that grows: columns of the matrix are where axes go.
        const float* m = drawn[i].modelView.m;
        EXPECT_NEAR(Vec3({m[0], m[1], m[2]}).length(), 1.5f, 1e-5f) << i;
        EXPECT_NEAR(Vec3({m[8], m[9], m[10]}).length(), 1, 1e-5f) << i;
        EXPECT_NEAR(std::fabs(m[i % 2 == 0 ? 2 : 0]), 1.5f, 1e-5f) << i;
        EXPECT_EQ(m[13], 20.f * float(i));
    }
}

}  // namespace
