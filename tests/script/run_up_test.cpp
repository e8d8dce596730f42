// Frames drawn after nothing but their run-up, against the same frames of the whole show: a scene that leaves
// or carries on something that its row of the programme doesn't name is found here.
#include "script/run_up.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>

#include "app/frame.h"
#include "effects/effect_base.h"
#include "script/resources.h"
#include "script/show_times.h"
#include "script/timeline.h"
#include "tests/show.h"
#include "tools/rehearse/fresh_start.h"

namespace {

constexpr int apart = 3000;  // milliseconds: of the frames that are compared

// Milliseconds of frames through the whole show: those that are compared, and of every beat one that it
// begins with, one close enough behind to find its pulse, and one that finds it fading.
std::vector<int> momentsOfTheShow() {
    std::vector<int> moments;
    for (int ms = 0; ms < showtime::end.ms; ms += apart) moments.push_back(ms);
    for (int beat = 0;; beat++) {
        const int onBeat = showtime::beatZero.ms + beat * 60000 / showtime::beatsPerMinute;
        if (onBeat >= showtime::end.ms - 1000) break;
        for (int after : {20, 60, 290}) moments.push_back(onBeat + after);
    }
    std::sort(moments.begin(), moments.end());
    return moments;
}

// The lower left of the window, as far as the heap and the robot stand, and all that a blur draws before it
// spreads it: a quarter of the work. Around it everything is black.
constexpr int patchWidth = 448, patchHeight = 256;  // pixels

struct RunUp : Show {
    const std::vector<int> moments = momentsOfTheShow();
    size_t next = 0;  // of the moments
    std::optional<SteppedShow> show;
    std::optional<FreshStart> start;

    void SetUp() override {
        Show::SetUp();
        show.emplace(60, SteppedShow::Loaded{});
        demo->clock.source = &music;
        start.emplace();
        restart();
    }
    void TearDown() override {
        start.reset();
        Show::TearDown();
    }

    // As the desk does before it draws what is held.
    void restart() {
        start->restoreShow(&*show);
        start->restoreGl();
        next = 0;
    }
    void drawNext() {
        music.ms = moments[next++];
        drawFrame();
    }
    // All moments before this one, of which only what they leave behind counts.
    void drawUpTo(size_t moment) {
        const OnePixel unseen;
        while (next < moment) drawNext();
    }
    // The same, with no more drawing than needed.
    void advanceUpTo(size_t moment) {
        const size_t first = next;
        const std::vector<bool> drawn =
            framesToDraw({moments.begin() + long(first), moments.begin() + long(moment) + 1});
        const OnePixel unseen;
        while (next < moment) {
            if (drawn[next - first])
                drawNext();
            else
                advanceMoment(moments[next++]);
        }
    }
    // A fingerprint of the picture of the next moment.
    size_t drawPatch() {
        glPushAttrib(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glClearColor(0, 0, 0, 0);
        glColorMask(1, 1, 1, 1);
        glDepthMask(1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glPopAttrib();
        glScissor(0, 0, patchWidth, patchHeight);
        glEnable(GL_SCISSOR_TEST);
        drawNext();
        glDisable(GL_SCISSOR_TEST);
        std::string pixels(size_t(patchWidth * patchHeight * 4), 0);
        glReadPixels(0, 0, patchWidth, patchHeight, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        return std::hash<std::string>{}(pixels);
    }
};

// As a part of a film begins, and as the desk draws what is held, after frames from anywhere in the show.
TEST_F(RunUp, IsAllThatAFrameOfAnySecondInherits) {
    std::vector<std::pair<size_t, size_t>> seconds;  // which moment, its picture in a run from the start
    for (size_t i = 0; i < moments.size(); i++) {
        if (moments[i] % apart != 0) continue;
        drawUpTo(i);
        seconds.emplace_back(i, drawPatch());
    }
    std::shuffle(seconds.begin(), seconds.end(), std::mt19937(1));
    for (const auto& [moment, run] : seconds) {
        restart();
        advanceUpTo(moment);
        const int ms = moments[moment];
        EXPECT_EQ(drawPatch(), run) << ms / 1000 << " s, " << programmeAt(musicTime(ms)).name
                                    << ": not as in the whole show";
    }
}

// In the place of another effect: adds up what it sees of the beat, and stretches the other by it.
struct Swelling : EffectBase {
    std::unique_ptr<EffectBase> other;
    double swell = 0;

    explicit Swelling(EffectBase* other) : EffectBase(::demo), other(other) {}
    void add() { swell += (1 + beatPulse()) * frameTime(); }
    void advance() override {
        add();
        other->advance();
    }
    void draw() override {
        drawSwollen([&] { other->draw(); });
    }
    void drawAt(float a, float b) override {
        drawSwollen([&] { other->drawAt(a, b); });
    }
    void drawSwollen(const std::function<void()>& drawOther) {
        add();
        glPushMatrix();
        glScalef(1, float(1 + swell / 10), 1);
        drawOther();
        glPopMatrix();
    }
};

// The first seconds of every entry that advances: each of its effects could integrate motion.
TEST_F(RunUp, MovesEveryEffectAsDrawingDoes) {
    const auto swellAll = [&](size_t from) {
        restart();
        while (next < from) advanceMoment(moments[next++]);
        for (const EffectRow& row : effectRows())
            demo->effects[row.key] = new Swelling(demo->effects[row.key]);
    };
    const auto swells = [] {
        std::vector<std::pair<std::string, double>> all;
        for (const EffectRow& row : effectRows())
            all.emplace_back(row.key, static_cast<Swelling*>(demo->effects[row.key])->swell);
        return all;
    };
    for (const ProgrammeEntry& entry : programme()) {
        if (!entry.advance) continue;
        const auto momentAt = [&](float second) {
            const auto at = std::lower_bound(moments.begin(), moments.end(), second * 1000);
            return size_t(at - moments.begin());
        };
        const size_t from = momentAt(entry.begin), to = momentAt(entry.begin + 2) - 1;
        swellAll(from);
        drawUpTo(to);
        const size_t run = drawPatch();
        const auto drawn = swells();
        swellAll(from);
        advanceUpTo(to);
        EXPECT_EQ(drawPatch(), run) << entry.name;
        EXPECT_EQ(swells(), drawn) << entry.name;
        EXPECT_GT(std::count_if(drawn.begin(), drawn.end(), [](const auto& each) { return each.second > 0; }),
                  0);
    }
}

TEST_F(RunUp, DrawsFewFrames) {
    std::vector<int> times;
    for (int ms = 0; ms < showtime::end.ms; ms += 16) times.push_back(ms);
    const std::vector<bool> drawn = framesToDraw(times);
    const auto entries = programme().size() - 1;
    EXPECT_LE(std::count(drawn.begin(), drawn.end(), true), long(entries + 2));
    EXPECT_TRUE(framesToDraw({}).empty());
    EXPECT_EQ(framesToDraw({5000}), std::vector{true});
}

}  // namespace
