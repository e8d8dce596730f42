// `LaserTunnel`: a ship that spins in the endless tunnel and fires twelve laser beams at its wall.
// Meshes "ship" and "tunnel"; the beams see one segment of the tunnel, the one around the ship.
#pragma once

#include "effects/effect_base.h"
#include "geometry/trace.h"

struct LaserTunnel : EffectBase {
    bool beamsOn = true;      // false draws ship and tunnel alone
    const char* spotTexture;  // key, not owned: the spot where a beam touches the wall
    TraceScene scene;         // instance 0 the segment, moved every frame
    BeamPath path;            // of the beam drawn last; its storage is reused

    LaserTunnel(Demo* demo, const char* spotTexture);

    // Leaves culling off, and lighting off if it drew beams; whether ship and tunnel are lit is the scene's
    // choice.
    void draw() override;
    // One beam from `origin`, a point of the world, along the unit vector `direction`.
    void drawBeam(const Vec3& origin, const Vec3& direction);

    void drawShip();
    // Where the beams see their segment: where it is drawn.
    void moveSegment();
    void drawBeams();
};
