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

}  // namespace
