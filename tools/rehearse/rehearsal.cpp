#include "tools/rehearse/rehearsal.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <iterator>

#include "app/app.h"
#include "app/frame.h"
#include "app/keys.h"
#include "app/screenshot.h"
#include "render/demo.h"
#include "script/timeline.h"
#include "tools/capture/whole_file.h"
#include "tools/rehearse/timeline_strip.h"

namespace {

constexpr double rateSample = 0.5;  // seconds
constexpr int idle = 15;            // milliseconds between frames while nothing moves
constexpr double handsRest = 0.12;  // seconds without a jump, after which what is held is drawn exactly

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// As long as it is held down.
bool repeats(SDLKey key) {
    constexpr SDLKey moving[] = {SDLK_COMMA, SDLK_PERIOD, SDLK_LEFT,   SDLK_RIGHT,
                                 SDLK_UP,    SDLK_DOWN,   SDLK_PAGEUP, SDLK_PAGEDOWN};
    return std::find(std::begin(moving), std::end(moving), key) != std::end(moving);
}

// What the generator is compiled from.
bool isCode(const std::string& path) {
    return path.ends_with(".cpp") || path.ends_with(".h");
}

int milliseconds(float seconds) {
    return int(std::lround(seconds * 1000));
}

}  // namespace

Rehearsal::Rehearsal(SteppedShow& show, Loading& loading, Watch& watch, const std::string& sources,
                     const std::vector<std::string>& makeData)
    : show(show), watch(watch), reload(&transport, loading, sources) {
    if (!sources.empty()) build.command = makeData;
    transport.end = milliseconds(programme().back().begin);
    desk.end = transport.end;
    demo->clock.source = &transport;
    transport.setPosition(0);
}

void Rehearsal::handleEvent(const SDL_Event& event) {
    switch (event.type) {
        case SDL_KEYDOWN:
            // Every tap counts; one that is held down counts once a frame, however long that takes.
            if (down.insert(event.key.keysym.sym).second ||
                (repeats(event.key.keysym.sym) && repeated.insert(event.key.keysym.sym).second))
                handleKey(event.key);
            break;
        case SDL_KEYUP:
            down.erase(event.key.keysym.sym);
            break;
        case SDL_MOUSEBUTTONDOWN:
            if (event.button.button == SDL_BUTTON_LEFT && deskShown)
                press(event.button.x, event.button.y,
                      down.contains(SDLK_LSHIFT) || down.contains(SDLK_RSHIFT));
            break;
        case SDL_MOUSEMOTION:
            drag(event.motion.x, event.motion.y);
            break;
        case SDL_MOUSEBUTTONUP:
            if (event.button.button == SDL_BUTTON_LEFT) dragged = nothing;
            break;
        case SDL_QUIT:
            done = true;
            break;
        default:
            break;
    }
}

void Rehearsal::handleKey(const SDL_KeyboardEvent& key) {
    switch (key.keysym.sym) {
        case SDLK_TAB:
            // Alt and Tab is the desktop's.
            if (!(key.keysym.mod & KMOD_ALT)) deskShown = !deskShown;
            break;
        case SDLK_F1:
            desk.help = !desk.help;
            break;
        case SDLK_p:
            if (transport.held)
                transport.goOn();
            else
                transport.hold();
            break;
        case SDLK_COMMA:
            transport.step(-1);
            break;
        case SDLK_PERIOD:
            transport.step(1);
            break;
        case SDLK_HOME:
            transport.setPosition(transport.loop ? transport.loop->from : 0);
            break;
        case SDLK_l:
            loopSegment();
            break;
        case SDLK_ESCAPE:
            if (transport.loop)
                transport.loop.reset();
            else
                done = true;
            break;
        case SDLK_SPACE:
            ::handleKey(SDLK_SPACE);
            tapped = true;
            break;
        default:
            // Not from the frame's time, as the show's own: several may come within a frame.
            if (const float seconds = seekSeconds(key.keysym.sym))
                transport.setPosition(transport.position() + milliseconds(seconds));
            else
                ::handleKey(key.keysym.sym);
            break;
    }
}

void Rehearsal::press(int x, int y, bool forLoop) {
    const int ms = timelineAt(x, y, transport.end, false);
    if (ms < 0) return;
    dragged = forLoop ? loopEdge : position;
    dragStart = ms;
    if (!forLoop) transport.setPosition(ms);
}

void Rehearsal::drag(int x, int y) {
    desk.pointer = timelineAt(x, y, transport.end, dragged != nothing);
    if (dragged == position) transport.setPosition(desk.pointer);
    if (dragged == loopEdge) transport.setLoop(dragStart, desk.pointer);
}

void Rehearsal::loopSegment() {
    const int row = std::min(entryAt(transport.position()), int(programme().size()) - 2);
    transport.setLoop(milliseconds(programme()[row].begin), milliseconds(programme()[row + 1].begin));
}

