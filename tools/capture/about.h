// What a film tells of itself: its title, whose it is, when it was made of what, and its chapters.
#pragma once

#include <string>

#include "tools/process.h"

// Of a film that was made of this, as tags.
Words tagWords(const std::string& origin);

// A file, as ffmpeg reads it, with a chapter for each segment of the show that lies in the film, which begins
// at second `from` of it.
std::string chapters(double from, double seconds);
