// The show's code, script/ and effects/, as the rehearsal calls it: that which it was linked with or, once a
// source was saved, that of a library which is loaded while it runs.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "script/resources.h"
#include "script/show_times.h"
#include "script/timeline.h"

// The calls that go to it: result, name, the linker's symbol, parameters and what is handed on of them.
#define CALLS_OF_SHOW                                                                              \
    CALL(std::span<const ProgrammeEntry>, programme, "_Z9programmev", (), ())                      \
    CALL(const ProgrammeEntry&, programmeAt, "_Z11programmeAtf", (float time), (time))             \
    CALL(void, runTimeline, "_Z11runTimelineff", (float time, float delta), (time, delta))         \
    CALL(void, advanceTimeline, "_Z15advanceTimelineff", (float time, float delta), (time, delta)) \
    CALL(std::vector<bool>, framesToDraw, "_Z12framesToDrawRKSt6vectorIiSaIiEE",                   \
         (const std::vector<int>& ms), (ms))                                                       \
    CALL(std::span<const MeshRow>, meshRows, "_Z8meshRowsv", (), ())                               \
    CALL(std::span<const TextureRow>, textureRows, "_Z11textureRowsv", (), ())                     \
    CALL(std::span<const ShaderRow>, shaderRows, "_Z10shaderRowsv", (), ())                        \
    CALL(void, loadResources, "_Z13loadResourcesR6Loader", (Loader & loader), (loader))            \
    CALL(void, restartEffects, "_Z14restartEffectsv", (), ())                                      \
    CALL(void, deleteEffects, "_Z13deleteEffectsv", (), ())

// What a library has by the name "showCode".
struct ShowCode {
    const char* interface;    // the hash of the headers that it and those who call it have in common
    std::array<int, 4> grid;  // see gridOfBeats
    const FrameState* frame;

#define CALL(result, name, symbol, parameters, arguments) result(*name) parameters;
    CALLS_OF_SHOW
#undef CALL
};

// That of the library in force; nullptr for what is linked.
extern const ShowCode* loadedCode;

// The times that the clock, which is in no library, has too.
constexpr std::array<int, 4> gridOfBeats = {showtime::beatZero.ms, showtime::beatsPerMinute,
                                            showtime::beatsPerBar, showtime::automaticBeats.ms};
