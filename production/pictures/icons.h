// The desktop's icons, below the folder of an icon theme. Not part of the data set.
#pragma once

#include "production/product.h"

void makeIcon256(const char* path);
void makeIcon128(const char* path);
void makeIcon64(const char* path);
void makeIcon48(const char* path);
void makeIcon32(const char* path);

inline constexpr Product iconProducts[] = {
    {"256x256/apps/valojuova.png", makeIcon256}, {"128x128/apps/valojuova.png", makeIcon128},
    {"64x64/apps/valojuova.png", makeIcon64},    {"48x48/apps/valojuova.png", makeIcon48},
    {"32x32/apps/valojuova.png", makeIcon32},
};
