// Everything the show loads, in the order it is loaded; the loading screen is drawn after every item.
#pragma once

void loadMeshes();
void loadTextures();
void createEffects();
void loadShaders();

// How often the loading screen is drawn in all, from the first one to the last.
int loadingScreenCount();
