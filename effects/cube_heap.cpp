#include "effects/cube_heap.h"

#include "effects/fitting.h"
#include "effects/surface.h"
#include "render/random.h"

namespace {

constexpr int cubesPerBeat = 5;
constexpr float beatOn = 0.8f;     // pulse above which a beat turns boxes
constexpr float beatOff = 0.6f;    // pulse below which the next beat may
constexpr float quarterTurn = 90;  // degrees
constexpr float bulge = 1.5f;
constexpr float turnSpeed = 480;  // degrees per second
constexpr float settleSpeed = 3;  // of the bulge, per second
constexpr float spinSpeed = 25;   // of the heap, degrees per second

}  // namespace

CubeHeap::CubeHeap(Demo* demo, const char* meshKey) : EffectBase(demo), meshKey(meshKey) {
    for (int i = 0; i < cubeCount; i++) {
        const float angle = i % 2 == 0 ? quarterTurn : 0;
        cubes[i] = {angle, angle, 1, 1};
    }
}

void CubeHeap::turnOnBeat() {
    if (beatPulse() > beatOn && !beatLatch) {
        beatLatch = true;
        for (int i = 0; i < cubesPerBeat; i++) {
            CubeState& cube = cubes[randomNumber() % cubeCount];
            // From where the box is, not where it is going: picked twice it still makes one quarter turn.
            cube.targetAngle = cube.angle + quarterTurn;
            cube.scale = bulge;
        }
    }
    if (beatPulse() < beatOff) beatLatch = false;
}

// Passes its target for one frame rather than stopping on it, and stands on it from the next frame on.
void CubeHeap::advanceCube(CubeState& cube) {
    if (cube.angle < cube.targetAngle)
        cube.angle += frameTime() * turnSpeed;
    else
        cube.angle = cube.targetAngle;
    if (cube.scale > cube.targetScale)
        cube.scale -= frameTime() * settleSpeed;
    else
        cube.scale = cube.targetScale;
}

void CubeHeap::advance() {
    turnOnBeat();
    for (CubeState& cube : cubes) advanceCube(cube);
}

void CubeHeap::draw() {
    advance();
    setMaterial(GL_FRONT, hullMaterial);
    beginHull(*demo);
    glEnable(GL_DEPTH_TEST);
    glPushMatrix();
    glRotatef(time() * spinSpeed, 0, 1, 0);
    for (int i = 0; i < cubeCount; i++) {
        const CubeState& cube = cubes[i];
        glPushMatrix();
        glTranslatef(0, fitting::storey * i, 0);
        const bool turned = int(cube.angle) % 180 > 89;
        glScalef(turned ? 1 : cube.scale, 1, turned ? cube.scale : 1);
        glRotatef(cube.angle, 0, 1, 0);
        demo->drawMesh(meshKey);
        glPopMatrix();
    }
    endHull();
    glPopMatrix();
}
