#include "render/demo.h"
#include "render/screen.h"

namespace {

// Towards zero; 0 for what no viewport can hold.
int truncated(float value) {
    return value > -32768 && value < 32768 ? int(value) : 0;
}

}  // namespace

void Demo::setViewportAspect(float a, float b) {
    aspect = a / b;
    applyViewport();
}

void Demo::applyViewport() {
    // Against 1, not the screen's 4:3: what lies between gives a viewport taller than the screen.
    const bool tall = aspect < 1;
    const float width = tall ? aspect * screenHeight : screenWidth;
    const float height = tall ? screenHeight : screenWidth / aspect;
    glViewport(truncated((screenWidth - width) * 0.5f), truncated((screenHeight - height) * 0.5f),
               truncated(width), truncated(height));
}

void Demo::copyScreen(const char* target) {
    Texture& record = textures[textureIndex(target)];
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, record.texture);
    glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, screenWidth, screenHeight);
    record.width = screenWidth;
    record.height = screenHeight;
}
