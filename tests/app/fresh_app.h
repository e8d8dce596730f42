// The application as it starts, for each test of a window anew.
#pragma once

#include "app/app.h"

template <typename Window>
class FreshApp : public Window {
public:
    void SetUp() override {
        Window::SetUp();
        app = App();
    }
    void TearDown() override {
        delete[] app.screenshot.pixels;
        app = App();
        Window::TearDown();
    }
};
