// `Huone`: a lit room, what stands in it, a tumbling mirror ball above it and fifteen traced laser beams.
// Meshes "huone2", "tykki", "pallero2", and "huone" and "pallero", what the beams see of room and ball.
#pragma once

#include "effects/beams.h"
#include "effects/effect_base.h"
#include "effects/fitting.h"

struct Huone : EffectBase {
    static constexpr int beamSources = fitting::beamSources;

    bool beamsOn = true;  // false draws the room alone
    BeamCaster caster;    // instance 0 the room, 1 the ball, moved every frame

    Huone(Demo* demo, const char* spotTexture);

    // Leaves culling off, lights 0 and 1 placed and enabled in their records but in colours of its own, and
    // lighting off if it drew beams.
    void draw() override;

    // A beam of source 0..4, aimed at the ball's centre (0) or to either side of it (-1, 1).
    static Ray beam(int source, int aim);

    void drawMachines();
    void drawRoom();
    // Where the beams see the ball: where it is drawn.
    void moveBall();
    void drawBeams();
};
