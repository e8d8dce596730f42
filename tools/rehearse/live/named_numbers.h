// The named numbers of a source: what constants stand at its top, which numbers they are made of, and what
// functions read them. Of C++ as it is written here and of shaders; nothing is compiled.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

// One number of a constant, as it is written: digits, with a sign before and an "f" behind where there is
// one.
struct WrittenNumber {
    size_t at, length;  // in the text
    std::string label;  // "" if it is all of the constant; else its place in it, such as "2.1" or "size"
    bool alone;         // an element by itself; otherwise a part of an expression, whose type it decides
};

// Of a namespace, or of a shader's file.
struct NamedConstant {
    std::string name;
    bool isConstexpr = false;        // it is, or is written so that it may be
    bool isUniform = false;          // of a shader, which may be told another value
    std::vector<int> numbers;        // of the source's
    std::set<std::string> mentions;  // names that it is computed from
    size_t keywordsAt = 0,
           keywordsEnd = 0;  // of the declaration, which several may share: the words before the type
    size_t valueAt = 0, valueEnd = 0;  // what stands behind the "="
    size_t declarationEnd = 0;         // behind the ";"
};

struct NamedFunction {
    std::string name;
    size_t constexprAt = 0, bodyAt = 0;  // of that word, if it is one; behind the "{"
    bool isConstexpr = false, isInline = false;
    std::set<std::string> mentions;
    std::set<std::string> shaders;  // that it has in use, by their names
};

struct NamedNumbers {
    std::vector<WrittenNumber> numbers;
    std::vector<NamedConstant> constants;
    std::vector<NamedFunction> functions;
    std::set<std::string> needed;  // names that stand where the language takes nothing but a constant
};

NamedNumbers namedNumbers(const std::string& text);

// The names of namespaces' members that the text mentions.
std::set<std::string> qualifiedNames(const std::string& text);

// The number that is written there, as a compiler takes it.
double valueOf(const std::string& written);
