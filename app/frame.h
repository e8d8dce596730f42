// One frame of the show, from the clock to the swap of the buffers.
#pragma once

// Draws the picture of the music's present position into the back buffer; ends the program at the end of the
// show.
void drawFrame();

// The same, then writes the screenshot if one is asked for, and shows the picture.
void renderFrame();
