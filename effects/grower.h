// `Grower`: a tree of points that grows by one random node at a time and bobs up and down as one. Not in the
// show.
#pragma once

#include <vector>

#include "effects/effect_base.h"

struct GrowerNode {
    int32_t children[4];  // indices of nodes; the first `childCount` hold
    int32_t childCount;
    float position[3];
};

struct Grower : EffectBase {
    int32_t nodeCount = 1;
    std::vector<GrowerNode> nodes;  // node 0 is the root, at the origin

    explicit Grower(Demo* demo);

    // Adds a node to a random one that has room; it starts exactly on its parent. Without bound.
    void grow();
    // Points of 15 pixels in the colour, texture and blending in force.
    void draw() override;
};
