#include "effects/soft_shadow.h"

namespace {

constexpr float spinSpeed = 90;  // degrees per second
constexpr Blur shadowBlur = {.iterations = 4, .xOffset = 0.25f, .yOffset = 0.25f, .size = 256};

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
    demo->blur("rtt5", "rtt6", shadowBlur);
    // Where the blurred shadow would be drawn: empty, and kept for the order of the calls.
    glBegin(GL_QUADS);
    glEnd();
    glPopMatrix();
}
