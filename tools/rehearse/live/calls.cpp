// The program's calls of the show's code: the linker leads them here, and they go on to the library in force
// or, as long as there is none, to what is linked.
#include "script/run_up.h"
#include "tools/rehearse/live/library.h"

// The names that the linker makes up for what it was told to wrap.
#define CALL(result, name, mangled, parameters, arguments)                        \
    result linked_##name parameters __asm__("__real_" mangled);                   \
    result called_##name parameters __asm__("__wrap_" mangled);                   \
    result called_##name parameters {                                             \
        return loadedCode ? loadedCode->name arguments : linked_##name arguments; \
    }

CALL(std::span<const ProgrammeEntry>, programme, "_Z9programmev", (), ())
CALL(const ProgrammeEntry&, programmeAt, "_Z11programmeAtf", (float time), (time))
CALL(void, runTimeline, "_Z11runTimelineff", (float time, float delta), (time, delta))
CALL(void, passTimeline, "_Z12passTimelineff", (float time, float delta), (time, delta))
CALL(std::vector<bool>, framesToDraw, "_Z12framesToDrawSt4spanIKiLm18446744073709551615EE",
     (std::span<const int> ms), (ms))
CALL(std::span<const MeshRow>, meshRows, "_Z8meshRowsv", (), ())
CALL(std::span<const TextureRow>, textureRows, "_Z11textureRowsv", (), ())
CALL(std::span<const ShaderRow>, shaderRows, "_Z10shaderRowsv", (), ())
CALL(void, createEffects, "_Z13createEffectsv", (), ())
CALL(void, restartEffects, "_Z14restartEffectsv", (), ())
