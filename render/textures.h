// What an image must be to become a texture.
#pragma once

#include "image/image.h"

// RGB or RGBA in whole bytes: what GL can take as it lies in memory.
bool isTextureImage(const Image& image);
