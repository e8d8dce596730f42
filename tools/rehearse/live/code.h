// The show's code, script/ and effects/, as the rehearsal calls it: that which it was linked with or, once a
// source was saved, that of a library which is loaded while it runs.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "script/resources.h"
#include "script/show_times.h"
#include "script/timeline.h"

// What a library has by the name "showCode".
struct ShowCode {
    const char* interface;    // the hash of the headers that it and those who call it have in common
    std::array<int, 4> grid;  // see gridOfBeats

    std::span<const ProgrammeEntry> (*programme)();
    const ProgrammeEntry& (*programmeAt)(float time);
    void (*runTimeline)(float time, float delta);
    void (*passTimeline)(float time, float delta);
    std::vector<bool> (*framesToDraw)(std::span<const int> ms);
    std::span<const MeshRow> (*meshRows)();
    std::span<const TextureRow> (*textureRows)();
    std::span<const ShaderRow> (*shaderRows)();
    void (*createEffects)();
    void (*restartEffects)();
    void (*deleteEffects)();
    const FrameState* frame;
};

// That of the library in force; nullptr for what is linked.
extern const ShowCode* loadedCode;

// The times that the clock, which is in no library, has too.
constexpr std::array<int, 4> gridOfBeats = {showtime::beatZero.ms, showtime::beatsPerMinute,
                                            showtime::beatsPerBar, showtime::automaticBeats.ms};
