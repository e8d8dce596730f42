// `LaserTunnel`: a ship that spins in the endless tunnel and fires twelve laser beams at its wall.
// Meshes "ship" and "tunnel"; the beams see one segment of the tunnel, the one around the ship.
#pragma once

#include "effects/beams.h"
#include "effects/effect_base.h"

struct LaserTunnel : EffectBase {
    bool beamsOn = true;  // false draws ship and tunnel alone
    BeamCaster caster;    // instance 0 the segment, moved every frame

    LaserTunnel(Demo* demo, const char* spotTexture);

    // Leaves culling off, and lighting off if it drew beams; whether ship and tunnel are lit is the scene's
    // choice.
    void draw() override;

    void drawShip();
    // Where the beams see their segment: where it is drawn.
    void moveSegment();
    void drawBeams();
};
