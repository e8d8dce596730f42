#include "tools/rehearse/live/named_numbers.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace {

bool isLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

bool startsWith(const std::string& text, size_t at, const std::string& other) {
    return text.compare(at, other.size(), other) == 0;
}

// Behind the next `end` from there on.
size_t behind(const std::string& text, const std::string& end, size_t at) {
    const size_t found = text.find(end, at);
    return found == std::string::npos ? text.size() : found + end.size();
}

// Where the comment, string or directive ends that begins there; `at` if there is none.
size_t behindOther(const std::string& text, size_t at) {
    if (startsWith(text, at, "//") || text[at] == '#') {
        size_t end = text.find('\n', at);
        while (end < text.size() && text[end - 1] == '\\') end = text.find('\n', end + 1);
        return std::min(end, text.size());
    }
    if (startsWith(text, at, "/*")) return behind(text, "*/", at + 2);
    if (startsWith(text, at, "R\"")) {
        const size_t open = behind(text, "(", at);
        std::string close(1, ')');
        close.append(text, at + 2, open - at - 3).append(1, '"');
        return behind(text, close, open);
    }
    const bool separatesDigits = at > 0 && isLetter(text[at - 1]);
    if (text[at] != '"' && (text[at] != '\'' || separatesDigits)) return at;
    size_t end = at + 1;
    while (end < text.size() && text[end] != text[at] && text[end] != '\n') end += text[end] == '\\' ? 2 : 1;
    return std::min(end + 1, text.size());
}

// With blanks instead of all that, and lines as they are.
std::string codeOf(const std::string& text) {
    std::string code = text + "\n";
    for (size_t at = 0; at < code.size();) {
        const size_t end = behindOther(code, at);
        for (size_t i = at; i < end; i++)
            if (code[i] != '\n') code[i] = ' ';
        at = std::max(end, at + 1);
    }
    return code;
}

std::string wordAt(const std::string& code, size_t at) {
    size_t end = at;
    while (end < code.size() && isLetter(code[end])) end++;
    return code.substr(at, end - at);
}

void addWords(const std::string& code, size_t at, size_t end, std::set<std::string>* words) {
    while (at < std::min(end, code.size())) {
        const std::string word = wordAt(code, at);
        if (!word.empty()) words->insert(word);
        at += word.size() + 1;
    }
}

size_t behindSpace(const std::string& code, size_t at) {
    return std::min(code.find_first_not_of(" \n", at), code.size());
}

bool isOneOf(const std::string& characters, char c) {
    return characters.find(c) != std::string::npos;
}

// Behind that character or, if it is a bracket, behind the one that closes it.
size_t behindOne(const std::string& code, size_t at) {
    int depth = 0;
    do {
        depth += isOneOf("([{", code[at]) - isOneOf(")]}", code[at]);
    } while (++at < code.size() && depth > 0);
    return at;
}

// Digits, with or without a point, and an "f" behind: what can be written in another size.
bool isPlain(std::string number) {
    if (number.starts_with('-')) number.erase(0, 1);
    if (number.ends_with('f')) number.pop_back();
    constexpr size_t most = 18;
    const bool isOctal = number.size() > 1 && number[0] == '0' && number[1] != '.';
    return !isOctal && number.size() < most && std::count(number.begin(), number.end(), '.') < 2 &&
           number.find_first_of("0123456789") != std::string::npos &&
           number.find_first_not_of("0123456789.") == std::string::npos;
}

struct Reader {
    const std::string& code;
    Piece piece;

    void read(size_t end);
    size_t readValue(size_t at, const std::string& name, const std::string& label);
    size_t readElements(size_t at, const std::string& name, const std::string& label);
};

