#include "tools/rehearse/live/named_numbers.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <string_view>

namespace {

enum class Kind { word, number, string, sign, end };

struct Token {
    Kind kind;
    std::string_view text;
    size_t at;

    bool is(std::string_view other) const { return text == other; }
    bool isOneOf(std::initializer_list<std::string_view> others) const {
        for (std::string_view other : others)
            if (text == other) return true;
        return false;
    }
    size_t end() const { return at + text.size(); }
};

bool isLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

size_t endOfLine(std::string_view text, size_t at) {
    const size_t end = text.find('\n', at);
    return end == std::string_view::npos ? text.size() : end;
}

size_t endOfDirective(std::string_view text, size_t at) {
    for (at = endOfLine(text, at); at < text.size() && text[at - 1] == '\\';) at = endOfLine(text, at + 1);
    return at;
}

size_t endOfQuoted(std::string_view text, size_t at) {
    const char quote = text[at++];
    while (at < text.size() && text[at] != quote && text[at] != '\n') at += text[at] == '\\' ? 2 : 1;
    return std::min(at + 1, text.size());
}

size_t endOfRaw(std::string_view text, size_t at) {
    const size_t open = text.find('(', at);
    if (open == std::string_view::npos) return text.size();
    std::string close(1, ')');
    close.append(text.substr(at + 2, open - at - 2)).append(1, '"');
    const size_t end = text.find(close, open);
    return end == std::string_view::npos ? text.size() : end + close.size();
}

size_t endOfNumber(std::string_view text, size_t at) {
    for (at++; at < text.size(); at++) {
        const bool exponent =
            (text[at] == '+' || text[at] == '-') && (text[at - 1] == 'e' || text[at - 1] == 'E');
        if (!isLetter(text[at]) && text[at] != '.' && text[at] != '\'' && !exponent) break;
    }
    return at;
}

// Without comments and directives.
std::vector<Token> tokensOf(std::string_view text) {
    std::vector<Token> tokens;
    const auto add = [&](Kind kind, size_t at, size_t end) {
        tokens.push_back({kind, text.substr(at, end - at), at});
        return end;
    };
    bool lineBegins = true;
    for (size_t at = 0; at < text.size();) {
        const char c = text[at];
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (c == '\n') lineBegins = true;
        if (std::isspace(static_cast<unsigned char>(c))) {
            at++;
            continue;
        }
        if (c == '/' && next == '/') {
            at = endOfLine(text, at);
            continue;
        }
        if (c == '/' && next == '*') {
            const size_t end = text.find("*/", at + 2);
            at = end == std::string_view::npos ? text.size() : end + 2;
            continue;
        }
        if (c == '#' && lineBegins) {
            at = endOfDirective(text, at);
            continue;
        }
        lineBegins = false;
        if (c == 'R' && next == '"')
            at = add(Kind::string, at, endOfRaw(text, at));
        else if (std::isdigit(static_cast<unsigned char>(c)) ||
                 (c == '.' && std::isdigit(static_cast<unsigned char>(next))))
            at = add(Kind::number, at, endOfNumber(text, at));
        else if (isLetter(c)) {
            size_t end = at;
            while (end < text.size() && isLetter(text[end])) end++;
            at = add(Kind::word, at, end);
        } else if (c == '"' || c == '\'')
            at = add(Kind::string, at, endOfQuoted(text, at));
        else
            at = add(Kind::sign, at, at + ((c == ':' && next == ':') || (c == '-' && next == '>') ? 2 : 1));
    }
    return tokens;
}

bool isMember(const std::vector<Token>& tokens, size_t i) {
    return i > 0 && tokens[i - 1].isOneOf({".", "->"});
}

// Digits, with or without a point, and an "f" behind: what can be written in another size.
bool isPlain(std::string_view number) {
    if (number.ends_with('f') || number.ends_with('F')) number.remove_suffix(1);
    size_t points = 0, digits = 0;
    for (const char c : number) {
        if (c == '.')
            points++;
        else if (std::isdigit(static_cast<unsigned char>(c)))
            digits++;
        else
            return false;
    }
    constexpr size_t most = 18;
    // "012" counts in eights.
    const bool octal = points == 0 && digits > 1 && number.front() == '0';
    return points < 2 && digits > 0 && digits < most && !octal;
}

std::string joined(const std::string& label, const std::string& own) {
    if (label.empty() || own.empty()) return label + own;
    return (label + ".").append(own);
}

struct Reader {
    std::vector<Token> tokens;
    NamedNumbers found;

