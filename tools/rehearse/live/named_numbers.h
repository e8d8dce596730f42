// The named numbers of a source: what stands at its top, and which numbers its constants are made of. Of C++
// and of shaders in the style of this house, where what is at the top begins at the left edge; nothing is
// compiled.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

// One number by itself, the value of a constant or an element of it.
struct NamedNumber {
    size_t at, length;     // in the text: digits, with a sign before and an "f" behind where there is one
    std::string constant;  // its name
    std::string label;  // "" if it is the only one; else its place in the constant, such as "2.1" or "size"
};

// A declaration at the top, of constants, a function or a class.
struct Piece {
    size_t at = 0, typeAt = 0;  // where it begins, and behind the words such as "constexpr" before its type
    size_t bodyAt = 0;          // of a function: behind the "{" at the end of its first line
    std::set<std::string> keywords;  // those words
    std::set<std::string> names, mentions;
    std::vector<NamedNumber> numbers;
};

struct NamedNumbers {
    std::vector<Piece> pieces;
    std::set<std::string> needed;  // names that stand where the language takes nothing but a constant
};

NamedNumbers namedNumbers(const std::string& text);

bool haveCommon(const std::set<std::string>& some, const std::set<std::string>& others);

// The number that is written there, as a compiler takes it.
double valueOf(const std::string& written);
