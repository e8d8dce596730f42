// The words that the programs beside the show are given.
#pragma once

#include <functional>
#include <string>
#include <vector>

// Ends the program with status 1 and one line about a word of its command line.
[[noreturn]] void refuse(const std::string& word, const std::string& reason);

// What all of `text` says, or a NaN if that is no number.
double numberIn(const char* text);
// The second of the show that it says; ends the program if it has none.
double secondOfShow(const char* text);
// Whether a file's name has this ending, in capitals or not.
bool endsIn(const std::string& name, const std::string& ending);

// Calls `read` for each option, with its value if it takes one, and with an empty option for each word that
// is none, in their order. The names are as they are written, such as "--out=" for one that takes a value;
// where any has one dash, one is enough for all. --help prints the usage and ends the program with status 0,
// a word that is wrong ends it with 1 and a line.
void readCommandLine(int argc, const char* const* argv, const std::string& usage,
                     const std::vector<std::string>& names,
                     const std::function<void(const std::string& option, const char* value)>& read);
