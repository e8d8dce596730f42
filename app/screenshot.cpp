#include "app/screenshot.h"

#include <GL/glew.h>

#include <cstdio>

#include "app/app.h"
#include "render/screen.h"

void saveScreenshot() {
    if (!app.screenshotReady) {
        app.screenshot = createImage(screenWidth, screenHeight, 3);
        app.screenshotReady = true;
    }
    const Image& shot = app.screenshot;
    glReadPixels(0, 0, screenWidth, screenHeight, GL_RGB, GL_UNSIGNED_BYTE, shot.pixels);
    snprintf(app.screenshotName, sizeof app.screenshotName, "w:/shots/shot%04d.png", app.screenshotNumber);
    flipImage(shot, 1, 0);
    writePng(app.screenshotName, shot.width, shot.height, shot.channels, shot.bytesPerPixel, shot.stride,
             shot.pixels);
    app.screenshotNumber++;
    app.screenshotRequested = false;
}
