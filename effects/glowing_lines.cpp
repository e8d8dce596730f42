#include "effects/glowing_lines.h"

#include <GL/glew.h>

void beginGlowingLines() {
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glEnable(GL_LINE_SMOOTH);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    glDepthMask(GL_FALSE);
}

void endGlowingLines() {
    glEnable(GL_TEXTURE_2D);
    glColor3f(1, 1, 1);
    glDisable(GL_BLEND);
    glDisable(GL_LINE_SMOOTH);
    glDepthMask(GL_TRUE);
}
