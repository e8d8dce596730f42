#include "render/demo.h"

namespace {

constexpr float nearPlane = 0.1f;
constexpr double farPlane = 10000;

}  // namespace

void Demo::setCameraTarget(float x, float y, float z) {
    camera.target[0] = x;
    camera.target[1] = y;
    camera.target[2] = z;
}

void Demo::setCameraEye(float x, float y, float z) {
    camera.eye[0] = x;
    camera.eye[1] = y;
    camera.eye[2] = z;
}

void Demo::applyCamera(bool leftEye) {
    // Eye and target are moved in opposite directions, so the two views toe in.
    const float shift = !camera.stereo ? 0 : leftEye ? -camera.eyeSeparation : camera.eyeSeparation;
    glLoadIdentity();
    gluLookAt(camera.eye[0] + shift, camera.eye[1], camera.eye[2], camera.target[0] - shift, camera.target[1],
              camera.target[2], 0, 1, 0);
    const GLboolean red = !camera.stereo || leftEye;
    const GLboolean greenAndBlue = !camera.stereo || !leftEye;
    glColorMask(red, greenAndBlue, greenAndBlue, 1);

    glPushMatrix();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    // Aspect 1 whatever the window: a square view is what targets hold and screen quads stretch.
    gluPerspective(camera.fov, 1.0, nearPlane, farPlane);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glPopMatrix();
}
