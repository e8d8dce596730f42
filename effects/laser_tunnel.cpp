#include "effects/laser_tunnel.h"

#include <cmath>
#include <numbers>

#include "effects/surface.h"
#include "effects/tunnel_segments.h"
#include "geometry/matrix4.h"

namespace {

constexpr double pi = std::numbers::pi;
constexpr double firstBeamAngle = pi / 2;  // radians

}  // namespace

LaserTunnel::LaserTunnel(Demo* demo, const char* spotTexture)
    : EffectBase(demo), caster{laserTunnelBeam, spotTexture} {
    caster.scene.addInstance(demo->meshes["tunnel"]);
}

void LaserTunnel::draw() {
    glEnable(GL_CULL_FACE);
    drawShip();
    drawTunnelSegments(*demo, time());
    moveSegment();
    glDisable(GL_CULL_FACE);
    if (beamsOn) drawBeams();
}

void LaserTunnel::drawShip() {
    setMaterial(GL_FRONT, hullMaterial);
    beginHull(*demo);
    glPushMatrix();
    glRotatef(time() * 180 * (1 / pi), 0, 0, 1);
    demo->drawMesh("ship");
    glPopMatrix();
    endHull();
}

void LaserTunnel::moveSegment() {
    const auto [phase, beat] = tunnelMotion(time());
    const Vec3 place = {0, 0, segmentLength * phase - segmentLength / 2};
    const Matrix4 turn = rotationZ(segmentTwist(time(), beat) * twistRadians);
    caster.scene.setInstanceMatrix(0, affineProduct(translation(place), turn));
}

void LaserTunnel::drawBeams() {
    for (float z : emitterZ) {
        for (int i = 0; i < beamsPerEmitter; i++) {
            const double angle = 2 * i * halfBeamAngle + firstBeamAngle + time();
            caster.draw(*demo, {0, 0, z}, {float(std::cos(angle)), float(std::sin(angle)), 0});
        }
    }
}
