// Fingerprints of 128 bits, as 32 hexadecimal digits, of what parts of a film are made from and consist of.
#pragma once

#include <string>

#include "tools/capture/grabber.h"

// Of the drawn pixels: rows from the top, each pixel blue, green, red and 255.
std::string hashOfPicture(const Picture& picture);

// Of a file's bytes; "" if it can't be read.
std::string hashOfFile(const std::string& path);

// Of the names and bytes of all files in a folder but those whose names begin with a dot, which belong to who
// made it.
std::string hashOfFolder(const std::string& path);
