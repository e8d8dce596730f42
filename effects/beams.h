// Laser beams: the path that the tracer found, as a line that glows and fades along its way, with a spot of
// light wherever it touched a surface.
#pragma once

#include <GL/glew.h>

#include <numbers>
#include <span>

#include "effects/glowing_lines.h"
#include "geometry/trace.h"
#include "render/demo.h"

constexpr int beamBounces = 5;    // surfaces that a beam touches at most
constexpr int beamCapacity = 16;  // instances, and points of a path, that there is room for at once

struct BeamStyle {
    float spotSize;  // half the side, model units (where the surface's normal has unit length)
    std::span<const GlowStroke> strokes;
};

constexpr GlowStroke threePasses[] = {
    {1, 1, 0.5f, 0.8f, 1}, {4, 1, 0.3f, 0.8f, 0.6f}, {8, 1, 0.2f, 0.8f, 0.2f}};
constexpr GlowStroke twoPasses[] = {{1, 1, 0.4f, 0.8f, 1}, {4, 1, 0, 0.8f, 0.4f}};
constexpr BeamStyle huoneBeam = {4, threePasses};
constexpr BeamStyle laserTunnelBeam = {10, threePasses};
constexpr BeamStyle laserBeam = {8, twoPasses};

// The fans of a laser craft: two emitters on its axis, beams in six directions around it from each.
constexpr float emitterZ[] = {52, -52};  // model units
constexpr int beamsPerEmitter = 6;
// Radians: half of what lies between two beams.
constexpr double halfBeamAngle = std::numbers::pi / beamsPerEmitter;

// A path of at least two points. Leaves lighting and blending off, texturing on, the spot's texture bound and
// the line width of the last stroke.
void drawBeamPath(const BeamPath& path, const BeamStyle& style, GLuint spotTexture);

// What an effect that fires beams holds: what they bounce off, and how they look.
struct BeamCaster {
    const BeamStyle& style;
    const char* spotTexture;         // key, not owned: the spot where a beam touches a surface
    TraceScene scene{beamCapacity};  // empty until the effect adds instances
    BeamPath path{beamCapacity};     // of the beam drawn last; its storage is reused

    // One beam from `origin`, a point of the world, along the unit vector `direction`. Leaves what
    // drawBeamPath does.
    void draw(Demo& demo, const Vec3& origin, const Vec3& direction);
};
