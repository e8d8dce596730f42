// Fingerprints of what parts of a film are made from and consist of: but for the program's, of 128 bits, as
// 32 hexadecimal digits.
#pragma once

#include <string>

#include "tools/capture/grabber.h"

// Of the drawn pixels: rows from the top, each pixel blue, green, red and 255.
std::string hashOfPicture(const Picture& picture);

// Of a file's bytes; "" if it can't be read.
std::string hashOfFile(const std::string& path);
std::string hashOfText(const std::string& text);

// Of the program that runs, as its linker took it: stripped or not, and built again from the same text, it is
// the same program.
std::string hashOfProgram();
