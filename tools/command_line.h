// What the programs beside the show share in reading the words they are given.
#pragma once

#include <strings.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

// Ends the program with status 1 and one line about a word of its command line.
[[noreturn]] inline void refuseWord(const char* program, const char* word, const char* reason) {
    fprintf(stderr, "%s: %s: %s\n", program, word, reason);
    exit(1);
}

// Whether a file's name has this ending, in capitals or not.
inline bool endsIn(const std::string& name, const std::string& ending) {
    return name.size() > ending.size() &&
           strcasecmp(name.c_str() + name.size() - ending.size(), ending.c_str()) == 0;
}

// What all of `text` says, or a NaN if that is no number.
inline double numberIn(const char* text) {
    char* end = nullptr;
    const double value = strtod(text, &end);
    return end == text || *end ? NAN : value;
}
