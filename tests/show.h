// The whole show, loaded as the program loads it, once per process. A fixture derives from `Show` and draws
// any moment of it with the program's own frame, stepped by a counter instead of music.
#pragma once

#include "tests/gl_window.h"

class Show : public GlWindow {
public:
    void SetUp() override;
    void TearDown() override;

    // The picture of the next frame, with the music at `ms`.
    Screen drawMoment(int ms);
    // The same with a beat at `beatMs`, as if the music had been played until `ms`.
    Screen drawMoment(int ms, int beatMs);

    // Moves past the frame with the music at `ms` without drawing it.
    void advanceMoment(int ms);

    // Back to what the show is when the music starts: the clock, the effects, the uniforms, the random
    // numbers.
    void rewind();

private:
    Demo* bare = nullptr;  // the window's, kept while `demo` is the show's
};
