// What several scenes share: the beat number, the key light, the shock wave, and pictures laid over a scene.
#pragma once

#include <GL/glew.h>

// Whole beats since beat 0 at `time` seconds, truncated toward zero: both the beat before and the beat after
// beat 0 are 0.
int beatNumber(float time);

// Light 0 on, at a place in the space of the model-view matrix of the next housekeeping.
void lightFrom(float x, float y, float z);

// "boom" in use until the next useShader. `distort` is how tight its waves are (0 to 54), `scale` how strong
// (0 leaves the picture alone; 0.3 times the pulse is a shock on the beat).
void useBoom(float distort, float scale);

// A texture stored top row first on a quad 2 high and 2 x halfWidth wide around (x, y, z) in eye space, in
// the colour in force, blended with the two factors. Leaves blending on; lighting, depth test and culling
// off.
void drawPicture(const char* texture, float x, float y, float z, float halfWidth, GLenum sourceFactor,
                 GLenum targetFactor);
