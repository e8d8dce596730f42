#include "tools/rehearse/canvas.h"

#include <GL/glew.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include "render/screen.h"

namespace {

constexpr int textureUnits = 3;  // that the show's effects use
constexpr Ink paneEdge = {1, 1, 1, 0.13f};

GLhandleARB programBefore = 0;

void setInk(Ink ink) {
    glColor4f(ink.r, ink.g, ink.b, ink.a);
}

void corner(float x, float y, Ink ink) {
    setInk(ink);
    glVertex2f(x, y);
}

}  // namespace

void beginCanvas() {
    programBefore = glGetHandleARB(GL_PROGRAM_OBJECT_ARB);
    glUseProgramObjectARB(0);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    for (int unit = textureUnits - 1; unit >= 0; unit--) {
        glActiveTexture(GL_TEXTURE0 + unit);
        glDisable(GL_TEXTURE_2D);
    }
    glViewport(0, 0, screenWidth, screenHeight);
    glColorMask(1, 1, 1, 1);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glShadeModel(GL_SMOOTH);
    for (GLenum test : {GL_CULL_FACE, GL_ALPHA_TEST, GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_FOG})
        glDisable(test);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    begin2DText(screenWidth, screenHeight);
}

void endCanvas() {
    end2DText();
    glPopAttrib();
    glUseProgramObjectARB(programBefore);
}

void fillBox(float x, float y, float width, float height, Ink ink) {
    setInk(ink);
    glRectf(x, y, x + width, y + height);
}

void fillBlend(float x, float y, float width, float height, Ink left, Ink right) {
    glBegin(GL_QUADS);
    corner(x, y, left);
    corner(x + width, y, right);
    corner(x + width, y + height, right);
    corner(x, y + height, left);
    glEnd();
}

void drawWaveform(const std::string& waveform, float x, float middle, float reach, Ink peak, Ink loud) {
    glBegin(GL_QUADS);
    for (size_t at = 0; at + 1 < waveform.size(); at += 2, x++) {
        for (const size_t which : {0, 1}) {
            const float half = std::max(float(uint8_t(waveform[at + which])) / 255 * reach, 0.5f);
            const Ink ink = which ? loud : peak;
            corner(x, middle - half, ink);
            corner(x + 1, middle - half, ink);
            corner(x + 1, middle + half, ink);
            corner(x, middle + half, ink);
        }
    }
    glEnd();
}

void drawPane(float x, float y, float width, float height) {
    fillBox(x, y, width, height, paneInk);
    fillBox(x, y, width, 1, paneEdge);
    fillBox(x, y + height - 1, width, 1, paneEdge);
    fillBox(x, y + 1, 1, height - 2, paneEdge);
    fillBox(x + width - 1, y + 1, 1, height - 2, paneEdge);
}

void drawMarker(float x, float y, float size, Ink ink) {
    glBegin(GL_TRIANGLES);
    corner(x, y, ink);
    corner(x + size, y + size, ink);
    corner(x - size, y + size, ink);
    glEnd();
}

float write(float x, float y, Font font, Ink ink, const std::string& text) {
    setInk(ink);
    drawText(x, y, font, text.c_str());
    return x + textWidth(font, text);
}

float writeRight(float x, float y, Font font, Ink ink, const std::string& text) {
    return write(x - textWidth(font, text), y, font, ink, text);
}

float textWidth(Font font, const std::string& text) {
    int width = 0;
    for (const char letter : text) width += glyphOf(font, letter).width;
    return float(width);
}
