#include "render/demo.h"
#include "render/pixel_space.h"

namespace {

constexpr float blurGrowth = 1.5f;  // of the taps' offsets, per iteration

// What a name mapped to a negative index draws as: the whole unit square, with whatever texture is bound.
const Texture untextured{0, 1, 1, 1, 1, false};

// Covers (0, 0)-(width, height) with the texture moved by (u, v). Between glBegin and glEnd.
void shiftedQuad(float width, float height, float u, float v) {
    glTexCoord2f(u, v);
    glVertex2f(0, 0);
    glTexCoord2f(1 + u, v);
    glVertex2f(width, 0);
    glTexCoord2f(1 + u, 1 + v);
    glVertex2f(width, height);
    glTexCoord2f(u, 1 + v);
    glVertex2f(0, height);
}

// The texture bound, as the sum of four diagonal taps (u, v) away, each weighed by the constant alpha.
void drawDiagonalTaps(float width, float height, float u, float v) {
    glBlendFunc(GL_CONSTANT_ALPHA, GL_ZERO);
    glBegin(GL_QUADS);
    shiftedQuad(width, height, u, v);
    glEnd();
    glBlendFunc(GL_CONSTANT_ALPHA, GL_ONE);
    glBegin(GL_QUADS);
    shiftedQuad(width, height, -u, v);
    shiftedQuad(width, height, -u, -v);
    shiftedQuad(width, height, u, -v);
    glEnd();
}

// The side of the quad that a blur draws and copies for a side of the picture, both in pixels.
int blurSide(int pictureSide, int size) {
    if (size != 0) return size;
    return pictureSide > 512 && pictureSide < 1024 ? 1024 : pictureSide;
}

}  // namespace

void Demo::drawScreenQuad(const char* name, float scale) {
    const int index = textureIndex(name);
    const Texture& picture = index >= 0 ? textures[index] : untextured;

    glPushAttrib(GL_LIGHTING_BIT);
    glDisable(GL_LIGHTING);
    glPushMatrix();
    glLoadIdentity();
    glTranslatef(0, 0, -1);
    glScalef(scale, scale, 1);
    if (index >= 0) {
        glBindTexture(GL_TEXTURE_2D, picture.texture);
        glEnable(GL_TEXTURE_2D);
    }

    // The whole texture is drawn, as large as makes the picture in its corner cover the unit square.
    const float k = float(picture.textureWidth) / float(picture.width);
    const float top = float(picture.height) / float(picture.width);
    const float x0 = -1;
    const float x1 = 2 * k - 1;
    const float y0 = picture.flipped ? 1 - 2 * k : -1;
    const float y1 = picture.flipped ? 1 : 2 * k - 1;
    const float t0 = picture.flipped ? top : 0;
    const float t1 = picture.flipped ? 0 : top;
    glBegin(GL_QUADS);
    glTexCoord2f(0, t0);
    glVertex2f(x0, y0);
    glTexCoord2f(1, t0);
    glVertex2f(x1, y0);
    glTexCoord2f(1, t1);
    glVertex2f(x1, y1);
    glTexCoord2f(0, t1);
    glVertex2f(x0, y1);
    glEnd();

    glPopMatrix();
    glPopAttrib();
    quadCount += 2;
}

void Demo::blur(const char* source, const char* target, const Blur& how) {
    const Texture& from = textures[textureIndex(source)];
    Texture& to = textures[textureIndex(target)];
    const int width = from.width;
    const int height = from.height;

    glPushAttrib(GL_LIGHTING_BIT);
    glDisable(GL_LIGHTING);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glViewport(0, 0, width, height);
    beginPixelSpace(width, height, 2);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);

    to.width = width;
    to.height = height;
    const int quadWidth = blurSide(width, how.size);
    const int quadHeight = blurSide(height, how.size);
    glBindTexture(GL_TEXTURE_2D, from.texture);
    glEnable(GL_TEXTURE_2D);
    glBlendColorEXT(1, 1, 1, how.strength * 0.25f);

    float xOffset = how.xOffset;
    float yOffset = how.yOffset;
    for (int i = 0; i < how.iterations; i++) {
        drawDiagonalTaps(float(quadWidth), float(quadHeight), xOffset / float(quadWidth),
                         yOffset / float(quadHeight));
        // The target stays bound: the next iteration blurs this one's result.
        glBindTexture(GL_TEXTURE_2D, to.texture);
        glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 0, 0, quadWidth, quadHeight, 0);
        xOffset *= blurGrowth;
        yOffset *= blurGrowth;
    }

    glDisable(GL_BLEND);
    glEnable(GL_DEPTH_TEST);
    endPixelSpace();
    glPopAttrib();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    // The viewport stays at the source's size, which is the screen's for what was copied from it.
}

void Demo::glow(const char* source, const char* target, int count, float strength) {
    glDisable(GL_DEPTH_TEST);
    glPushAttrib(GL_LIGHTING_BIT);
    glDisable(GL_LIGHTING);
    blur(source, "rtt9",
         {.iterations = 6, .xOffset = 0.25f, .yOffset = 0.25f, .strength = strength, .size = 128});

    glBlendFunc(GL_ONE, GL_ONE);
    glEnable(GL_BLEND);
    glColor3f(1, 1, 1);
    drawScreenQuad(source, 1);
    for (int i = 0; i < count; i++) drawScreenQuad("rtt9", 1);

    glDisable(GL_BLEND);
    copyScreen(target);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glPopAttrib();
    glEnable(GL_DEPTH_TEST);
}
