// The display, for programs that are started where there may be none.
#pragma once

// Ends the program with status 1 and one line if there is no display. SDL would go on to draw its window in
// the terminal, by escape sequences.
void needDisplay();
