// Everything the show loads, in the order it is loaded; the loading screen is drawn after every item.
#pragma once

void loadMeshes();
void loadTextures();
void createEffects();
void loadShaders();

// The rows of each table. The loading picture, which is there before the others, is in none.
struct ResourceCounts {
    int meshes, textures, effects, shaders;
};
ResourceCounts resourceCounts();

// How often the loading screen is drawn in all, from the first one to the last.
int loadingScreenCount();
