// The probes' paths and the rule that joins them.
#include "effects/probes.h"

#include <cmath>
#include <random>
#include <set>
#include <utility>

#include "tests/effects/effect_window.h"

namespace {

class ProbesTest : public EffectWindow {
public:
    Probes probes{nullptr};

    void SetUp() override {
        EffectWindow::SetUp();
        probes.demo = demo;
    }
};

double distance(const Vec3& a, const Vec3& b) {
    return std::hypot(double{b.x} - a.x, double{b.y} - a.y, double{b.z} - a.z);
}

// The rule from its definition: in probe order, the candidates of a probe are those it isn't paired with yet;
// each candidate nearer than all before it becomes a pair, and the last of them is the link.
std::vector<int> linksByDefinition(const Vec3* positions) {
    std::set<std::pair<int, int>> pairs;
    std::vector<int> links;
    for (int i = 0; i < probeCount; i++) {
        std::vector<int> candidates;
        for (int j = 0; j < probeCount; j++)
            if (j != i && !pairs.contains(std::minmax(i, j))) candidates.push_back(j);
        std::vector<int> records;
        for (size_t c = 0; c < candidates.size(); c++) {
            double nearestBefore = 999999;
            for (size_t b = 0; b < c; b++)
                nearestBefore = std::min(nearestBefore, distance(positions[i], positions[candidates[b]]));
            if (distance(positions[i], positions[candidates[c]]) < nearestBefore)
                records.push_back(candidates[c]);
        }
        for (int j : records) pairs.insert(std::minmax(i, j));
        links.push_back(records.empty() ? 0 : records.back());
    }
    return links;
}

std::vector<int> linksOf(Probes& probes) {
    probes.linkProbes();
    return {probes.links, probes.links + probeCount};
}

TEST_F(ProbesTest, LinksFollowTheGreedyRule) {
    for (float seconds : {0.f, 78.03f, 81.5f, 85.25f, 90.125f, 93.28f}) {
        goTo(seconds);
        probes.placeProbes();
        EXPECT_EQ(linksOf(probes), linksByDefinition(probes.positions)) << seconds;
    }
    std::mt19937 random(1);
    for (int round = 0; round < 200; round++) {
        for (Vec3& p : probes.positions)
            for (float* coordinate : {&p.x, &p.y, &p.z}) *coordinate = float(random() % 1000) / 4;
        EXPECT_EQ(linksOf(probes), linksByDefinition(probes.positions)) << "round " << round;
    }
}

TEST_F(ProbesTest, LinksOfTiesAndLoneProbes) {
    // Probe 0 in the middle, all others equally far: the first of them wins.
    for (int i = 0; i < probeCount; i++) {
        const float angle = float(i) * 1.5707964f;
        probes.positions[i] = {std::round(std::cos(angle)) * 8, std::round(std::sin(angle)) * 8, 0};
    }
    probes.positions[0] = {0, 0, 0};
    EXPECT_EQ(linksOf(probes)[0], 1);

    for (int i = 0; i < probeCount; i++) probes.positions[i] = {2e6f * float(i), 0, 0};
    EXPECT_EQ(linksOf(probes), std::vector<int>(probeCount, 0)) << "nobody is within reach";
}

TEST_F(ProbesTest, ProbesDriftOnTheirPaths) {
    goTo(0);
    probes.placeProbes();
    const auto expectAt = [&](int probe, float x, float y, float z) {
        EXPECT_NEAR(probes.positions[probe].x, x, 1e-4f) << probe;
        EXPECT_NEAR(probes.positions[probe].y, y, 1e-4f) << probe;
        EXPECT_NEAR(probes.positions[probe].z, z, 1e-4f) << probe;
    };
    expectAt(0, 100, 0, 20);
    expectAt(1, 0, -30, 50);
    expectAt(2, -80, 0, -90);
    expectAt(10, -100, 30, 0);
    expectAt(12, -50, 30, -30);
    goTo(80);
    probes.placeProbes();
    expectAt(0, 90.819170f, 19.787165f, 20);
    expectAt(11, -33.998762f, 20.927723f, 59.081271f);
    expectAt(3, 90, -80, -50);
}

TEST_F(ProbesTest, DrawsEveryProbeAndItsLinesUnderItsOwnCameraAndLights) {
    addTextures({"shiptex", "envmap"});
    addBox("palikka", 30, 30, 30);
    goTo(85);
    const Feedback picture = feedbackOf([&] { probes.draw(); });
    ASSERT_EQ(drawn.size(), size_t{probeCount});
    Matrix4 view;
    glGetFloatv(GL_MODELVIEW_MATRIX, view.m);
    for (int i = 0; i < probeCount; i++) {
        EXPECT_TRUE(drawn[i].lit);
        const Vec3 place = transformPoint(view, probes.positions[i]);
        for (int axis = 0; axis < 3; axis++)
            EXPECT_NEAR(drawn[i].modelView.m[12 + axis], (&place.x)[axis], 1e-3f);
        EXPECT_NEAR(
            Vec3({drawn[i].modelView.m[0], drawn[i].modelView.m[1], drawn[i].modelView.m[2]}).length(), 0.3f,
            1e-5f);
    }
    const size_t third = picture.lines.size() / 3;
    ASSERT_GT(third, 5u) << "most links are in view";
    for (size_t i = 0; i < picture.lines.size(); i++)
        EXPECT_FLOAT_EQ(picture.lines[i][0].a, i < third ? 1.f : i < 2 * third ? 0.6f : 0.3f);
    EXPECT_FALSE(demo->lights[0].enabled);
    EXPECT_FALSE(demo->lights[1].enabled);
    EXPECT_EQ(demo->lights[1].position[0], 300);
    EXPECT_EQ(demo->clock.frameCount, 2) << "it housekeeps twice";
}

}  // namespace
