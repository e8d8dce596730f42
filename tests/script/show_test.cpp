#include "tests/show.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <string>

#include "effects/effect_base.h"
#include "script/scenes.h"
#include "script/show_times.h"
#include "tools/capture/stepped_show.h"

namespace {

// Every key that something has looked up; a miss enters it.
std::vector<std::string> keys() {
    std::vector<std::string> all;
    const auto add = [&](const auto& table) {
        for (const auto& entry : table) all.push_back(entry.first);
    };
    add(demo->effects), add(demo->textureNames), add(demo->shaders), add(demo->meshes);
    return all;
}

std::vector<GLint> depthsOfStacks() {
    return {stateOf(GL_MODELVIEW_STACK_DEPTH), stateOf(GL_PROJECTION_STACK_DEPTH),
            stateOf(GL_TEXTURE_STACK_DEPTH), stateOf(GL_ATTRIB_STACK_DEPTH),
            stateOf(GL_CLIENT_ATTRIB_STACK_DEPTH)};
}

TEST_F(Show, SurvivesAnyWayOfSeekingAndFindsAllItsResources) {
    const std::vector<std::string> loaded = keys();
    const std::vector<GLint> depths = depthsOfStacks();
    std::vector<int> seconds(showtime::end.ms / 1000 + 1);
    std::iota(seconds.begin(), seconds.end(), 0);
    std::shuffle(seconds.begin(), seconds.end(), std::mt19937(1));
    for (const int second : seconds) {
        {
            const OnePixel unseen;
            drawMoment(second * 1000, second * 1000);
        }
        ASSERT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << second;
        ASSERT_EQ(depthsOfStacks(), depths) << second;
        ASSERT_EQ(stateOf(GL_MATRIX_MODE), GL_MODELVIEW) << second;
        ASSERT_EQ(keys(), loaded) << second << ": a key was looked up in vain";
    }
    EXPECT_GT(drawMoment(100000).litCount(), 2000);
}

// As the desk is under an author's hands: a slip of the pen must not end it.
TEST_F(Show, AnEffectThatNobodyMadeDrawsNothing) {
    effectOf("probesx").draw();
    effectOf("probesx").drawAt(1, 1);
    EXPECT_EQ(readScreen().litCount(), 0);
    EXPECT_EQ(demo->effects.at("probesx"), nullptr) << "the registry keeps the key";
    demo->effects.erase("probesx");
}

TEST_F(Show, TheScenesLeftOutOfTheProgrammeCanBeDrawn) {
    placeCamera();
    sceneStripesOnly();
    EXPECT_GT(readScreen().litCount(), 500);
    demo->textureNames.erase("fade");
    demo->textureNames.erase("greets");
    for (auto* scene : {sceneFade, sceneGreets}) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        scene();
        EXPECT_GT(readScreen().litCount(), 500) << "the loading picture, for a name that is none";
    }
    EXPECT_EQ(demo->textureNames.count("fade") + demo->textureNames.count("greets"), 2u);
}

}  // namespace
