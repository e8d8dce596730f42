#include "effects/huone.h"

#include <cmath>
#include <numbers>

#include "effects/surface.h"
#include "geometry/matrix4.h"

namespace {

constexpr double pi = std::numbers::pi;
constexpr float tumbleSpeed = 0.7f;  // of the ball's own time to the music's
// Per second of the ball's time, about y and about x: in radians for what beams see, in degrees for what is
// drawn.
constexpr double ballTurnY = 0.3;
constexpr double ballTurnX = 0.4;
// Kept: one step of double precision beside ballTurnY * 180 / pi. Only a comparison of frames might notice.
constexpr double ballTurnYDegrees = 17.1887338539247;
constexpr double ballTurnXDegrees = ballTurnX * 180 / pi;
constexpr Vec3 ballCentre = {0, fitting::ballHeight, 0};

constexpr double sourceAngle = pi / Huone::beamSources;  // radians: half of what lies between two sources
constexpr float beamSpread = 5;

constexpr LightColours dimGreen = {{0.1f, 0.1f, 0.1f, 1}, {0.02f, 0.15f, 0.07f, 1}, {0.07f, 0.09f, 0.1f, 1}};
constexpr LightColours dimBlue = {{0, 0, 0, 1}, {0, 0.03f, 0.04f, 1}, {0.1f, 0.3f, 0.3f, 1}};

// The records carry the places; the colours go straight to GL and hold while the room is drawn, until the
// housekeeping puts the records' own in force.
void lightRoom(Demo& demo) {
    placeLight(demo.lights[0], 10, 30, 20);
    glEnable(GL_LIGHT0);
    setLightColours(GL_LIGHT0, dimGreen);
    placeLight(demo.lights[1], 100, 130, 80);
    glEnable(GL_LIGHT1);
    setLightColours(GL_LIGHT1, dimBlue);
}

}  // namespace

Huone::Huone(Demo* demo, const char* spotTexture) : EffectBase(demo), caster{huoneBeam, spotTexture} {
    caster.scene.addInstance(demo->meshes["huone"]);
    caster.scene.addInstance(demo->meshes["pallero"]);
}

void Huone::draw() {
    glEnable(GL_CULL_FACE);
    glEnable(GL_LIGHTING);
    lightRoom(*demo);
    drawMachines();
    drawRoom();
    moveBall();
    glDisable(GL_CULL_FACE);
    if (beamsOn) drawBeams();
}

void Huone::drawMachines() {
    setMaterial(GL_FRONT, hullMaterial);
    beginHull(*demo);
    glPushMatrix();
    demo->drawMesh("tykki");
    glPopMatrix();
    const float ballTime = time() * tumbleSpeed;
    glPushMatrix();
    glTranslatef(ballCentre.x, ballCentre.y, ballCentre.z);
    glRotatef(ballTime * ballTurnYDegrees, 0, 1, 0);
    glRotatef(ballTime * ballTurnXDegrees, 1, 0, 0);
    demo->drawMesh("pallero2");
    glPopMatrix();
    endHull();
}

void Huone::drawRoom() {
    setMaterial(GL_FRONT, hullMaterial);
    beginHull(*demo, "cubetex", "envmap4");
    // The room shows its own texture alone: the reflection is set up, but stays off.
    glActiveTexture(GL_TEXTURE1);
    glDisable(GL_TEXTURE_2D);
    glActiveTexture(GL_TEXTURE0);
    demo->drawMesh("huone2");
    endHull();
}

void Huone::moveBall() {
    const float ballTime = time() * tumbleSpeed;
    const Matrix4 turn = affineProduct(rotationY(ballTime * ballTurnY), rotationX(ballTime * ballTurnX));
    caster.scene.setInstanceMatrix(1, affineProduct(translation(ballCentre), turn));
}

Ray Huone::beam(int source, int aim) {
    const double angle = 2 * source * sourceAngle;
    const Vec3 origin = {float(std::cos(angle) * fitting::sourceRadius), fitting::sourceHeight,
                         float(std::sin(angle) * fitting::sourceRadius)};
    // Along one line through the ball's centre that never moves.
    const Vec3 spread = {float(std::sin(9.0)), float(std::cos(6.8)), 0};
    Vec3 direction = ballCentre + aim * beamSpread * spread - origin;
    direction.normalize();
    return {origin, direction};
}

void Huone::drawBeams() {
    for (int source = 0; source < beamSources; source++) {
        for (int aim = -1; aim <= 1; aim++) {
            const Ray ray = beam(source, aim);
            caster.draw(*demo, ray.origin, ray.direction);
        }
    }
}
