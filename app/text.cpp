#include "app/text.h"

#include <GL/glew.h>

#include <iterator>

#include "render/demo.h"
#include "render/pixel_space.h"
#include "render/screen.h"

// freeglut's font tables, which no header of its declares. Character c's glyph is characters[c]: its
// width in pixels in the first byte, then its rows, bottom row first, each in whole bytes.
extern "C" {
struct SFG_Font {
    const char* name;
    int quantity;
    int height;  // pixels
    const GLubyte** characters;
    float xOrigin;  // pixels
    float yOrigin;
};

extern const SFG_Font fgFontFixed8x13;
extern const SFG_Font fgFontFixed9x15;
extern const SFG_Font fgFontHelvetica10;
extern const SFG_Font fgFontHelvetica12;
extern const SFG_Font fgFontHelvetica18;
extern const SFG_Font fgFontTimesRoman10;
extern const SFG_Font fgFontTimesRoman24;
}

namespace {

constexpr float lineHeight = 15;  // pixels

const SFG_Font* const fonts[] = {&fgFontFixed8x13,   &fgFontFixed9x15,   &fgFontHelvetica10,
                                 &fgFontHelvetica12, &fgFontHelvetica18, &fgFontTimesRoman10,
                                 &fgFontTimesRoman24};

}  // namespace

Glyph glyphOf(int font, char character) {
    const signed char c = static_cast<signed char>(character);
    if (font < 0 || font >= int(std::size(fonts)) || c < 0) return {0, 0, nullptr};
    const GLubyte* glyph = fonts[font]->characters[c];
    return {glyph[0], fonts[font]->height, glyph + 1};
}

void begin2DText(int width, int height) {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_SWAP_BYTES, 0);
    glPixelStorei(GL_UNPACK_LSB_FIRST, 0);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPushAttrib(GL_CURRENT_BIT | GL_POLYGON_STIPPLE_BIT | GL_PIXEL_MODE_BIT | GL_LIGHTING_BIT |
                 GL_DEPTH_BUFFER_BIT | GL_ACCUM_BUFFER_BIT | GL_VIEWPORT_BIT | GL_TEXTURE_BIT);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    beginPixelSpace(width, height, 1);
}

void end2DText() {
    endPixelSpace();
    glPopClientAttrib();
    glPopAttrib();
}

void drawText(float x, float y, int font, const char* text) {
    glRasterPos2f(x, y);
    if (font < 0 || font >= int(std::size(fonts))) return;
    const SFG_Font& f = *fonts[font];
    for (; *text; text++) {
        const Glyph glyph = glyphOf(font, *text);
        if (!glyph.rows) continue;
        glBitmap(glyph.width, glyph.height, f.xOrigin, f.yOrigin, glyph.width, 0, glyph.rows);
    }
}

void drawTextLine(const char* text, float x, float y) {
    glViewport(0, 0, screenWidth, screenHeight);
    begin2DText(screenWidth, screenHeight);
    drawText(x, y + lineHeight, fixed9x15, text);
    end2DText();
    demo->applyViewport();
}