void Rehearsal::redraw() {
    picture.valid = stepped = exact = false;
    transport.jumped = true;
}

void Rehearsal::frame() {
    repeated.clear();
    lookForChanges();
    if (reload.apply()) {
        loaded++;
        redraw();
    }
    transport.turn();
    const bool moving = !transport.held || transport.jumped || !picture.valid || !exact;
    if (!transport.held)
        drawPlaying();
    else
        drawHeld();
    if (app.screenshotRequested) saveScreenshot();
    describeDesk();
    if (deskShown) drawDesk(desk);
    if (!pictureFile.empty() && exact && reload.idle()) writePicture();
    SDL_GL_SwapBuffers();
    if (!moving) SDL_Delay(idle);
}

// After a jump, what is carried from frame to frame is brought to where it would be, as far as that goes
// without drawing: a show that plays must not stand still for it.
void Rehearsal::drawPlaying() {
    if (transport.jumped) skipTo(nearestFrame(transport.position()));
    transport.jumped = picture.valid = stepped = false;
    const double before = secondsNow();
    drawFrame();
    glFinish();
    measure(secondsNow() - before);
    shownEntry = entryAt(milliseconds(demo->clock.time()));
}

void Rehearsal::drawHeld() {
    const double now = secondsNow();
    if (transport.jumped || !picture.valid) {
        transport.jumped = false;
        lastJump = now;
        const int target = nearestFrame(transport.position());
        const bool next = stepped && target == show.next;
        if (!next) skipTo(target);
        drawStepped(target);
        exact = stepped = next;
    } else if (!exact && dragged != position && now - lastJump > handsRest) {
        const int target = nearestFrame(transport.position());
        start.restoreShow(&show);
        start.restoreGl();
        drawStepped(target);
        exact = stepped = true;
    } else if (tapped) {
        // The beat counts at once, for this frame alone.
        drawFrame();
        picture.keep();
        stepped = false;
    } else {
        picture.show();
    }
    tapped = false;
}

void Rehearsal::skipTo(int target) {
    start.restoreShow(&show);
    if (entryAt(millisecondsOf(target)) != shownEntry) start.restoreGl();
    demo->clock.source = &show.music;
    show.skipTo(target);
    demo->clock.source = &transport;
}

// The frame as a film of the show has it, if nothing but such frames were drawn since the start.
void Rehearsal::drawStepped(int target) {
    demo->clock.source = &show.music;
    show.draw(target);
    demo->clock.source = &transport;
    picture.keep();
    shownEntry = entryAt(millisecondsOf(target));
}

void Rehearsal::lookForChanges() {
    const Watch::Changes changes = watch.take();
    if (!watch.problem.empty()) reload.tell("", watch.problem);
    for (const std::string& path : changes.gone) reload.gone(path);
    for (const std::string& path : changes.saved) {
        reload.saved(path);
        if (!reload.sources.empty() && path.starts_with(reload.sources + "/") && isCode(path))
            build.request(path);
    }
    if (changes.lost) {
        reload.everything();
        build.request(reload.sources);
    }
    if (build.poll() && !build.problem.empty()) fprintf(stderr, "%s\n", build.problem.c_str());
}

void Rehearsal::writePicture() {
    wrote = writeScreen(pictureFile);
    done = true;
}

void Rehearsal::measure(double drawn) {
    rateFrames++;
    rateDrawn += drawn;
    const double now = secondsNow();
    if (now - rateStart < rateSample) return;
    desk.framesPerSecond = float(rateFrames / (now - rateStart));
    desk.millisecondsPerFrame = float(rateDrawn / rateFrames * 1000);
    rateStart = now;
    rateFrames = 0;
    rateDrawn = 0;
}

void Rehearsal::describeDesk() {
    desk.ms = milliseconds(demo->clock.time());
    desk.held = transport.held;
    desk.exact = exact;
    desk.loop = transport.loop;
    desk.pulse = ::frame.pulse;
    desk.counterQ = app.counterQ;
    desk.counterA = app.counterA;
    for (const std::string& line : reload.news) app.messages.post("%s", line.c_str());
    reload.news.clear();
    for (const std::string& line : build.news) app.messages.post("%s", line.c_str());
    build.news.clear();
    desk.waveform = reload.waveform;
    desk.working = build.running() ? "making: " + build.latest + "; " + build.whatIsShown() : "";
    desk.problems.clear();
    for (const auto& [file, problem] : reload.loading.problems) desk.problems.push_back(problem);
    if (!build.problem.empty()) desk.problems.push_back(build.problem + "\n" + build.whatIsShown());
    desk.messages.clear();
    for (const auto& line : app.messages.lines) desk.messages.push_back(line.get());
    if (stateFile.empty()) return;
    const std::string unfinished = stateFile + ".unfinished";
    if (FILE* file = fopen(unfinished.c_str(), "w")) {
        fputs(describe(desk).c_str(), file);
        fclose(file);
        rename(unfinished.c_str(), stateFile.c_str());
    }
}
