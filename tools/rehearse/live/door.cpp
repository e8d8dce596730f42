// The one thing of the library that is looked up by its name.
#include "effects/effect_base.h"
#include "interface.h"
#include "script/run_up.h"
#include "tools/rehearse/live/code.h"

namespace {

void deleteEffects() {
    for (const auto& [key, effect] : demo->effects) delete effect;
    demo->effects.clear();
}

}  // namespace

extern "C" const ShowCode showCode = {SHOW_INTERFACE, gridOfBeats,    programme,     programmeAt, runTimeline,
                                      passTimeline,   framesToDraw,   meshRows,      textureRows, shaderRows,
                                      createEffects,  restartEffects, deleteEffects, &frame};
