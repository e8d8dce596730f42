// Files that are read whole, and written whole or not at all.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// All bytes of a file; none where it can't be read.
inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Where a file grows, beside its place.
std::string unfinishedPath(const std::string& path);
// Writes it there, with the rights of what is in its place. False with the cause in errno.
bool writeUnfinished(const std::string& path, const std::string& content);

// Moves it to its place if it was written, else removes it. False with the cause in errno, if there is one.
bool moveIntoPlace(const std::string& path, bool written);
// The same, after a line on standard error, which says `why` where errno does not.
bool putInPlace(const std::string& path, bool written, const char* why = "");

// Writes it and moves it to its place. False with the cause in errno.
bool writeWholeFile(const std::string& path, const std::string& content);
