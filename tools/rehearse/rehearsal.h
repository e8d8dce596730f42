// A rehearsal: the show in its window under an author's hands, with the desk over it.
#pragma once

#include <SDL/SDL.h>

#include <string>

#include "tools/capture/stepped_show.h"
#include "tools/rehearse/desk.h"
#include "tools/rehearse/fresh_start.h"
#include "tools/rehearse/stored_picture.h"
#include "tools/rehearse/transport.h"

struct Rehearsal {
    SteppedShow& show;
    FreshStart start;
    StoredPicture picture;  // of what is held
    Transport transport;
    DeskState desk;
    bool deskShown = true;
    bool done = false;
    std::string stateFile;  // what the desk shows goes there as well; none if empty

    // What is held is the very frame that a film of the show has; a quick one is shown before.
    bool exact = false;
    bool stepped = false;  // the next frame can be drawn after it as it is
    bool tapped = false;   // a beat, since the frame before
    double lastJump = 0;   // seconds
    int shownEntry = 0;    // of the frame before
    enum { nothing, position, loopEdge } dragged = nothing;
    int dragStart = 0;  // milliseconds

    // After everything has been loaded. Holds at the start.
    explicit Rehearsal(SteppedShow& show);

    void handleEvent(const SDL_Event& event);
    // Draws what is on now, and the desk over it, and shows both.
    void frame();

    // What is held looks different now.
    void redraw();

    void handleKey(const SDL_KeyboardEvent& key);
    void press(int x, int y, bool forLoop);
    void drag(int x, int y);
    void loopSegment();
    void drawPlaying();
    void drawHeld();
    void skipTo(int target);
    void drawStepped(int target);
    void measure(double drawn);
    void describeDesk();

    double rateStart = 0;  // seconds: since when frames are counted
    int rateFrames = 0;
    double rateDrawn = 0;  // seconds of it spent drawing
};
