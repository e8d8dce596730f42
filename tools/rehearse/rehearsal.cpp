#include "tools/rehearse/rehearsal.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <span>

#include "app/app.h"
#include "app/frame.h"
#include "app/keys.h"
#include "app/screenshot.h"
#include "render/demo.h"
#include "script/show_times.h"
#include "script/timeline.h"
#include "tools/capture/whole_picture.h"
#include "tools/rehearse/timeline_strip.h"
#include "tools/times.h"
#include "tools/whole_file.h"

namespace {

constexpr double rateSample = 0.5;   // seconds
constexpr int idle = 15;             // milliseconds between frames while nothing moves
constexpr double pixelsPerStep = 4;  // of a number that is dragged
constexpr double handsRest = 0.12;   // seconds without a jump, after which what is held is drawn exactly

// As long as it is held down.
bool repeats(SDLKey key) {
    constexpr SDLKey moving[] = {SDLK_COMMA, SDLK_PERIOD, SDLK_LEFT,   SDLK_RIGHT,
                                 SDLK_UP,    SDLK_DOWN,   SDLK_PAGEUP, SDLK_PAGEDOWN};
    return std::ranges::find(moving, key) != std::end(moving);
}

int milliseconds(float seconds) {
    return int(std::lround(seconds * 1000));
}

// To the messages.
void post(std::vector<std::string>* news) {
    for (const std::string& line : *news) app.messages.post("%s", line.c_str());
    news->clear();
}

struct KeyRow {
    SDLKey key;
    void (*act)(Rehearsal& rehearsal);
};

// Those that the show has not, or otherwise.
constexpr KeyRow keys[] = {
    {SDLK_TAB, [](Rehearsal& r) { r.deskShown = !r.deskShown; }},
    {SDLK_F1, [](Rehearsal& r) { r.desk.help = !r.desk.help; }},
    {SDLK_p, [](Rehearsal& r) { r.transport.held ? r.transport.goOn() : r.transport.hold(); }},
    {SDLK_COMMA, [](Rehearsal& r) { r.transport.step(-1); }},
    {SDLK_PERIOD, [](Rehearsal& r) { r.transport.step(1); }},
    {SDLK_HOME, [](Rehearsal& r) { r.transport.setPosition(r.transport.loop ? r.transport.loop->from : 0); }},
    {SDLK_l, [](Rehearsal& r) { r.loopSegment(); }},
    {SDLK_n, [](Rehearsal& r) { r.toggleList(); }},
    {SDLK_c, [](Rehearsal& r) { r.numbers.compare(), r.seeNumbers(); }},
    {SDLK_RETURN, [](Rehearsal& r) { r.numbers.write(r.numbers.chosen); }},
    {SDLK_KP_ENTER, [](Rehearsal& r) { r.numbers.write(r.numbers.chosen); }},
    {SDLK_m, [](Rehearsal& r) { r.stems.show(!r.stems.choice.shown); }},
    {SDLK_SPACE, [](Rehearsal& r) { r.tap(); }},
    {SDLK_ESCAPE, [](Rehearsal& r) { r.done = !r.transport.loop, r.transport.loop.reset(); }},
};

// Those of the list of numbers while it is open.
constexpr KeyRow listKeys[] = {
    {SDLK_UP, [](Rehearsal& r) { r.choose(-1); }},
    {SDLK_DOWN, [](Rehearsal& r) { r.choose(1); }},
    {SDLK_LEFT, [](Rehearsal& r) { r.turnChosen(-1); }},
    {SDLK_RIGHT, [](Rehearsal& r) { r.turnChosen(1); }},
    {SDLK_ESCAPE, [](Rehearsal& r) { r.list.open = false; }},
};

// Those with Ctrl.
constexpr KeyRow controlKeys[] = {
    {SDLK_z, [](Rehearsal& r) { r.step(-1); }},
    {SDLK_y, [](Rehearsal& r) { r.step(1); }},
};

bool actOn(std::span<const KeyRow> rows, SDLKey key, Rehearsal* rehearsal) {
    const auto row = std::ranges::find(rows, key, &KeyRow::key);
    if (row == rows.end()) return false;
    row->act(*rehearsal);
    return true;
}

}  // namespace

void FrameRate::count(double seconds, DeskState* desk) {
    frames++;
    drawn += seconds;
    const double now = steadySeconds();
    if (now - start < rateSample) return;
    desk->framesPerSecond = float(frames / (now - start));
    desk->millisecondsPerFrame = float(drawn / frames * 1000);
    *this = {now};
}

