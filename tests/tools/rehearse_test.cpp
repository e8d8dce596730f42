// The rehearsal in the test's own window: transport, loops, and what is held against what a film would have.
#include <array>
#include <functional>

#include "script/show_times.h"
#include "tests/tools/rehearsal_window.h"
#include "tools/rehearse/timeline_strip.h"

namespace {

using Rehearse = RehearsalWindow;

// Beats that a jump back would leave in the future, boxes in mid-turn, lights and shocks that another segment
// has left behind: none may show.
TEST_F(Rehearse, WhatIsHeldIsWhatAFilmHasWhereverOneComesFrom) {
    const Screen boxes = goTo(70000);
    goTo(150000);
    goTo(55000);
    key(SDLK_PAGEUP);
    settle();
    EXPECT_EQ(rehearsal->desk.ms, 25000);
    EXPECT_EQ(differing(goTo(70000), boxes), 0);

    // The film itself.
    rehearsal->start.restoreShow(&*show);
    rehearsal->start.restoreGl();
    demo->clock.source = &show->music;
    show->draw(70 * 60);
    SDL_GL_SwapBuffers();
    EXPECT_EQ(differing(readWindow(), boxes), 0);
    EXPECT_GT(boxes.litCount(), 100000);
}

TEST_F(Rehearse, StepsLeadFromFrameToFrameAndNowhereElse) {
    goTo(12010);
    EXPECT_EQ(rehearsal->desk.ms, 12017) << "the nearest frame of sixty";
    for (int i = 0; i < 3; i++) key(SDLK_PERIOD);
    settle();
    EXPECT_EQ(rehearsal->desk.ms, 12067);
    for (int i = 0; i < 4; i++) key(SDLK_COMMA);
    settle();
    EXPECT_EQ(rehearsal->desk.ms, 12000);
    key(SDLK_HOME);
    key(SDLK_COMMA);
    settle();
    EXPECT_EQ(rehearsal->desk.ms, 0);
    key(SDLK_p);
    EXPECT_FALSE(rehearsal->transport.held);
    key(SDLK_PERIOD);
    EXPECT_TRUE(rehearsal->transport.held);
}

// Three taps within a frame; a key that is held down repeats once a frame.
TEST_F(Rehearse, EveryTapCounts) {
    goTo(10000);
    for (int i = 0; i < 3; i++) key(SDLK_RIGHT);
    key(SDLK_DOWN);
    settle();
    EXPECT_EQ(rehearsal->desk.ms, 8000);
    for (int i = 0; i < 5; i++) keyEvent(SDLK_RIGHT, SDL_KEYDOWN);
    rehearsal->frame();
    keyEvent(SDLK_RIGHT, SDL_KEYDOWN);
    settle();
    EXPECT_EQ(rehearsal->desk.ms, 11000);
}

// The programme's last row would end the program.
TEST_F(Rehearse, TheEndIsAPlaceToStandAt) {
    rehearsal->transport.setPosition(195270);
    key(SDLK_p);
    for (int i = 0; i < 1000 && !rehearsal->transport.held; i++) rehearsal->frame();
    EXPECT_TRUE(rehearsal->transport.held);
    settle();
    EXPECT_EQ(rehearsal->desk.ms, 195267);
    key(SDLK_PAGEDOWN);
    settle();
    EXPECT_EQ(rehearsal->desk.ms, 195267);
}

TEST_F(Rehearse, ALoopTurnsAndEscEndsItFirst) {
    goTo(70000);
    key(SDLK_l);
    ASSERT_TRUE(rehearsal->transport.loop);
    EXPECT_EQ(rehearsal->transport.loop->from, showtime::heap.ms);
    EXPECT_EQ(rehearsal->transport.loop->to, showtime::probes.ms);
    rehearsal->transport.setPosition(showtime::probes.ms - 30);
    key(SDLK_p);
    do {
        rehearsal->frame();
        ASSERT_LT(rehearsal->desk.ms, showtime::probes.ms);
    } while (rehearsal->desk.ms >= 70000);
    EXPECT_LE(rehearsal->desk.pulse, 1) << "no beat lies in the future";
    key(SDLK_HOME);
    rehearsal->frame();
    EXPECT_LT(rehearsal->desk.ms, 70000);
    key(SDLK_ESCAPE);
    EXPECT_FALSE(rehearsal->transport.loop);
    EXPECT_FALSE(rehearsal->done);
    key(SDLK_ESCAPE);
    EXPECT_TRUE(rehearsal->done);
}

// The desk is drawn over a frame whose state the next one may rest on.
TEST_F(Rehearse, TheDeskChangesNothingOfTheShow) {
    const Screen bare = goTo(100000);
    key(SDLK_TAB);
    key(SDLK_F1);
    app.messages.post("Beat");
    rehearsal->desk.problems = {"data/spot.png: broken"};
    rehearsal->transport.setLoop(20000, 40000);
    rehearsal->desk.pointer = 30000;
    const auto states = [] {
        return std::array{stateOf(GL_MATRIX_MODE), stateOf(GL_TEXTURE_BINDING_2D), stateOf(GL_BLEND),
                          stateOf(GL_ACTIVE_TEXTURE)};
    };
    const auto before = states();
    const Screen covered = settle();
    EXPECT_EQ(states(), before);
    EXPECT_GT(differing(covered, bare), 50000);
    for (int i = 0; i < 3; i++) key(SDLK_PERIOD);
    settle();
    for (int i = 0; i < 3; i++) key(SDLK_COMMA);
    key(SDLK_TAB);
    EXPECT_EQ(differing(settle(), bare), 0);
    EXPECT_EQ(glGetHandleARB(GL_PROGRAM_OBJECT_ARB), 0u);
}

TEST_F(Rehearse, TheTimelineIsWhereItIsDrawn) {
    EXPECT_EQ(timelineAt(400, 300, 195280, false), -1);
    EXPECT_EQ(timelineAt(11, 560, 195280, false), 0);
    EXPECT_NEAR(timelineAt(400, 560, 195280, false), 97640, 200);
    EXPECT_EQ(timelineAt(799, 10, 195280, true), 195279);

    const BarAndBeat start = barAndBeatAt(17139), before = barAndBeatAt(17000), late = barAndBeatAt(93281);
    EXPECT_EQ(start.bar, 0);
    EXPECT_EQ(start.beat, 1);
    EXPECT_EQ(before.bar, -1);
    EXPECT_EQ(before.beat, 4);
    EXPECT_EQ(late.bar, 39);
    EXPECT_EQ(late.beat, 4);
}

// While one is dragged another may be chosen by keys and by the wheel.
TEST_F(Rehearse, ANumberIsDraggedByItselfAlone) {
    Numbers& numbers = rehearsal->numbers;
    rehearsal->deskShown = true;
    key(SDLK_n);
    settle();
    const auto mouse = [&](Uint8 type, Uint8 button, int number, int right) {
        int at = 0;
        while (at < 800 * 600 && rehearsal->list.numberAt(numbers, at % 800, at / 800) != number) at++;
        SDL_Event event{};
        event.type = type;
        if (type == SDL_MOUSEMOTION)
            event.motion.x = Uint16(at % 800 + right), event.motion.y = Uint16(at / 800);
        else
            event.button.button = button, event.button.x = Uint16(at % 800),
            event.button.y = Uint16(at / 800);
        rehearsal->handleEvent(event);
    };
    const std::function<void()> choices[] = {
        [&] { key(SDLK_DOWN); },
        [&] { mouse(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_WHEELUP, 1, 0); },
        [&] {
            keyEvent(SDLK_LCTRL, SDL_KEYDOWN);
            key(SDLK_z);
            keyEvent(SDLK_LCTRL, SDL_KEYUP);
        },
    };
    for (const auto& choose : choices) {
        // Those that are turned are in the list.
        for (const int number : {0, 1, 1}) ASSERT_TRUE(numbers.turn(number, 1));
        mouse(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 0, 0);
        choose();
        EXPECT_EQ(numbers.chosen, 1);
        const std::string now[] = {numbers.all[0].now, numbers.all[1].now};
        mouse(SDL_MOUSEMOTION, 0, 0, 20);
        EXPECT_EQ(numbers.all[0].now, now[0]);
        EXPECT_EQ(numbers.all[1].now, now[1]);
        mouse(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 0, 0);
        while (numbers.step(-1)) {
        }
        EXPECT_TRUE(numbers.unwritten().empty());
    }
}

}  // namespace
