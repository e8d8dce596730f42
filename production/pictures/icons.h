// The desktop's icons, below the folder of an icon theme. Not part of the data set.
#pragma once

#include "production/product.h"

// `size`: pixels.
template <int size>
void makeIcon(const char* path);

inline constexpr Product iconProducts[] = {
    {"256x256/apps/valojuova.png", makeIcon<256>}, {"128x128/apps/valojuova.png", makeIcon<128>},
    {"64x64/apps/valojuova.png", makeIcon<64>},    {"48x48/apps/valojuova.png", makeIcon<48>},
    {"32x32/apps/valojuova.png", makeIcon<32>},
};
