// The numbers of the show's code in a library that a rehearsal loads: each asks, as the library is loaded,
// what it is turned to.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <type_traits>

namespace live {

struct Slot {
    double value;         // as it was turned, or as the source has it
    bool whole = false;   // what is made of it is an integer
    bool single = false;  // or a float
};

struct Source {
    std::string text;              // that was compiled
    bool ran = false;              // code of it, since someone has cleared that
    std::map<size_t, Slot> slots;  // by where they stand in the text
};

// Of the library in force, by their paths, such as "effects/robo.cpp".
extern std::map<std::string, Source> sources;

// The one of that path, which may be there already.
Source& sourceOf(const char* path, const char* text);
// What it is turned to, for what is made of it.
double ask(Source& source, size_t at, double written, bool whole, bool single);

struct Number {
    Source& source;
    size_t at;
    double written;

    template <class T>
    requires std::is_arithmetic_v<T>
    operator T() const {
        return T(ask(source, at, written, std::is_integral_v<T>, std::is_same_v<T, float>));
    }
};

}  // namespace live
