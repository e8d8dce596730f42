// A fixture for the shell: a window, a fresh `demo` and a fresh `app`.
#pragma once

#include "app/app.h"
#include "tests/gl_window.h"

class ShellWindow : public GlWindow {
public:
    void SetUp() override {
        GlWindow::SetUp();
        app = App();
    }
    void TearDown() override {
        delete[] app.screenshot.pixels;
        app = App();
        GlWindow::TearDown();
    }

    void goTo(int ms) {
        music.ms = ms;
        demo->clock.update();
    }
};
