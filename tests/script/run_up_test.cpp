// Frames drawn after nothing but their run-up, against the same frames of the whole show: a scene that leaves
// or carries on something that its row of the programme doesn't name is found here.
#include "script/run_up.h"

#include <algorithm>
#include <cmath>

#include "script/show_times.h"
#include "script/timeline.h"
#include "tests/show.h"

namespace {

// Milliseconds from an odd beat: over its pulse as close as film frames lie, and then, in the next beat,
// frames that find what that pulse has left.
constexpr int aroundTheBeat[] = {-20, 20, 60, 100, 140, 496, 536, 576};

// A row of frames, milliseconds, through the whole show: of each entry of the programme the first frame,
// frames around a beat in its middle, and the last frame.
struct Row {
    std::vector<int> times;
    std::vector<size_t> wanted;  // of each entry the last frame of the middle, which has most to inherit
};

Row rowThroughTheShow() {
    Row row;
    const auto entries = programme();
    for (size_t i = 0; i + 1 < entries.size(); i++) {
        int beat = int(std::floor(beatPositionAt((entries[i].begin + entries[i + 1].begin) / 2)));
        if (beat % 2 == 0) beat--;
        const int onBeat = showtime::beatZero.ms + beat * 60000 / showtime::beatsPerMinute;
        row.times.push_back(int(entries[i].begin * 1000 + 0.5f));
        for (int after : aroundTheBeat) row.times.push_back(onBeat + after);
        row.wanted.push_back(row.times.size() - 1);
        row.times.push_back(int(entries[i + 1].begin * 1000 + 0.5f) - 1);
    }
    return row;
}

struct RunUp : Show {
    // The last frame of the row, after a new start of the show and only what it needs of the others.
    Screen drawLast(std::span<const int> times) {
        rewind();
        const std::vector<bool> drawn = framesToDraw(times);
        for (size_t i = 0; i + 1 < times.size(); i++) {
            if (drawn[i])
                drawMoment(times[i]);
            else
                passMoment(times[i]);
        }
        return drawMoment(times.back());
    }
};

TEST_F(RunUp, IsAllThatAFrameOfAnySceneInherits) {
    const Row row = rowThroughTheShow();
    std::vector<Screen> whole;
    for (int ms : row.times) whole.push_back(drawMoment(ms));
    for (size_t wanted : row.wanted) {
        const Screen part = drawLast({row.times.data(), wanted + 1});
        EXPECT_TRUE(part.pixels == whole[wanted].pixels) << row.times[wanted] << " ms";
    }
}

TEST_F(RunUp, DrawsFewFrames) {
    const Row row = rowThroughTheShow();
    const std::vector<bool> drawn = framesToDraw(row.times);
    const auto entries = programme().size() - 1;
    EXPECT_LE(std::count(drawn.begin(), drawn.end(), true), long(entries + 2));
    EXPECT_TRUE(framesToDraw({}).empty());
    EXPECT_EQ(framesToDraw(std::vector{5000}), std::vector{true});
}

}  // namespace
