// Everything the show loads, in the order it is loaded; the loading screen is drawn after every item.
#pragma once

void loadMeshes();
void loadTextures();
void createEffects();
void loadShaders();
