// Every file of this kind, with the function that makes it.
#include "production/forge.h"
#include "production/music/soundtrack.h"

const std::vector<Product> musicProducts = {
    {"KVX - Ondrevane2.ogg", makeSoundtrack, "music/", "kit/sound"},
};
