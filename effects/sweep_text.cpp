#include "effects/sweep_text.h"

#include <cmath>

namespace {

constexpr float half = 100;                   // of the picture's side, model units
constexpr float softness = 0.05f;             // half the height of the soft edge, of the picture's height
constexpr int rows = 16;                      // of the soft edge
constexpr float rowStep = 1.0f / (rows - 1);  // from 0 at the first row to 1 at the last
constexpr int rays = 20;                      // in a row
constexpr double rayStep = 1.0 / (rays - 1);  // from 0 at the first ray to 1 at the last
constexpr double raySpacing = 2 * half * rayStep;  // model units
constexpr float rayAlpha = 1.0f / (2 * rows);
constexpr float rayEnd[] = {0, 50, 200};

float heightOf(float row) {
    return half - 2 * half * row;
}

void emitRow(float row) {
    glTexCoord2f(0, row);
    glVertex2f(-half, heightOf(row));
    glTexCoord2f(1, row);
    glVertex2f(half, heightOf(row));
}

void drawRays(float row) {
    glBegin(GL_TRIANGLE_STRIP);
    for (int i = 0; i < rays; i++) {
        glTexCoord2f(i * rayStep, row);
        glVertex3f(i * raySpacing - half, heightOf(row), 0);
        glVertex3fv(rayEnd);
    }
    glEnd();
}

void beginPicture(GLuint texture) {
    glPushMatrix();
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
}

void endPicture() {
    glDisable(GL_BLEND);
    glPopMatrix();
}

}  // namespace

SweepText::SweepText(Demo* demo, const char* textureKey) : EffectBase(demo), textureKey(textureKey) {}

SweepText::SweepText(Demo* demo, std::uintptr_t textureKey)
    : SweepText(demo, reinterpret_cast<const char*>(textureKey)) {}

void SweepText::draw() {
    const float middle = 0.5 * std::sin(0.3 * time() + 35.0 + 1.52) + 0.5;
    const float low = middle - softness;
    const float high = middle + softness;
    const float span = high - low;
    beginPicture(demo->texture(textureKey));

    glBegin(GL_TRIANGLE_STRIP);
    glColor4f(1, 1, 1, 1);
    emitRow(0);
    for (int i = 0; i < rows; i++) {
        const float across = i * rowStep;
        glColor4f(1, 1, 1, 1 - across);
        emitRow(span * across + low);
    }
    glEnd();

    glColor4f(1, 1, 1, rayAlpha);
    for (int i = 0; i < rows; i++) drawRays(span * (i * rowStep) + low);
    endPicture();
}

void SweepText::drawRow(float row, float offset, float alpha) {
    const float edge = row + offset;
    beginPicture(demo->texture(textureKey));
    glColor4f(1, 1, 1, alpha);
    glBegin(GL_TRIANGLE_STRIP);
    emitRow(0);
    emitRow(edge);
    glEnd();
    glColor4f(1, 1, 1, alpha / 2);
    drawRays(edge);
    endPicture();
}
