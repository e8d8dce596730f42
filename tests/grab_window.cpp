#include "tests/grab_window.h"

#include <SDL/SDL.h>
#include <SDL/SDL_syswm.h>
#include <X11/Xutil.h>

void grabWindow(int width, int height, uint8_t* rgba) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    SDL_GetWMInfo(&info);
    Display* display = info.info.x11.gfxdisplay;
    XSync(display, False);
    XImage* image = XGetImage(display, info.info.x11.window, 0, 0, width, height, AllPlanes, ZPixmap);
    for (int y = height - 1; y >= 0; y--) {
        for (int x = 0; x < width; x++, rgba += 4) {
            const unsigned long pixel = XGetPixel(image, x, y);
            rgba[0] = uint8_t(pixel >> 16);
            rgba[1] = uint8_t(pixel >> 8);
            rgba[2] = uint8_t(pixel);
            rgba[3] = 255;
        }
    }
    XDestroyImage(image);
}
