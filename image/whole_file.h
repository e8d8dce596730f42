// Reading a file in one go, so that whoever looks at it sees one state of it.
#pragma once

#include <optional>
#include <string>

// The whole content of a file, zero-terminated by the string; nothing if the file can't be opened.
std::optional<std::string> readWholeFile(const char* path);
