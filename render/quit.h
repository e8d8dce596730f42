// The ways out of the program. There is no shutdown stage: the end of the process reclaims everything.
#pragma once

// SDL_Quit, then exit status 0.
[[noreturn]] void quit();

// Prints "error: MESSAGE" to standard error, a "%s" in the message as it stands, then quits with status 0.
[[noreturn]] void fatalError(const char* message);
