#include "effects/probes.h"

#include <cmath>

#include "effects/surface.h"

namespace {

constexpr float probeScale = 0.3f;
constexpr LightColours coldLight = {{0, 0, 0, 1}, {0.2f, 0.5f, 0.7f, 1}, {0.7f, 0.9f, 1, 1}};
constexpr GlowStroke linkStrokes[] = {
    {1, 0.9f, 0.5f, 0.8f, 1}, {3, 0.9f, 0.2f, 0.8f, 0.6f}, {6, 0.9f, 0.1f, 0.8f, 0.3f}};

Vec3 at(double x, double y, double z) {
    return {float(x), float(y), float(z)};
}

}  // namespace

void Probes::placeProbes() {
    const float t = time();
    auto sine = [t](double speed) { return std::sin(speed * t); };
    auto cosine = [t](double speed) { return std::cos(speed * t); };
    const float slowSine = std::sin(t);

    positions[0] = at(100 * cosine(0.78), 20 * sine(0.1), 20);
    positions[1] = at(140 * slowSine, -30 * cosine(0.6), 50 * cosine(0.8));
    positions[2] = at(-80 * cosine(0.28), 40 * slowSine, -90);
    positions[3] = at(90, -80, -50);
    positions[4] = at(70, 30, -40);
    positions[5] = at(30, -70, -20);
    positions[6] = at(20, 90, 80);
    positions[7] = at(40, -50, -60);
    positions[8] = at(-50, 30, -30);
    positions[9] = at(30 * cosine(0.48), -70 * sine(0.28), -20);
    positions[10] = at(-100, 30 * cosine(0.34), 10 * sine(0.58));
    positions[11] = at(40 * sine(0.38), -50 * sine(0.78), -60 * cosine(0.12));
    positions[12] = at(-50 * cosine(0.68), 30, -30 - 70 * sine(0.48));
    positions[13] = at(-30, -70, 80);
}

void Probes::linkProbes() {
    bool taken[probeCount][probeCount] = {};
    for (int i = 0; i < probeCount; i++) taken[i][i] = true;
    for (int i = 0; i < probeCount; i++) {
        int best = 0;  // also the link of a probe that finds every pair taken
        float bestDistance = 999999;
        for (int j = 0; j < probeCount; j++) {
            if (taken[i][j]) continue;
            const float distance = (positions[j] - positions[i]).length();
            if (distance < bestDistance) {
                best = j;
                bestDistance = distance;
                // Every pair that led the search for a while is taken, not only the one that wins it: it is
                // what spreads the lines out.
                taken[i][j] = taken[j][i] = true;
            }
        }
        links[i] = best;
    }
}

void Probes::draw() {
    placeProbes();
    linkProbes();
    const float t = time();
    demo->setCameraEye(140 * std::sin(0.8 * t), 10 * std::sin(0.5 * t) + 130, 180 * std::cos(0.8 * t));
    demo->setCameraTarget(0, 0, 0);
    demo->applyCamera(false);

    placeLight(demo->lights[0], 0, 0, 0);
    placeLight(demo->lights[1], 300, 300, 300);
    demo->endFrame();  // so that the lights are in force now
    setMaterial(GL_FRONT, hullMaterial);
    setLightColours(GL_LIGHT1, coldLight);
    drawProbes();
    demo->lights[0].enabled = false;
    demo->lights[1].enabled = false;
    demo->endFrame();

    for (const GlowStroke& stroke : linkStrokes) drawLinks(stroke);
}

void Probes::drawProbes() {
    glActiveTexture(GL_TEXTURE0);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    beginHull(*demo);
    for (const Vec3& position : positions) {
        glPushMatrix();
        glTranslatef(position.x, position.y, position.z);
        glScalef(probeScale, probeScale, probeScale);
        demo->drawMesh("palikka");
        glPopMatrix();
    }
    stopGeneratedTexture(GL_TEXTURE1);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glActiveTexture(GL_TEXTURE0);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

void Probes::drawLinks(const GlowStroke& stroke) {
    glLineWidth(stroke.width);
    glColor4f(stroke.red, stroke.green, stroke.blue, stroke.alpha);
    beginGlowingLines();
    glBegin(GL_LINES);
    for (int i = 0; i < probeCount; i++) {
        glVertex3fv(&positions[i].x);
        glVertex3fv(&positions[links[i]].x);
    }
    glEnd();
    endGlowingLines();
}