    Token at(size_t i) const { return i < tokens.size() ? tokens[i] : Token{Kind::end, "", 0}; }

    // Behind what closes the bracket at `i`.
    size_t behindBrackets(size_t i) const {
        int depth = 0;
        for (; i < tokens.size(); i++) {
            if (tokens[i].kind != Kind::sign) continue;
            if (tokens[i].isOneOf({"(", "[", "{"})) depth++;
            if (tokens[i].isOneOf({")", "]", "}"}) && --depth <= 0) return i + 1;
        }
        return i;
    }

    void addNames(size_t from, size_t to, std::set<std::string>* names) const {
        for (size_t i = from; i < to; i++)
            if (tokens[i].kind == Kind::word && !isMember(tokens, i)) names->emplace(tokens[i].text);
    }
    void need(size_t from, size_t to) { addNames(from, to, &found.needed); }
    size_t endOfStatement(size_t i) const {
        while (i < tokens.size() && !tokens[i].isOneOf({";", "}"}))
            i = tokens[i].isOneOf({"(", "[", "{"}) ? behindBrackets(i) : i + 1;
        return i;
    }

    void readNeeded();
    size_t readScope(size_t i, bool inClass);
    size_t readDeclaration(size_t i, bool inClass);
    void readFunction(size_t from, size_t body, size_t end, bool inClass);
    bool readConstants(size_t from, size_t equals, size_t end, bool inClass);
    void readValue(NamedConstant* constant, size_t from, size_t to, const std::string& label);
    void readElements(NamedConstant* constant, size_t from, size_t to, const std::string& label);
    void addNumber(NamedConstant* constant, size_t from, size_t to, const std::string& label, bool alone);
};

// Wherever they are: bounds of arrays, arguments of templates, cases, enumerators, and what is a constant
// within a function.
void Reader::readNeeded() {
    for (size_t i = 0; i < tokens.size(); i++) {
        const Token& token = tokens[i];
        if (token.is("[") && !at(i + 1).is("[") && !(i > 0 && tokens[i - 1].is("[")))
            need(i, behindBrackets(i));
        if (token.is("static_assert") || (token.is("constexpr") && i > 0 && tokens[i - 1].is("if")))
            need(i + 1, behindBrackets(i + 1));
        if (token.is("case"))
            for (size_t j = i + 1; j < tokens.size() && !tokens[j].isOneOf({":", ";"}); j++) need(j, j + 1);
        if (token.is("enum")) need(i, endOfStatement(i));
        if (token.kind == Kind::word && i > 0 &&
            ((tokens[i - 1].isOneOf({"<", ","}) && at(i + 1).is(">")) ||
             (tokens[i - 1].is("<") && at(i + 1).is(","))))
            need(i, i + 1);
    }
}

size_t Reader::readScope(size_t i, bool inClass) {
    while (i < tokens.size() && !tokens[i].is("}")) {
        if (tokens[i].isOneOf({"namespace", "extern"}) && !inClass) {
            size_t open = i;
            while (open < tokens.size() && !tokens[open].isOneOf({"{", ";", "=", "("})) open++;
            if (at(open).is("{")) {
                i = readScope(open + 1, false) + 1;
                continue;
            }
        }
        const size_t next = readDeclaration(i, inClass);
        i = next > i ? next : i + 1;
    }
    return i;
}

// Returns what is behind it.
size_t Reader::readDeclaration(size_t i, bool inClass) {
    const size_t from = i;
    size_t equals = 0;
    bool call = false, list = false, record = false, enumeration = false;
    for (; i < tokens.size(); i++) {
        const Token& token = tokens[i];
        if (token.is(";")) {
            if (equals && !call)
                readConstants(from, equals, i, inClass);
            else if (at(from).is("constexpr"))
                need(from, i);
            return i + 1;
        }
        if (token.is("}")) return i;
        if (token.isOneOf({"struct", "class", "union"})) record = true;
        if (token.is("enum")) enumeration = true;
        if (token.is("=") && !equals) equals = i;
        if (token.is("(") && !equals) call = true;
        if (token.is(":") && call) list = true;
        if (token.is("{")) {
            const size_t end = behindBrackets(i);
            const bool initialises = list && (tokens[i - 1].kind == Kind::word || tokens[i - 1].is(">"));
            if (call && !equals && !initialises) {
                readFunction(from, i, end, inClass);
                return end;
            }
            if (record && !equals && !call && !enumeration) readScope(i + 1, true);
        }
        if (token.isOneOf({"(", "[", "{"})) i = behindBrackets(i) - 1;
    }
    return i;
}

void Reader::readFunction(size_t from, size_t body, size_t end, bool inClass) {
    NamedFunction function;
    for (size_t i = from; i < body; i++) {
        if (tokens[i].is("constexpr")) {
            function.isConstexpr = true;
            function.constexprAt = tokens[i].at;
        }
        if (tokens[i].is("inline")) function.isInline = true;
        if (tokens[i].is("(") && function.name.empty() && i > from) function.name = tokens[i - 1].text;
    }
    function.bodyAt = tokens[body].end();
    addNames(from, end, &function.mentions);
    for (size_t i = body + 2; i < end; i++) {
        const std::string_view text = tokens[i].text;
        if (tokens[i].kind == Kind::string && text.size() > 2 && tokens[i - 2].is("useShader"))
            function.shaders.emplace(text.substr(1, text.size() - 2));
    }
    // What is a constant of the function, or keeps its first value.
    for (size_t i = body + 1; i < end; i++) {
        if (!tokens[i - 1].isOneOf({";", "{", "}", "("})) continue;
        if (tokens[i].isOneOf({"static", "constexpr"})) need(i, endOfStatement(i));
    }
    if (inClass && function.isConstexpr) need(from, end);
    found.functions.push_back(function);
}

bool Reader::readConstants(size_t from, size_t equals, size_t end, bool inClass) {
    size_t type = from;
    bool isConstexpr = false, isConst = false, isUniform = false, plain = true;
    for (; at(type).isOneOf({"constexpr", "const", "static", "inline", "uniform"}); type++) {
        isConstexpr = isConstexpr || tokens[type].is("constexpr");
        isConst = isConst || tokens[type].is("const");
        isUniform = isUniform || tokens[type].is("uniform");
    }
    if (!isConstexpr && !isConst && !isUniform) return false;
    for (size_t i = type; i < equals; i++) {
        if (tokens[i].is("{")) i = behindBrackets(i) - 1;
        if (tokens[i].isOneOf({"*", "&", "const"})) plain = false;
    }
    if (inClass || !plain) {
        need(from, end);
        return false;
    }
    const size_t keywordsEnd = tokens[type].at;
    for (size_t value = equals + 1; value <= end;) {
        size_t next = value;
        while (next < end && !tokens[next].is(","))
            next = tokens[next].isOneOf({"(", "[", "{"}) ? behindBrackets(next) : next + 1;
        NamedConstant constant;
        constant.isConstexpr = isConstexpr;
        constant.isUniform = isUniform;
        constant.keywordsAt = tokens[from].at;
        constant.keywordsEnd = keywordsEnd;
        constant.valueAt = tokens[value].at;
        constant.valueEnd = tokens[next].at;
        constant.declarationEnd = tokens[end].end();
        size_t name = value - 2;
        while (name > from && tokens[name].is("]"))
            while (name > from && !tokens[name--].is("[")) {
            }
        constant.name = tokens[name].text;
        addNames(value, next, &constant.mentions);
        constant.mentions.erase(constant.name);
        readValue(&constant, value, next, "");
        found.constants.push_back(constant);
        for (value = next; value < end && !tokens[value].is("=");)
            value = tokens[value].isOneOf({"(", "[", "{"}) ? behindBrackets(value) : value + 1;
        value++;
    }
    return true;
}

void Reader::readValue(NamedConstant* constant, size_t from, size_t to, const std::string& label) {
    for (size_t i = from; i < to; i++)
        if (tokens[i].is("[")) return;  // functions without a name
    if (tokens[from].is("{") && behindBrackets(from) == to)
        return readElements(constant, from + 1, to - 1, label);
    // As shaders write it.
    if (tokens[from].kind == Kind::word && at(from + 1).is("(") && behindBrackets(from + 1) == to &&
        tokens[from].text.starts_with("vec"))
        return readElements(constant, from + 2, to - 1, label);
    const bool negative = tokens[from].is("-");
    if (to - from == (negative ? 2 : 1)) {
        if (tokens[to - 1].kind == Kind::number) addNumber(constant, from, to, label, true);
        return;
    }
    // Whole ones count, or change units; the type is the number's own.
    std::vector<size_t> places;
    for (size_t i = from; i < to; i++) {
        if (tokens[i].kind != Kind::number) continue;
        const double value = valueOf(std::string(tokens[i].text));
        if (value != std::floor(value)) places.push_back(i);
    }
    for (size_t i = 0; i < places.size(); i++) {
        const std::string own = places.size() > 1 ? std::to_string(i + 1) : "";
        addNumber(constant, places[i], places[i] + 1, joined(label, own), false);
    }
}

void Reader::readElements(NamedConstant* constant, size_t from, size_t to, const std::string& label) {
    int count = 0;
    for (size_t element = from; element < to;) {
        size_t end = element;
        while (end < to && !tokens[end].is(","))
            end = tokens[end].isOneOf({"(", "[", "{"}) ? behindBrackets(end) : end + 1;
        // One that is all there is needs no number.
        std::string own = ++count > 1 || end < to ? std::to_string(count) : "";
        if (tokens[element].is(".") && at(element + 2).is("=")) {
            own = tokens[element + 1].text;
            element += 3;
        }
        if (element < end) readValue(constant, element, end, joined(label, own));
        element = end + 1;
    }
}

void Reader::addNumber(NamedConstant* constant, size_t from, size_t to, const std::string& label,
                       bool alone) {
    if (!isPlain(tokens[to - 1].text)) return;
    constant->numbers.push_back(int(found.numbers.size()));
    found.numbers.push_back({tokens[from].at, tokens[to - 1].end() - tokens[from].at, label, alone});
}

}  // namespace

NamedNumbers namedNumbers(const std::string& text) {
    Reader reader{tokensOf(text), {}};
    reader.readNeeded();
    reader.readScope(0, false);
    return reader.found;
}

std::set<std::string> qualifiedNames(const std::string& text) {
    const std::vector<Token> tokens = tokensOf(text);
    std::set<std::string> names;
    for (size_t i = 1; i < tokens.size(); i++)
        if (tokens[i - 1].is("::")) names.emplace(tokens[i].text);
    return names;
}

double valueOf(const std::string& written) {
    std::string digits;
    for (const char c : written)
        if (c != ' ') digits += c;
    const bool single = digits.ends_with('f') || digits.ends_with('F');
    return single ? double(strtof(digits.c_str(), nullptr)) : strtod(digits.c_str(), nullptr);
}
