#include "effects/effect_base.h"

#include <cstdio>

EffectBase& effectOf(const char* key) {
    static EffectBase nothing(demo);
    const auto [entry, isNew] = demo->effects.try_emplace(key, nullptr);
    if (isNew) fprintf(stderr, "No effect has the key \"%s\".\n", key);
    return entry->second ? *entry->second : nothing;
}