Rehearsal::Rehearsal(SteppedShow& show, Loading& loading, Watch& watch, const std::string& sources,
                     const std::vector<std::string>& makeData)
    : show(show), watch(watch), reload(&transport, loading, sources), stems(transport.faders) {
    if (!sources.empty()) build.command = makeData;
    build.what = "music, pictures and models";
    stems.build.what = "the stems";
    transport.end = desk.end = milliseconds(programme().back().begin);
    demo->clock.source = &transport;
    transport.setPosition(0);
}

void Rehearsal::comeBack(const Comeback& state) {
    transport.setPosition(state.ms);
    transport.loop = state.loop;
    deskShown = state.deskShown;
    app.counterQ = state.counterQ;
    app.counterA = state.counterA;
    stems.choice = state.stems;
    stems.show(state.stems.shown);
    numbers.takeOver(state.unwritten);
    for (const std::string& source : state.unmade) build.request(source);
    build.request();
    if (!state.held) transport.goOn();
}

void Rehearsal::keepComeback() {
    Comeback& state = live->left;
    static_cast<Whereabouts&>(state) = {transport.rawPosition(),
                                        transport.held,
                                        transport.loop,
                                        deskShown,
                                        app.counterQ,
                                        app.counterA,
                                        stems.choice,
                                        {build.process, live->build.process, stems.build.process}};
    state.turned = numbers.suspect;
    state.unwritten = numbers.left();
    state.unmade = build.newer;
    setComeback(state);
}

void Rehearsal::handleEvent(const SDL_Event& event) {
    touched = true;
    const SDLKey key = event.key.keysym.sym;
    // Every tap counts; one that is held down counts once a frame, however long that takes.
    if (event.type == SDL_KEYDOWN &&
        (hands.down.insert(key).second || (repeats(key) && hands.repeated.insert(key).second)))
        handleKey(event.key);
    if (event.type == SDL_KEYUP) hands.down.erase(key);
    if (event.type == SDL_MOUSEBUTTONDOWN && deskShown) pressButton(event.button);
    if (event.type == SDL_MOUSEMOTION) drag(event.motion.x, event.motion.y);
    if (event.type == SDL_MOUSEBUTTONUP && event.button.button == SDL_BUTTON_LEFT) release();
    if (event.type == SDL_QUIT) done = true;
}

void Rehearsal::handleKey(const SDL_KeyboardEvent& key) {
    const SDLKey symbol = key.keysym.sym;
    // Alt and Tab is the desktop's.
    if (symbol == SDLK_TAB && (key.keysym.mod & KMOD_ALT)) return;
    if (hands.holds(SDLK_LCTRL, SDLK_RCTRL) && actOn(controlKeys, symbol, this)) return;
    if (list.open && deskShown && actOn(listKeys, symbol, this)) return;
    if (actOn(keys, symbol, this)) return;
    if (symbol >= SDLK_0 && symbol <= SDLK_9) return pressDigit(symbol - SDLK_0);
    // Not from the frame's time, as the show's own: several may come within a frame.
    if (const float seconds = seekSeconds(symbol))
        transport.setPosition(transport.position() + milliseconds(seconds));
    else
        ::handleKey(symbol);
}

void Rehearsal::tap() {
    ::handleKey(SDLK_SPACE);
    if (!transport.held || transport.jumped || shown == Shown::nothing) return;
    drawFrame();
    picture.keep();
    shown = Shown::tapped;
}

void Rehearsal::pressButton(const SDL_MouseButtonEvent& button) {
    const int x = button.x, y = button.y;
    if (button.button == SDL_BUTTON_WHEELUP) turnWheel(x, y, 1);
    if (button.button == SDL_BUTTON_WHEELDOWN) turnWheel(x, y, -1);
    if (button.button != SDL_BUTTON_LEFT) return;
    if (list.isOn(x, y))
        takeNumber(list.numberAt(numbers, x, y), Hands::number, x);
    else
        press(x, y, hands.holds(SDLK_LSHIFT, SDLK_RSHIFT));
}

void Rehearsal::pressDigit(int digit) {
    if (digit == 0) return stems.hearAll();
    if (stems.choice.shown && stems.rows.empty() && stems.problem.empty())
        app.messages.post("the stems are not made yet");
    stems.toggle(hands.holds(SDLK_LSHIFT, SDLK_RSHIFT) ? &StemChoice::soloed : &StemChoice::muted, digit - 1);
}

