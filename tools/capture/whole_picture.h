// Pictures that are written whole or not at all.
#pragma once

#include <string>

#include "image/image.h"

// Writes an RGB picture as a PNG beside its place and moves it there. False after a line on standard error.
bool writeWholePng(const char* path, const Image& image);

// The back buffer as it stands.
bool writeScreen(const std::string& path);
