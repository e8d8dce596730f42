#include "effects/soft_shadow.h"

namespace {

constexpr float spinSpeed = 90;  // degrees per second
constexpr int blurIterations = 4;
constexpr float blurOffset = 0.25f;  // pixels
constexpr float blurStrength = 1;
constexpr int blurSize = 256;  // pixels: the side of the corner that is blurred

}  // namespace

void SoftShadow::drawBox() {
    glTranslatef(0, 100, 10);
    glRotatef(spinSpeed * time(), 1, 1, 1);
    demo->drawMesh("laatikko");
}

void SoftShadow::draw() {
    glPushMatrix();
    glDisable(GL_TEXTURE_2D);
    glColor3f(1, 1, 0);
    drawBox();
    glEnable(GL_TEXTURE_2D);
    demo->copyScreen("rtt5");
    demo->blur("rtt5", "rtt6", blurIterations, blurOffset, blurOffset, blurStrength, blurSize);
    // Where the blurred shadow would be drawn.
    glBegin(GL_QUADS);
    glEnd();
    glPopMatrix();
}
