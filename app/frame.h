// One frame of the show, from the clock to the swap of the buffers.
#pragma once

// Draws the picture of the music's present position into the back buffer; ends the program at the end of the
// show.
void drawFrame();

// Moves past the frame of that position without drawing it: for whoever begins in the middle of the show.
void advanceFrame();

// Draws the frame, then writes the screenshot if one is asked for, and shows the picture.
void renderFrame();
