// A rehearsal: the show in its window under an author's hands, with the desk over it.
#pragma once

#include <SDL/SDL.h>

#include <set>
#include <string>

#include "tools/capture/stepped_show.h"
#include "tools/rehearse/background_build.h"
#include "tools/rehearse/desk.h"
#include "tools/rehearse/fresh_start.h"
#include "tools/rehearse/live/library.h"
#include "tools/rehearse/number_list.h"
#include "tools/rehearse/reload.h"
#include "tools/rehearse/stems.h"
#include "tools/rehearse/stored_picture.h"
#include "tools/rehearse/transport.h"
#include "tools/rehearse/watch.h"

// What the window shows of what is held.
enum class Shown {
    nothing,  // it has to be drawn
    quick,    // a frame that stands in for the exact one while hands move
    exact,    // the very frame that a film of the show has; the next one can be drawn after it as it is
    tapped,   // with a beat that counts for this frame alone
};

// What is pressed.
struct Hands {
    std::set<SDLKey> down;
    std::set<SDLKey> repeated;  // since the frame before, by being held down
    enum Dragged { nothing, position, loopEdge, cut, number } dragged = nothing;
    int dragStart = 0;       // milliseconds or, of a number, pixels
    std::string turnedFrom;  // what a number was then
    Loop cutBounds = {};     // between what a cut lies

    bool holds(SDLKey left, SDLKey right) const { return down.contains(left) || down.contains(right); }
};

// How fast frames come, sampled twice a second.
struct FrameRate {
    double start = 0;  // seconds: since when frames are counted
    int frames = 0;
    double drawn = 0;  // seconds of it spent drawing

    void count(double seconds, DeskState* desk);
};

struct Rehearsal {
    SteppedShow& show;
    FreshStart start;
    Transport transport;
    Watch& watch;
    Reload reload;
    BackgroundBuild build;     // of the generator and what it makes
    LiveCode* live = nullptr;  // of script/ and effects/, if they are watched
    Numbers numbers;
    NumberList list;
    Stems stems;
    Meters meters;
    DeskState desk;
    bool deskShown = true;
    Shown shown = Shown::nothing;
    int loaded = 0;           // how often something took its place
    std::string stateFile;    // what the desk shows goes there as well; none if empty
    std::string pictureFile;  // what the window shows goes there once it is settled, and that is all
    bool wrote = false;       // it has been written
    bool done = false;

    // After everything has been loaded; holds at the start. `watch`, which has begun before that, sees data/
    // and, unless it is empty, the folder of the generator's sources, which `makeData` makes the data set
    // from.
    Rehearsal(SteppedShow& show, Loading& loading, Watch& watch, const std::string& sources = "",
              const std::vector<std::string>& makeData = {});

    // Takes over what another start has left.
    void comeBack(const Comeback& state);
    void handleEvent(const SDL_Event& event);
    // Draws what is on now, and the desk over it, and shows both.
    void frame();
    // What is shown looks different now. Effects, which keep what beams see of a model, are made anew and
    // brought to where they are, as after a jump.
    void redraw();
    void lookForChanges();
    void describeDesk();

    void handleKey(const SDL_KeyboardEvent& key);
    void tap();
    void loopSegment();
    void toggleList();
    // What keys do to the numbers.
    void choose(int steps);
    void turnChosen(int steps);
    void step(int direction);
    void seeNumbers();
    void pressDigit(int digit);

private:
    StoredPicture picture;  // of what is held
    DeskState shownDesk;    // in the window
    bool touched = true;    // since that was drawn
    Hands hands;
    FrameRate rate;
    double lastJump = 0;  // seconds
    int shownEntry = 0;   // of the frame before

    void loadNumbers();
    void turnWheel(int x, int y, int steps);
    void takeNumber(int number, Hands::Dragged what, int from);
    void turnTo(double steps);
    void dragCut(int ms);
    void describeNumbers();
    void followProgramme();
    void pressButton(const SDL_MouseButtonEvent& button);
    void release();
    void letGoOfNumber();
    void restoreGl();
    void requestBuilds(const std::string& path);
    void takeCode();
    void keepComeback();
    void press(int x, int y, bool forLoop);
    void drag(int x, int y);
    void drawPlaying();
    void drawHeld();
    void skipTo(int target);
    void drawStepped(int target);
    void describeSound();
    void describeBuild(BackgroundBuild& one, const std::string& problem);
};
