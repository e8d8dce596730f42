// The contract of an effect: made at load time after meshes and textures, then drawn by scenes by its key. An
// effect sets the GL state it needs, draws at the music's time and owns nothing shared. What it carries from
// frame to frame lies in its fields alone: whoever starts the show again makes it anew.
#pragma once

#include "render/demo.h"

struct EffectBase {
    Demo* demo;  // not owned

    explicit EffectBase(Demo* demo) : demo(demo) {}
    virtual ~EffectBase() = default;

    // Called by scenes once per use per frame, the camera already placed. Most effects draw here.
    virtual void draw() {}
    // For effects that a scene steers by two values of the effect's own meaning.
    virtual void drawAt(float, float) {}
    // The motion of one frame, for effects that integrate theirs: everything that lasts from one draw to the
    // next, including random numbers. draw does it first; alone it stands for a frame that isn't drawn.
    virtual void advance() {}

    // Music time, seconds.
    float time() const { return demo->clock.time(); }
    // Seconds since the frame before; zero or negative while paused or after a seek backwards.
    float frameTime() const { return demo->clock.delta; }
    // 1 at a beat, 0 from 0.3 s after it.
    float beatPulse() const { return demo->clock.beatPulse(); }
};

// The effect of a key. For a key that none was made for, one that draws nothing; the registry keeps the key,
// and the first time it is said on the terminal.
EffectBase& effectOf(const char* key);
