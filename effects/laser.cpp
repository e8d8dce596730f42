#include "effects/laser.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float diffuse[] = {0.3f, 0.4f, 0.5f, 1};
constexpr float noSpecular[] = {0, 0, 0, 0};

Matrix4 toMatrix(const float* elements) {
    Matrix4 matrix;
    std::copy_n(elements, 16, matrix.m);
    return matrix;
}

}  // namespace

Laser::Laser(Demo* demo, const char* spotTexture) : EffectBase(demo), caster{laserBeam, spotTexture} {}

void Laser::addMesh(const char* meshKey, const float* matrix) {
    caster.scene.addInstance(demo->meshes[meshKey]);
    if (matrix) setMeshMatrix(caster.scene.instances.count - 1, matrix);
}

void Laser::setMeshMatrix(int index, const float* matrix) {
    caster.scene.setInstanceMatrix(index, toMatrix(matrix));
}

void Laser::draw() {
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    glMaterialfv(GL_FRONT, GL_SPECULAR, noSpecular);
    glMaterialf(GL_FRONT, GL_SHININESS, 0);
    for (float z : emitterZ) {
        for (int i = 0; i < beamsPerEmitter; i++) {
            const double angle = 2 * i * halfBeamAngle;
            // Sine first: this fan starts along y.
            caster.draw(*demo, {0, 0, z}, {float(std::sin(angle)), float(std::cos(angle)), 0});
        }
    }
    glDisable(GL_CULL_FACE);
}
