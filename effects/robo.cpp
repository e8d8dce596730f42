#include "effects/robo.h"

#include <cmath>
#include <numbers>

#include "effects/fitting.h"
#include "effects/surface.h"

namespace {

constexpr float fullRise = 180;  // model units
constexpr float perPedestal = 1 / fitting::pedestalHeight;
constexpr Material pedestalMaterial = {{0, 0, 0, 1}, {0.5f, 0, 0, 1}, {1, 1, 1, 1}, 10};
constexpr Material bodyMaterial = {{0, 0, 0, 1}, {0.5f, 0, 0, 1}, {1, 1, 1, 1}, 80};
constexpr Material robotMaterial = {{0.2f, 0.2f, 0.2f, 1}, {0.7f, 0.7f, 0.7f, 1}, {1, 1, 1, 1}, 20};

constexpr double pi = std::numbers::pi;
constexpr int hexagonCorners = 6;
constexpr int rayCount = 100;

// The laser texture by height: once per -1 / slope model units, from `drop` model units below the disc.
struct Glow {
    float drop;
    float slope;
};
constexpr Glow wideGlow = {50, -0.01f};
constexpr Glow narrowGlow = {13, -0.04f};

struct Look {
    const char* laserTexture;
    Glow glow;       // of pedestal, body and arms
    float smoke[4];  // colour of the disc
};
constexpr Look rising = {"lasertex", wideGlow, {0.8f, 0.1f, 0.1f, 1}};
constexpr Look active = {"lasertex2", narrowGlow, {0, 0.8f, 0.3f, 1}};

// The active unit.
void beginTexture(GLint mode, GLuint texture) {
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, mode);
    glBindTexture(GL_TEXTURE_2D, texture);
}

void beginReflection(Demo& demo) {
    glActiveTexture(GL_TEXTURE0);
    beginTexture(GL_MODULATE, demo.texture("envmap2"));
    generateSphereMap();
}

// On unit 1. Object planes don't heed the matrix, so the glow stays with the mesh however high the disc is.
// The place is given to the matrix all the same: kept for the order of the calls.
void beginGlow(GLuint texture, const Glow& glow, float height) {
    const float planeS[] = {0, 0, 0, 1};
    const float planeT[] = {0, glow.slope, 0, 1};
    glActiveTexture(GL_TEXTURE1);
    beginTexture(GL_ADD, texture);
    glPushMatrix();
    glTranslatef(0, height - glow.drop, 0);
    glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR);
    glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR);
    glTexGenfv(GL_S, GL_OBJECT_PLANE, planeS);
    glTexGenfv(GL_T, GL_OBJECT_PLANE, planeT);
    glEnable(GL_TEXTURE_GEN_S);
    glEnable(GL_TEXTURE_GEN_T);
    glPopMatrix();
    glActiveTexture(GL_TEXTURE0);
}

void drawPedestal(Demo& demo, float height) {
    setMaterial(GL_FRONT, pedestalMaterial);
    beginReflection(demo);
    beginGlow(demo.texture(rising.laserTexture), rising.glow, height);
    glPushMatrix();
    // A hair deeper than the model while it is lowered, and exactly its size above.
    if (height < fitting::pedestalHeight) glScalef(1, height * perPedestal, 1.02f);
    if (height > 0) demo.drawMesh("block");
    glPopMatrix();
}

void drawRobot(Demo& demo, const Look& look, float height) {
    setMaterial(GL_FRONT, bodyMaterial);
    beginReflection(demo);
    beginGlow(demo.texture(look.laserTexture), look.glow, height);
    setMaterial(GL_FRONT_AND_BACK, robotMaterial);
    demo.drawMesh("robo body");
    glBindTexture(GL_TEXTURE_2D, demo.texture("envmap3"));
    demo.drawMesh("robo arms");

    glActiveTexture(GL_TEXTURE2);
    beginTexture(GL_ADD, demo.texture("roboscreen"));
    demo.drawMesh("robo screen");
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glDisable(GL_TEXTURE_2D);
}

void drawRing(Demo& demo, const Look& look, float height) {
    beginGlow(demo.texture(look.laserTexture), narrowGlow, height);
    glPushMatrix();
    glTranslatef(0, height, 0);
    demo.drawMesh("ring");
    glPopMatrix();
}

void endTextures() {
    stopGeneratedTexture(GL_TEXTURE1);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glActiveTexture(GL_TEXTURE0);
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

// A point of the disc's rim; the texture spans -1 to 1 across the disc.
void emitRim(double angle, float height) {
    const double x = std::cos(angle);
    const double z = std::sin(angle);
    glTexCoord2f(x, z);
    glVertex3f(fitting::discRadius * x, height, fitting::discRadius * z);
}

void emitCentre(float height) {
    glTexCoord2f(0, 0);
    glVertex3f(0, height, 0);
}

void drawDisc(float height) {
    glPolygonOffset(1, 1);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glBegin(GL_TRIANGLE_FAN);
    emitCentre(height);
    for (int i = 0; i <= hexagonCorners; i++) emitRim((2 * i + 1) * pi / hexagonCorners, height);
    glEnd();
    glDisable(GL_POLYGON_OFFSET_FILL);

    glBegin(GL_LINES);
    for (int i = 0; i < rayCount; i++) {
        emitCentre(height);
        emitRim(2 * i * pi / rayCount, height);
    }
    glEnd();
}

}  // namespace

void Robo::drawAt(float rise, float mode) {
    const Look& look = mode == 0 ? rising : active;
    const float height = fullRise * rise;
    glColor3f(1, 1, 1);
    if (mode == 0) drawPedestal(*demo, height);
    drawRobot(*demo, look, height);
    drawRing(*demo, look, height);
    endTextures();

    glColor4f(1, 0.3f, 0.1f, 0.9f);
    glColor4f(1, 1, 1, 1);  // the shader alone colours the light; the call before is kept for their order
    glDisable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    glBindTexture(GL_TEXTURE_2D, demo->texture("noise1"));
    demo->useShader("smoke");
    demo->setUniform1f("smoke", "time", 0.01f * height);
    demo->setUniform1f("smoke", "time2", 0.4f * time());
    demo->setUniform4f("smoke", "color", look.smoke[0], look.smoke[1], look.smoke[2], look.smoke[3]);
    drawDisc(height);
    glEnable(GL_LIGHTING);
    glColor3f(1, 1, 1);
    demo->useShader();
}