void Rehearsal::press(int x, int y, bool forLoop) {
    const int stem = stemAt(x, y, desk.stems.size());
    if (stem >= 0) return stems.toggle(forLoop ? &StemChoice::soloed : &StemChoice::muted, stem);
    // It has its number, and maybe another place, in code that is loaded for that.
    if (!forLoop && cutAt(x, y, transport.end) > 0) loadNumbers();
    const int ms = timelineAt(x, y, transport.end, false, desk.stems.size());
    if (ms < 0) return;
    const int cut = forLoop ? -1 : cutAt(x, y, transport.end);
    if (cut > 0) {
        hands.cutBounds = {milliseconds(programme()[cut - 1].begin),
                           milliseconds(programme()[cut + 1].begin)};
        return takeNumber(numbers.cutOf(cut), Hands::cut, ms);
    }
    hands.dragged = forLoop ? Hands::loopEdge : Hands::position;
    hands.dragStart = ms;
    if (!forLoop) transport.setPosition(ms);
}

void Rehearsal::drag(int x, int y) {
    if (hands.dragged == Hands::number) return turnTo(double(x - hands.dragStart) / pixelsPerStep);
    desk.pointer = timelineAt(x, y, transport.end, hands.dragged != Hands::nothing, desk.stems.size());
    if (hands.dragged == Hands::cut) return dragCut(desk.pointer - hands.dragStart);
    desk.cut = cutAt(x, y, transport.end);
    const int number = list.numberAt(numbers, x, y);
    if (number >= 0 && hands.dragged == Hands::nothing) numbers.chosen = number;
    if (hands.dragged == Hands::position) transport.setPosition(desk.pointer);
    if (hands.dragged == Hands::loopEdge) transport.setLoop(hands.dragStart, desk.pointer);
}

void Rehearsal::loopSegment() {
    const int row = std::min(entryAt(transport.position()), int(programme().size()) - 2);
    transport.setLoop(milliseconds(programme()[row].begin), milliseconds(programme()[row + 1].begin));
}

void Rehearsal::toggleList() {
    list.open = !list.open || !deskShown;
    if (list.open) deskShown = true;
    if (list.open && (!live || live->build.command.empty()))
        app.messages.post("the numbers are where the sources are: in a built copy of them");
}

// What is linked has none that could be turned.
void Rehearsal::loadNumbers() {
    if (live && live->load()) takeCode();
    if (numbers.follow(reload.loading)) list.scroll(numbers, 0);
}

void Rehearsal::choose(int steps) {
    letGoOfNumber();
    numbers.choose(steps);
    list.reveal(numbers);
}

void Rehearsal::turnChosen(int steps) {
    if (numbers.chosen < 0) return;
    const double finer = hands.holds(SDLK_LSHIFT, SDLK_RSHIFT) ? 10
                         : hands.holds(SDLK_LCTRL, SDLK_RCTRL) ? 0.1
                                                               : 1;
    if (numbers.turn(numbers.chosen, steps * finer)) seeNumbers();
}

void Rehearsal::turnWheel(int x, int y, int steps) {
    const int number = list.numberAt(numbers, x, y);
    if (list.isOn(x, y) && number < 0) return list.scroll(numbers, -3 * steps);
    if (!list.open) return;
    letGoOfNumber();
    if (number >= 0) numbers.chosen = number;
    turnChosen(steps);
}

// `from` is where the mouse is: pixels or milliseconds.
void Rehearsal::takeNumber(int number, Hands::Dragged what, int from) {
    if (number < 0) return;
    numbers.chosen = number;
    hands.dragged = what;
    hands.dragStart = from;
    hands.turnedFrom = numbers.all[size_t(number)].now;
    numbers.beginGesture();
}

void Rehearsal::turnTo(double steps) {
    if (numbers.chosen >= 0 && numbers.turn(numbers.chosen, std::round(steps), hands.turnedFrom))
        seeNumbers();
}

// By whole beats, as the cuts lie on the music; with Shift by milliseconds. As far as its neighbours, however
// fast the mouse is.
void Rehearsal::dragCut(int ms) {
    if (numbers.chosen < 0) return;
    const double step = hands.holds(SDLK_LSHIFT, SDLK_RSHIFT) ? 1 : 60000.0 / showtime::beatsPerMinute;
    const int from = std::atoi(hands.turnedFrom.c_str());
    const double least = std::ceil((hands.cutBounds.from + 1 - from) / step);
    const double most = std::floor((hands.cutBounds.to - 1 - from) / step);
    const double steps = std::max(std::min(std::round(ms / step), most), least);
    const int to = int(std::lround(from + steps * step));
    desk.pointer = to;  // whose time is told
    if (numbers.turnTo(numbers.chosen, std::to_string(to))) seeNumbers();
}

