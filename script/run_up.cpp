#include "script/run_up.h"

#include <optional>

#include "render/demo.h"
#include "script/timeline.h"

std::vector<bool> framesToDraw(const std::vector<int>& ms) {
    std::vector<bool> drawn(ms.size());
    std::optional<size_t> lastThatLeaves;
    for (size_t i = 0; i + 1 < ms.size(); i++) {
        const ProgrammeEntry& entry = programmeAt(musicTime(ms[i]));
        drawn[i] = &entry != &programmeAt(musicTime(ms[i + 1])) || i + 2 == ms.size();
        if (entry.leaves && entry.leaves(musicTime(ms[i]))) lastThatLeaves = i;
    }
    if (lastThatLeaves) drawn[*lastThatLeaves] = true;
    if (!ms.empty()) drawn.back() = true;
    return drawn;
}

void advanceTimeline(float time, float delta) {
    frame = {time, delta, demo->clock.beatPulse()};
    const ProgrammeEntry& entry = programmeAt(time);
    if (entry.advance) entry.advance();
    demo->clock.runAutoBeat();
}
