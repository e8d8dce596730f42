// Files that are written whole or not at all.
#pragma once

#include <string>

#include "image/image.h"

// Where a file grows, beside its place.
std::string unfinishedPath(const std::string& path);
// Moves it to its place if it was written, else removes it. False after a line on standard error, which says
// `why` where errno does not.
bool putInPlace(const std::string& path, bool written, const char* why = "");

// Writes an RGB picture as a PNG beside its place and moves it there. False after a line on standard error.
bool writeWholePng(const char* path, const Image& image);

// The back buffer as it stands.
bool writeScreen(const std::string& path);
