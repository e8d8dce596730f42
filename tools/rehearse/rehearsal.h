// A rehearsal: the show in its window under an author's hands, with the desk over it.
#pragma once

#include <SDL/SDL.h>

#include <set>
#include <string>

#include "tools/capture/stepped_show.h"
#include "tools/rehearse/background_build.h"
#include "tools/rehearse/desk.h"
#include "tools/rehearse/fresh_start.h"
#include "tools/rehearse/reload.h"
#include "tools/rehearse/stored_picture.h"
#include "tools/rehearse/transport.h"
#include "tools/rehearse/watch.h"

struct Rehearsal {
    SteppedShow& show;
    FreshStart start;
    StoredPicture picture;  // of what is held
    Transport transport;
    Watch& watch;
    Reload reload;
    BackgroundBuild build;  // of the generator and what it makes
    DeskState desk;
    bool deskShown = true;
    bool done = false;
    bool wrote = false;       // the picture that was asked for
    std::string stateFile;    // what the desk shows goes there as well; none if empty
    std::string pictureFile;  // what the window shows goes there once it is settled, and that is all

    // What is held is the very frame that a film of the show has; a quick one is shown before.
    bool exact = false;
    bool stepped = false;       // the next frame can be drawn after it as it is
    bool tapped = false;        // a beat, since the frame before
    double lastJump = 0;        // seconds
    int shownEntry = 0;         // of the frame before
    int loaded = 0;             // how often something took its place
    std::set<SDLKey> down;      // keys
    std::set<SDLKey> repeated;  // since the frame before, by being held down
    enum { nothing, position, loopEdge } dragged = nothing;
    int dragStart = 0;  // milliseconds

    // After everything has been loaded; holds at the start. `watch`, which has begun before that, sees data/
    // and, unless it is empty, the folder of the generator's sources, which `makeData` makes the data set
    // from.
    Rehearsal(SteppedShow& show, Loading& loading, Watch& watch, const std::string& sources = "",
              const std::vector<std::string>& makeData = {});

    void handleEvent(const SDL_Event& event);
    // Draws what is on now, and the desk over it, and shows both.
    void frame();

    // What is shown looks different now. Effects, which keep what beams see of a model, are made anew and
    // brought to where they are, as after a jump.
    void redraw();

    void handleKey(const SDL_KeyboardEvent& key);
    void press(int x, int y, bool forLoop);
    void drag(int x, int y);
    void loopSegment();
    void drawPlaying();
    void drawHeld();
    void skipTo(int target);
    void drawStepped(int target);
    void lookForChanges();
    void writePicture();
    void measure(double drawn);
    void describeDesk();

    double rateStart = 0;  // seconds: since when frames are counted
    int rateFrames = 0;
    double rateDrawn = 0;  // seconds of it spent drawing
};
