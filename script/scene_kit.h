// What several scenes share: the beat number, the key light, the shock wave, and pictures laid over a scene.
#pragma once

#include <GL/glew.h>

// Whole beats since beat 0 at `time` seconds, truncated toward zero: both the beat before and the beat after
// beat 0 are 0.
int beatNumber(float time);

// Light 0 on, at a place in the space of the model-view matrix of the next housekeeping.
void lightFrom(float x, float y, float z);

// "boom" in use until the next useShader. `distort` is how tight its waves are (0 to 54), `scale` how far the
// shock has got (0 to 0.3; 0 leaves the picture alone, 0.3 times the pulse is a shock on the beat): how hard
// it pushes there is the shader's own.
void useBoom(float distort, float scale);

// What is on the screen into the target, glowing; goes through "rtt1" and clears the screen.
void glowScreen(const char* target, float strength);

// Where a picture lies over a scene: a quad in eye space, two units high.
struct PictureQuad {
    float x = 0, y = 0, z = -1;  // its middle
    float halfWidth = 1;
    GLenum sourceFactor = GL_SRC_ALPHA;  // how it is blended
    GLenum targetFactor = GL_ONE_MINUS_SRC_ALPHA;
};

// A texture stored top row first, in the colour in force. Leaves blending on; lighting, depth test and
// culling off.
void drawPicture(const char* texture, const PictureQuad& quad);
