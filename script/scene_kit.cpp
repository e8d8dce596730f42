#include "script/scene_kit.h"

#include "effects/surface.h"
#include "render/demo.h"

int beatNumber(float time) {
    return int(beatPositionAt(time));
}

void lightFrom(float x, float y, float z) {
    placeLight(demo->lights[0], x, y, z);
}

void useBoom(float distort, float scale) {
    demo->useShader("boom");
    demo->setUniform1f("boom", "distort", distort);
    demo->setUniform1f("boom", "scale", scale);
}

void glowScreen(const char* target, float strength) {
    demo->copyScreen("rtt1");
    demo->glow("rtt1", target, 2, strength);
}

void drawPicture(const char* texture, const PictureQuad& quad) {
    glPushMatrix();
    glLoadIdentity();
    glTranslatef(quad.x, quad.y, quad.z);
    glDisable(GL_LIGHTING);
    glBindTexture(GL_TEXTURE_2D, demo->texture(texture));
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(quad.sourceFactor, quad.targetFactor);
    glDisable(GL_CULL_FACE);
    glEnable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    glTexCoord2f(0, 1);
    glVertex2f(-quad.halfWidth, -1);
    glTexCoord2f(1, 1);
    glVertex2f(quad.halfWidth, -1);
    glTexCoord2f(1, 0);
    glVertex2f(quad.halfWidth, 1);
    glTexCoord2f(0, 0);
    glVertex2f(-quad.halfWidth, 1);
    glEnd();
    glPopMatrix();
}
