#include "effects/fake_stripes.h"

#include <cmath>

#include "effects/surface.h"

namespace {

constexpr Material outside = {{0.2f, 0, 0, 1}, {0.7f, 0.7f, 0.7f, 1}, {1, 1, 1, 1}, 20};
constexpr Material inside = {{0.2f, 0, 0, 1}, {0.6f, 0.1f, 0, 1}, {1, 1, 1, 1}, 20};
constexpr float twoSided = 1;
// Texture coordinates from a point in eye space: S stands still, T repeats every 500 units of height.
constexpr float stripePlaneS[] = {0, 0, 0, 1};
constexpr float stripePlaneT[] = {0, 0.002f, 0, 1};
constexpr float solid = 0.5f;  // alpha above which the model is seen

// An eye plane is taken through the model-view matrix in force when it is given: the camera's, here.
void projectStripes(GLuint texture) {
    glActiveTexture(GL_TEXTURE2);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture);
    glEnable(GL_TEXTURE_GEN_S);
    glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_EYE_LINEAR);
    glTexGenfv(GL_S, GL_EYE_PLANE, stripePlaneS);
    glEnable(GL_TEXTURE_GEN_T);
    glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_EYE_LINEAR);
    glTexGenfv(GL_T, GL_EYE_PLANE, stripePlaneT);
    glActiveTexture(GL_TEXTURE0);
}

}  // namespace

FakeStripes::FakeStripes(Demo* demo, const char* meshKey, const char* stripeTexture)
    : EffectBase(demo), meshKey(meshKey), stripeTexture(stripeTexture) {}

void FakeStripes::drawAt(float angle, float radius) {
    const float t = time();
    glPushMatrix();
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glLightModelfv(GL_LIGHT_MODEL_TWO_SIDE, &twoSided);
    setMaterial(GL_FRONT, outside);
    setMaterial(GL_BACK, inside);
    beginHull(*demo);
    projectStripes(demo->texture(stripeTexture));
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, solid);

    glTranslatef(std::cos(angle) * radius, std::sin(angle) * radius, 0);
    glRotatef(std::sin(t * 0.3f) * 180, 0, 1, 0);
    glRotatef(std::cos(t * 0.2f) * 290, 0, 1, 1);
    demo->drawMesh(meshKey);

    glDisable(GL_LIGHTING);
    glDisable(GL_LIGHT0);
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
    stopGeneratedTexture(GL_TEXTURE2);
    stopGeneratedTexture(GL_TEXTURE1);
    glActiveTexture(GL_TEXTURE0);
    glPopMatrix();
}
