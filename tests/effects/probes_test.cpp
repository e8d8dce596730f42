// The rule that joins the probes.
#include "effects/probes.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct ProbeLinks : testing::Test {
    Probes probes{nullptr};

    // All out of each other's reach but for those that a test moves.
    void SetUp() override {
        for (int i = 0; i < probeCount; i++) probes.positions[i] = {2e6f * float(i), 0, 0};
    }
    std::vector<int> links() {
        probes.linkProbes();
        return {probes.links, probes.links + probeCount};
    }
};

TEST_F(ProbeLinks, GoToTheFirstOfAllWhereNobodyIsWithinReach) {
    EXPECT_EQ(links(), std::vector<int>(probeCount, 0));
}

TEST_F(ProbeLinks, GoToTheFirstOfThoseAtOneDistance) {
    for (int i = 1; i < 5; i++) probes.positions[i] = {i % 2 ? 8.f : 0, i % 2 ? 0 : 8.f, 0};
    EXPECT_EQ(links()[0], 1);
}

// Probe 1 was nearest to probe 0 until 2 came, so that pair is taken, and 1 goes to 2, which is farther away.
// Then 2 finds both pairs taken, and goes to 3.
TEST_F(ProbeLinks, TakeEveryPairThatLedTheSearch) {
    probes.positions[1] = {10, 0, 0};
    probes.positions[2] = {-5, 0, 0};
    probes.positions[3] = {0, 900, 0};
    const std::vector<int> all = links();
    EXPECT_EQ((std::vector<int>{all.begin(), all.begin() + 4}), (std::vector{2, 2, 3, 0}));
}

}  // namespace