void Rehearsal::release() {
    if (hands.dragged == Hands::cut && numbers.chosen >= 0 && numbers.all[size_t(numbers.chosen)].turned()) {
        const TurnableNumber& cut = numbers.all[size_t(numbers.chosen)];
        app.messages.post("%s = %s, in the source %s: Enter writes it", cut.place().c_str(), cut.now.c_str(),
                          cut.source.c_str());
    }
    hands.dragged = Hands::nothing;
    numbers.endGesture();
}

// Before another is chosen, which the mouse would turn on with the digits of that one.
void Rehearsal::letGoOfNumber() {
    if (hands.dragged == Hands::cut || hands.dragged == Hands::number) release();
}

void Rehearsal::step(int direction) {
    letGoOfNumber();
    if (numbers.step(direction)) seeNumbers();
}

void Rehearsal::seeNumbers() {
    list.reveal(numbers);
    redraw();
}

void Rehearsal::redraw() {
    shown = Shown::nothing;
    transport.jumped = true;
}

void Rehearsal::frame() {
    const WorkLimit limit;
    hands.repeated.clear();
    lookForChanges();
    if (live) keepComeback();
    if (reload.apply()) {
        loaded++;
        redraw();
    }
    if (list.open)
        loadNumbers();
    else
        numbers.follow(reload.loading);
    if (numbers.hand(live)) followProgramme();
    transport.turn();
    const bool settled = shown == Shown::exact || shown == Shown::tapped;
    const bool still = transport.held && !transport.jumped && settled;
    if (!still || touched) transport.held ? drawHeld() : drawPlaying();
    if (app.screenshotRequested) saveScreenshot();
    describeDesk();
    if (still && !touched) {
        // The window keeps what it shows.
        if (desk == shownDesk && pictureFile.empty()) return SDL_Delay(idle);
        picture.show();
    }
    touched = false;
    shownDesk = desk;
    list.bottom = stripHeight(desk.stems.size()) + 10;
    if (deskShown) {
        drawNumbers(numbers, list);
        drawDesk(desk, list.left() - 4);
    }
    const bool mayBeLoaded =
        live && !live->build.command.empty() && live->build.problem.empty() && live->problem.empty();
    const bool listed = !list.open || !numbers.listed.empty() || !mayBeLoaded;
    const bool measured = reload.idle() && (desk.level || meters.idle());
    if (!pictureFile.empty() && shown == Shown::exact && measured && listed) {
        wrote = writeScreen(pictureFile);
        done = true;
    }
    SDL_GL_SwapBuffers();
    if (still) SDL_Delay(idle);
}

// After a jump, what is carried from frame to frame is brought to where it would be, as far as that goes
// without drawing: a show that plays must not stand still for it.
void Rehearsal::drawPlaying() {
    if (transport.jumped) skipTo(nearestFrame(transport.position()));
    transport.jumped = false;
    shown = Shown::nothing;
    const double before = steadySeconds();
    numbers.beginFrame();
    drawFrame();
    glFinish();
    rate.count(steadySeconds() - before, &desk);
    shownEntry = entryAt(milliseconds(demo->clock.time()));
    if (numbers.endFrame(shownEntry)) list.reveal(numbers);
}

void Rehearsal::drawHeld() {
    const int target = nearestFrame(transport.position());
    if (transport.jumped || shown == Shown::nothing) {
        transport.jumped = false;
        const bool next = shown == Shown::exact && target == show.next;
        if (!next) skipTo(target);
        drawStepped(target);
        // Hands are free to move on as soon as they see it.
        lastJump = steadySeconds();
        shown = next ? Shown::exact : Shown::quick;
    } else if (shown == Shown::quick && hands.dragged != Hands::position &&
               steadySeconds() - lastJump > handsRest) {
        start.restoreShow(&show);
        restoreGl();
        drawStepped(target);
        shown = Shown::exact;
    } else {
        picture.show();
    }
}

void Rehearsal::skipTo(int target) {
    start.restoreShow(&show);
    if (entryAt(millisecondsOf(target)) != shownEntry) restoreGl();
    demo->clock.source = &show.music;
    show.skipTo(target);
    demo->clock.source = &transport;
}

void Rehearsal::restoreGl() {
    start.restoreGl();
    numbers.giveUniforms();
}

