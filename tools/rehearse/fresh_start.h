// The show as it has just been loaded: what frames carry over to later ones is put back to that, so that any
// frame can be drawn as the first of a new run.
#pragma once

#include "render/demo.h"
#include "tools/capture/stepped_show.h"

struct FreshStart {
    Camera camera;
    Light lights[8];
    Texture targets[targetCount];
    GLfloat projection[16];

    // Before the first frame. Keeps GL's state on GL's own stack, where it stays.
    FreshStart();
    ~FreshStart();
    FreshStart& operator=(FreshStart&&) = delete;

    // What is carried on our side: the clock, the effects, the random numbers. `show` begins with frame 0.
    void restoreShow(SteppedShow* show) const;
    // What is carried in GL: its state, the lights, the targets, the uniforms.
    void restoreGl() const;
};