void Reader::read(size_t end) {
    addWords(code, piece.at, end, &piece.mentions);
    size_t at = piece.at;
    const std::set<std::string> keywords = {"inline", "static", "const", "constexpr", "uniform"};
    for (std::string word; keywords.contains(word = wordAt(code, at)); piece.typeAt = at) {
        piece.keywords.insert(word);
        at = behindSpace(code, at + word.size());
    }
    std::string name;
    bool isFunction = false;
    // A class has neither of those words nor brackets before its own.
    const std::string naming = piece.keywords.empty() ? "(={:" : "(=";
    while (at < end) {
        const std::string word = wordAt(code, at);
        isFunction = isFunction || code[at] == '(';
        if (startsWith(code, at, "::")) {
            at += 2;
            continue;
        }
        if (isOneOf(naming, code[at])) piece.names.insert(name);
        if (!word.empty()) {
            name = word;
            at += word.size();
        } else if (code[at] == '=') {
            at = readValue(at + 1, name, "");
        } else if (isFunction && startsWith(code, at, "{\n")) {
            piece.bodyAt = at + 1;
            return;
        } else {
            at = behindOne(code, at);
        }
    }
}

// Returns what ends it.
size_t Reader::readValue(size_t at, const std::string& name, const std::string& label) {
    at = behindSpace(code, at);
    const bool isVector = startsWith(code, at, "vec") && code[at + 4] == '(';  // as shaders write it
    if (isVector || code[at] == '{') {
        at = readElements(isVector ? at + 4 : at, name, label);
    } else {
        size_t end = at + (code[at] == '-');
        while (isLetter(code[end]) || code[end] == '.') end++;
        if (isOneOf(",;})", code[behindSpace(code, end)]) && isPlain(code.substr(at, end - at)))
            piece.numbers.push_back({at, end - at, name, label});
    }
    while (at < code.size() && !isOneOf(",;})", code[at])) at = behindOne(code, at);
    return at;
}

size_t Reader::readElements(size_t at, const std::string& name, const std::string& label) {
    int count = 0;
    do {
        at = behindSpace(code, at + 1);
        std::string own = std::to_string(++count);
        if (code[at] == '.' && !wordAt(code, at + 1).empty() && !std::isdigit(code[at + 1])) {
            own = wordAt(code, at + 1);
            at = behind(code, "=", at);
        }
        at = readValue(at, name, label.empty() ? own : label + "." + own);
    } while (at < code.size() && code[at] == ',');
    return at + 1;
}

// Sizes, arguments of templates, cases, and constants within functions and classes.
std::set<std::string> neededIn(const std::string& code) {
    std::set<std::string> needed;
    for (size_t at = 1; at < code.size(); at++) {
        if (code[at] == '[') addWords(code, at, code.find(']', at), &needed);
        if (code[at] == '<' && isLetter(code[at - 1]))
            addWords(code, at, code.find_first_of(">\n", at), &needed);
        if (code[at - 1] != '\n' || code[at] != ' ') continue;
        const size_t word = code.find_first_not_of(' ', at);
        for (const char* other : {"constexpr ", "static ", "static_assert(", "case ", "if constexpr "})
            if (startsWith(code, word, other)) addWords(code, word, code.find('\n', word), &needed);
    }
    return needed;
}

}  // namespace

NamedNumbers namedNumbers(const std::string& text) {
    const std::string code = codeOf(text);
    NamedNumbers found = {{}, neededIn(code)};
    std::vector<size_t> places;
    for (size_t at = 0; at < code.size(); at++)
        if ((at == 0 || code[at - 1] == '\n') && isLetter(code[at])) places.push_back(at);
    places.push_back(code.size());
    for (size_t i = 0; i + 1 < places.size(); i++) {
        Reader reader{code, {}};
        reader.piece.at = reader.piece.typeAt = places[i];
        reader.read(places[i + 1]);
        for (NamedNumber& number : reader.piece.numbers)
            if (std::ranges::count(reader.piece.numbers, number.constant, &NamedNumber::constant) == 1)
                number.label.clear();
        found.pieces.push_back(reader.piece);
    }
    return found;
}

bool haveCommon(const std::set<std::string>& some, const std::set<std::string>& others) {
    return std::any_of(some.begin(), some.end(), [&](const auto& name) { return others.contains(name); });
}

double valueOf(const std::string& written) {
    return written.ends_with('f') ? double(strtof(written.c_str(), nullptr))
                                  : strtod(written.c_str(), nullptr);
}