// The frame as a film of the show has it, if nothing but such frames were drawn since the start.
void Rehearsal::drawStepped(int target) {
    demo->clock.source = &show.music;
    show.drawRunUp(target);
    numbers.beginFrame();
    show.draw(target);
    demo->clock.source = &transport;
    picture.keep();
    shownEntry = entryAt(millisecondsOf(target));
    if (numbers.endFrame(shownEntry)) list.reveal(numbers);
}

void Rehearsal::lookForChanges() {
    const Watch::Changes changes = watch.take();
    if (!watch.problem.empty()) reload.loading.tell("", watch.problem);
    for (const std::string& path : changes.gone) {
        reload.gone(path);
        requestBuilds(path);
    }
    for (const std::string& path : changes.saved) {
        reload.saved(path);
        requestBuilds(path);
    }
    if (changes.lost) {
        reload.everything();
        build.request(reload.sources);
        if (live) live->build.request();
    }
    if (live && live->poll()) takeCode();
    if (build.poll() && build.problem.empty()) stems.makeAgain();
    stems.poll();
}

void Rehearsal::requestBuilds(const std::string& path) {
    const std::filesystem::path file = path;
    const bool isHidden = file.filename().string().starts_with('.');  // as editors mark what is being edited
    if (isHidden || (file.extension() != ".cpp" && file.extension() != ".h")) return;
    const bool isLive = live && live->isSource(path);
    if (isLive) live->build.request(path);
    // Music is written to the show's times; pictures and models are made to what scenes have in headers, too.
    const bool isGenerators = !reload.sources.empty() && path.starts_with(reload.sources + "/");
    if (isGenerators || (isLive && path.ends_with(".h"))) build.request(path);
}

// Effects are made anew by it when they are brought to where they are.
void Rehearsal::takeCode() {
    numbers.suspect.clear();
    followProgramme();
    reload.takeNewRows();
    loaded++;
    redraw();
}

void Rehearsal::followProgramme() {
    transport.end = desk.end = milliseconds(programme().back().begin);
    if (transport.loop) transport.setLoop(transport.loop->from, transport.loop->to);
}

void Rehearsal::describeDesk() {
    desk.ms = milliseconds(demo->clock.time());
    desk.held = transport.held;
    desk.exact = shown == Shown::exact;
    desk.loop = transport.loop;
    desk.pulse = (loadedCode ? *loadedCode->frame : ::frame).pulse;
    desk.counterQ = app.counterQ;
    desk.counterA = app.counterA;
    desk.waveform = reload.waveform;
    desk.working.clear();
    desk.problems.clear();
    for (const auto& [file, problem] : reload.loading.problems) desk.problems.push_back(problem);
    post(&reload.news);
    post(&numbers.news);
    describeNumbers();
    describeBuild(build, build.problem);
    describeSound();
    if (live) describeBuild(live->build, live->build.problem.empty() ? live->problem : live->build.problem);
    desk.messages.clear();
    for (const auto& line : app.messages.lines) desk.messages.push_back(line.get());
    if (!stateFile.empty()) writeWholeFile(stateFile, describe(desk));
}

void Rehearsal::describeSound() {
    describeBuild(stems.build, stems.build.problem);
    desk.stems.clear();
    if (stems.choice.shown) {
        if (!stems.problem.empty()) desk.problems.push_back(stems.problem);
        for (size_t i = 0; i < stems.rows.size(); i++)
            desk.stems.push_back({stems.rows[i].name, stems.rows[i].waveform,
                                  bool(stems.choice.muted >> i & 1), bool(stems.choice.soloed >> i & 1),
                                  stems.isHeard(int(i))});
    }
    meters.follow(stems.heardFiles(reload.track), desk.ms, desk.end);
    desk.level = meters.at(desk.ms);
}

void Rehearsal::describeBuild(BackgroundBuild& one, const std::string& problem) {
    post(&one.news);
    if (one.running()) desk.working.push_back(one.whatIsMade());
    if (problem.empty()) return;
    desk.problems.push_back(problem);
    if (!one.newer.empty()) desk.problems.back().append("\n").append(one.whatIsShown());
}

void Rehearsal::describeNumbers() {
    desk.numbers.clear();
    if (list.open)
        for (const int i : numbers.listed)
            desk.numbers.push_back(numbers.all[size_t(i)].place() + " = " + numbers.all[size_t(i)].now);
    desk.turned = numbers.unwritten();
    desk.chosen = numbers.chosen < 0 ? "" : numbers.all[size_t(numbers.chosen)].place();
}
