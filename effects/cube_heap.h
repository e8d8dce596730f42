// `CubeHeap`: a stack of twenty boxes that spins as a whole; on a beat five of them, picked at random, bulge
// and make a quarter turn.
#pragma once

#include "effects/effect_base.h"

constexpr int cubeCount = 20;

struct CubeState {
    float angle;  // degrees about y; grows without bound
    float targetAngle;
    float scale;  // across the box; 1 at rest
    float targetScale;
};

struct CubeHeap : EffectBase {
    int32_t unused = 0;          // kept for the order of the fields; never read
    CubeState cubes[cubeCount];  // from the bottom up
    const char* meshKey;         // not owned
    bool beatLatch = false;      // from a beat that turned boxes until the pulse has fallen below 0.6

    CubeHeap(Demo* demo, const char* meshKey);

    // Motion is integrated: it advances by the frame's time whenever the heap is drawn. Leaves depth testing
    // on.
    void draw() override;
    void advance() override;

    void turnOnBeat();
    void advanceCube(CubeState& cube);
};
