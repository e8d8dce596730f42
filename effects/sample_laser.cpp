#include "effects/sample_laser.h"

#include <cmath>
#include <numbers>

#include "effects/beams.h"

SampleLaser::SampleLaser(Demo* demo, const char* meshKey, int32_t unused)
    : EffectBase(demo), meshKey(meshKey), unused(unused), path(beamCapacity) {}

Vec3 SampleLaser::direction() const {
    using std::numbers::pi;
    const double around = 2 * pi * demo->controls[0];
    const double ahead = pi * demo->controls[1];
    Vec3 direction = {float(std::sin(around)), float(std::cos(around)), float(std::sin(ahead))};
    direction.normalize();
    return direction;
}

void SampleLaser::draw() {
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_CULL_FACE);
    demo->drawMesh(meshKey);

    if (scene.instances.count == 0) scene.addInstance(demo->meshes[meshKey]);
    traceBeam(scene, {0, 0, 0}, direction(), beamBounces, path);
    glDisable(GL_LIGHTING);
    glColor3f(1, 1, 1);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, demo->texture("pinkLaser"));
    const float step = 1.0f / path.count;
    glBegin(GL_LINE_STRIP);
    // Without the last point: a beam that gets away ends where it last touched the mesh.
    for (int i = 0; i < path.count - 1; i++) {
        glTexCoord2f(i * step, (i + 1) * step);
        glVertex3fv(&path[i].point.x);
    }
    glEnd();
    glColor3f(1, 1, 1);
}
