#include "tools/rehearse/stored_picture.h"

#include "render/screen.h"
#include "tools/rehearse/canvas.h"

namespace {

constexpr int side = 1024;  // pixels; a power of two that holds the screen

}  // namespace

StoredPicture::StoredPicture() {
    glPushAttrib(GL_TEXTURE_BIT);
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, side, side, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glPopAttrib();
}

StoredPicture::~StoredPicture() {
    glDeleteTextures(1, &texture);
}

void StoredPicture::keep() {
    glPushAttrib(GL_TEXTURE_BIT);
    glBindTexture(GL_TEXTURE_2D, texture);
    glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, screenWidth, screenHeight);
    glPopAttrib();
}

void StoredPicture::show() const {
    beginCanvas();
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glBindTexture(GL_TEXTURE_2D, texture);
    const float s = float(screenWidth) / side, t = float(screenHeight) / side;
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0);
    glVertex2i(0, 0);
    glTexCoord2f(s, 0);
    glVertex2i(screenWidth, 0);
    glTexCoord2f(s, t);
    glVertex2i(screenWidth, screenHeight);
    glTexCoord2f(0, t);
    glVertex2i(0, screenHeight);
    glEnd();
    endCanvas();
}
