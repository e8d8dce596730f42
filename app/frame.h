// One frame of the show, from the clock to the swap of the buffers.
#pragma once

// Draws the picture of the music's present position; ends the program at the end of the show.
void renderFrame();
