#include "tools/rehearse/numbers.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <sstream>
#include <utility>

#include "production/making/laying.h"
#include "render/demo.h"
#include "script/resources.h"
#include "tools/formatted.h"
#include "tools/loading/program_build.h"
#include "tools/rehearse/reload.h"
#include "tools/rehearse/uniforms.h"
#include "tools/times.h"
#include "tools/whole_file.h"

namespace fs = std::filesystem;

namespace {

constexpr double oneGesture = 0.7;  // seconds between steps that are undone together
constexpr char times[] = "script/show_times.h";
constexpr char programmeSource[] = "script/timeline.cpp";

bool isShader(const std::string& file) {
    return file.starts_with("data/");
}

// What a number has in common with itself in another text of its source.
std::string keyOf(const TurnableNumber& number) {
    return number.file + ":" + number.name();
}

std::string lineOf(const TurnableNumber& number) {
    return number.place() + " = " + number.now + " (" + number.source + ")";
}

int decimalsOf(const std::string& digits) {
    const size_t point = digits.find('.');
    if (point == std::string::npos) return 0;
    return int(std::min(digits.find_first_not_of("0123456789", point + 1), digits.size()) - point - 1);
}

// As it is written, not as a float has it.
double decimalOf(const std::string& digits) {
    return std::strtod(digits.c_str(), nullptr);
}

std::string remarkAt(const std::string& text, size_t at) {
    const std::string line = text.substr(at, text.find('\n', at) - at);
    const size_t remark = line.find("// ");
    return remark == std::string::npos ? "" : line.substr(remark + 3);
}

// Whether the whole programme is in order.
bool inOrder(std::span<const ProgrammeEntry> sheet) {
    for (size_t i = 1; i < sheet.size(); i++)
        if (!(sheet[i - 1].begin < sheet[i].begin)) return false;
    return sheet.front().begin >= 0;
}

// Scenes first, then effects, what they share, times and shaders.
int rankOf(const std::string& file) {
    if (file == times) return 3;
    if (isShader(file)) return 4;
    if (file.ends_with(".h")) return 2;
    return file.starts_with("script/") ? 0 : 1;
}

}  // namespace

std::string TurnableNumber::name() const {
    return label.empty() ? constant : constant + " " + label;
}

std::string TurnableNumber::place() const {
    return file + ":" + std::to_string(line) + ": " + name();
}

std::string turnedBy(const std::string& text, const std::string& source, double steps, double size,
                     bool whole, bool single) {
    const double exponent = std::floor(std::log10(size) + 1e-6) - 1;
    // Integers count; those of thousands are times, in milliseconds.
    const double step = whole ? (size < 1000 ? 1 : 10) : std::pow(10, exponent);
    double value = decimalOf(text) + step * steps;
    if (whole) value = std::round(value);
    const bool suffix = source.ends_with('f');
    const bool point = source.find('.') != std::string::npos;
    int least = decimalsOf(source);
    if (point) least = std::max(least, 1);
    int decimals = std::max(least, decimalsOf(text));
    const double finest = steps == std::floor(steps) ? step : step / 10;
    if (!whole) decimals = std::max(decimals, int(std::ceil(-std::log10(finest) - 1e-9)));
    std::string digits = formatted("%.*f", std::max(decimals, 0), value);
    while (decimals > least && digits.ends_with('0')) {
        digits.pop_back();
        decimals--;
    }
    if (digits.ends_with('.')) digits.pop_back();
    if (decimalOf(digits) == 0 && digits.starts_with('-')) digits.erase(0, 1);
    if (decimalOf(digits) == decimalOf(source)) return source;
    if (suffix || (single && digits.find('.') != std::string::npos && !point)) digits += 'f';
    return digits;
}

bool Numbers::follow(const Loading& loading) {
    const bool newCode = code != loadedCode, newShaders = shaderTexts != loading.shadersInUse;
    if (!newCode && !newShaders) return false;
    std::vector<TurnableNumber> before = std::exchange(away, {});
    before.insert(before.end(), all.begin(), all.end());
    const std::string chosenKey = chosen < 0 ? "" : keyOf(all[size_t(chosen)]);
    std::erase_if(all, [&](const TurnableNumber& old) { return old.slot ? newCode : newShaders; });
    if (compared) compare();
    if (newCode) {
        unhanded.clear();
        code = loadedCode;
        for (auto& [path, source] : live::sources) takeSource(path, source.text, &source);
    }
    if (newShaders) {
        shaderTexts = loading.shadersInUse;
        for (const auto& [path, text] : shaderTexts) takeSource(path, text, nullptr);
    }
    chosen = -1;
    for (size_t i = 0; i < all.size(); i++)
        if (keyOf(all[i]) == chosenKey) chosen = int(i);
    for (const TurnableNumber& old : before) {
        const auto number = std::ranges::find(all, keyOf(old), keyOf);
        if (!old.turned()) continue;
        if (number == all.end())
            away.push_back(old);
        else if (old.source != number->source && old.now != number->now)
            news.push_back(number->place() + " is " + number->source + " in its source now");
        else if (old.now != number->now)
            put(*number, old.now);
    }
    giveUniforms();
    list();
    return true;
}

void Numbers::takeSource(const std::string& path, const std::string& text, live::Source* compiled) {
    Source& source = sources[path] = {text, namedNumbers(text)};
    for (const Piece& piece : source.names.pieces) {
        if (!compiled && !haveCommon(piece.keywords, {"const", "uniform"})) continue;
        for (const NamedNumber& written : piece.numbers) {
            // One that the library asks for.
            if (compiled && !compiled->slots.contains(written.at)) continue;
            const std::string digits = text.substr(written.at, written.length);
            double size = std::fabs(valueOf(digits));
            // Of a nought what is beside it tells.
            for (const NamedNumber& other : piece.numbers)
                if (valueOf(digits) == 0 && other.constant == written.constant)
                    size = std::max(size, std::fabs(valueOf(text.substr(other.at, other.length))));
            const int line = 1 + int(std::count(text.begin(), text.begin() + long(written.at), '\n'));
            all.push_back({written, path, remarkAt(text, written.at), line, digits, digits,
                           size > 0 ? size : 0.1, &piece,
                           compiled ? &compiled->slots.at(written.at) : nullptr});
        }
    }
}

void Numbers::beginFrame() {
    for (auto& [path, source] : live::sources) source.ran = false;
}

bool Numbers::endFrame(int entry) {
    const bool other = std::exchange(drawnEntry, entry) != entry;
    if (other) drawing.clear();
    const size_t before = drawing.size();
    for (const auto& [path, source] : live::sources)
        // The programme knows all times; those of the entry that is on follow.
        if (source.ran && path != programmeSource) drawing.insert(path);
    if (!other && drawing.size() == before) return false;
    list();
    return true;
}

// All of the sources that draw and of their shaders, and what these mention of headers.
void Numbers::list() {
    std::set<const Piece*> drawn;
    std::set<std::string> mentioned;
    for (const auto& [path, source] : sources) {
        if (!drawing.contains(path)) continue;
        for (const Piece& piece : source.names.pieces) {
            drawn.insert(&piece);
            mentioned.insert(piece.mentions.begin(), piece.mentions.end());
        }
        for (const ShaderRow& row : shaderRows()) {
            if (source.text.find("useShader(\"" + std::string(row.key) + "\"") == std::string::npos) continue;
            for (const char* ending : shaderEndings)
                for (const Piece& piece : sources[row.base + std::string(ending)].names.pieces)
                    drawn.insert(&piece);
        }
    }
    for (size_t before = 0; before != drawn.size();) {
        before = drawn.size();
        for (const auto& [path, source] : sources)
            for (const Piece& piece : source.names.pieces)
                if (path.ends_with(".h") && haveCommon(piece.names, mentioned) && drawn.insert(&piece).second)
                    mentioned.insert(piece.mentions.begin(), piece.mentions.end());
    }
    listed.clear();
    const int begin = cutOf(drawnEntry), end = cutOf(drawnEntry + 1);
    for (size_t i = 0; i < all.size(); i++) {
        if (int(i) == begin || int(i) == end || all[i].turned() || drawn.contains(all[i].piece))
            listed.push_back(int(i));
    }
    std::ranges::stable_sort(listed, {}, [&](int i) { return rankOf(all[size_t(i)].file); });
}

// What it is now or, while that is compared, what its source has. False if its shader is none then.
bool Numbers::show(const TurnableNumber& number) {
    if (number.slot) {
        unhanded.emplace(keyOf(number), number.now);
        number.slot->value = valueOf(number.seen(compared));
        return true;
    }
    if (!number.isUniform()) return buildPrograms(number.file);
    giveUniforms();
    return true;
}

bool Numbers::put(TurnableNumber& number, const std::string& digits) {
    if (number.slot) unhanded.emplace(keyOf(number), number.now);
    const std::string before = std::exchange(number.now, digits);
    if (show(number)) return true;
    number.now = before;
    return false;
}

bool Numbers::hand(LiveCode* live) {
    if (unhanded.empty()) return false;
    live->renew();
    if (!inOrder(programme())) {
        for (TurnableNumber& number : all)
            if (const auto before = unhanded.find(keyOf(number)); before != unhanded.end())
                put(number, before->second);
        live->renew();
    }
    unhanded.clear();
    code = loadedCode;
    list();
    return true;
}

bool Numbers::buildPrograms(const std::string& file) {
    for (const ShaderRow& row : shaderRows()) {
        std::optional<ShaderText> texts[2];
        bool isOf = false;
        for (int i = 0; i < 2; i++) {
            const std::string half = row.base + std::string(shaderEndings[i]);
            isOf = isOf || half == file;
            if (!shaderTexts.contains(half)) continue;
            texts[i] = ShaderText{half, sources[half].text};
            for (auto number = all.rbegin(); number != all.rend(); ++number)
                if (number->file == half && !number->isUniform())
                    texts[i]->text.replace(number->at, number->source.size(), number->seen(compared));
        }
        if (!isOf) continue;
        const ProgramBuild program = buildProgram(texts[0], texts[1]);
        if (!program.program) {
            news.push_back(program.problem.substr(0, program.problem.find('\n')));
            return false;
        }
        replaceProgram(&demo->shaders[row.key], program.program);
    }
    giveUniforms();
    return true;
}

void Numbers::giveUniforms() const {
    std::map<std::pair<std::string, std::string>, std::vector<float>> values;
    for (const TurnableNumber& number : all)
        if (!number.slot && number.isUniform())
            values[{number.file, number.constant}].push_back(float(valueOf(number.seen(compared))));
    for (const auto& [name, numbers] : values)
        for (const ShaderRow& row : shaderRows())
            if (name.first.starts_with(row.base + std::string(".")))
                setUniform(demo->shaders[row.key], name.second.c_str(), numbers);
}

bool Numbers::turn(int index, double steps, const std::string& start) {
    const TurnableNumber& number = all[size_t(index)];
    const bool whole = number.slot ? number.slot->whole : number.source.find('.') == std::string::npos;
    return turnTo(
        index, turnedBy(start, number.source, steps, number.size, whole, number.slot && number.slot->single));
}

bool Numbers::turnTo(int index, const std::string& digits) {
    TurnableNumber& number = all[size_t(index)];
    chosen = index;
    if (compared) compare();
    const std::string before = number.now;
    if (digits == before || !put(number, digits)) return false;
    if (number.slot) suspect = number.turned() ? lineOf(number) : "";
    const double now = steadySeconds();
    const bool goesOn = done > 0 && changes[done - 1].number == keyOf(number) && lastTurn >= 0 &&
                        (inHand || now - lastTurn < oneGesture);
    lastTurn = now;
    changes.resize(done);
    if (goesOn)
        changes.back().after = digits;
    else
        changes.push_back({keyOf(number), before, digits});
    done = changes.size();
    list();
    return true;
}

bool Numbers::step(int direction) {
    if (compared) compare();
    while (direction < 0 ? done > 0 : done < changes.size()) {
        const Change& change = changes[direction < 0 ? --done : done++];
        lastTurn = -1;
        for (size_t i = 0; i < all.size(); i++) {
            if (keyOf(all[i]) != change.number) continue;
            chosen = int(i);
            if (put(all[i], direction < 0 ? change.before : change.after)) {
                if (all[i].slot) suspect = all[i].turned() ? lineOf(all[i]) : "";
                list();
                return true;
            }
        }
    }
    return false;
}

void Numbers::compare() {
    compared = !compared;
    for (const TurnableNumber& number : all)
        if (number.turned()) show(number);
}

void Numbers::choose(int steps) {
    if (listed.empty()) return;
    const auto place = std::find(listed.begin(), listed.end(), chosen);
    const int last = int(listed.size()) - 1;
    const int at = place == listed.end() ? (steps > 0 ? 0 : last) : int(place - listed.begin()) + steps;
    chosen = listed[size_t(std::clamp(at, 0, last))];
}

void Numbers::write(int index) {
    if (index < 0) return;
    TurnableNumber& number = all[size_t(index)];
    if (!number.turned()) return;
    std::string& known = sources[number.file].text;
    std::string path = (isShader(number.file) ? "" : root) + number.file;
    // A shader's is the generator's source, unless the copy below data/ is an author's, and another.
    if (const std::string source = sourceOf(shaders, path);
        !source.empty() && (contentOf(source) == known || !isAuthors("data", path.substr(strlen("data/")))))
        path = source;
    std::error_code error;
    path = fs::canonical(path, error).string();
    if (contentOf(path) != known)
        return news.push_back("not written: " + number.file + " was changed meanwhile");
    std::string changed = known;
    changed.replace(number.at, number.source.size(), number.now);
    if (!writeWholeFile(path, changed))
        return news.push_back("not written: " + number.file + ": " + strerror(errno));
    known = changed;
    for (TurnableNumber& other : all)
        if (other.file == number.file && other.at > number.at)
            other.at += number.now.size() - number.source.size();
    number.source = number.now;
    suspect.clear();
    news.push_back("written: " + number.place() + " = " + number.now);
}

int Numbers::cutOf(int entry) {
    const auto sheet = programme();
    if (entry < 0 || entry >= int(sheet.size())) return -1;
    const double ms = std::round(double(sheet[size_t(entry)].begin) * 1000);
    for (const Piece& piece : sources[programmeSource].names.pieces)
        for (size_t i = 0; i < all.size(); i++)
            if (all[i].file == times && all[i].slot->value == ms && piece.mentions.contains(all[i].constant))
                return int(i);
    return -1;
}

std::vector<std::string> Numbers::unwritten() const {
    std::vector<std::string> lines;
    for (int i = 0; i < int(all.size()); i++) {
        const TurnableNumber& number = all[size_t(i)];
        if (number.turned()) lines.insert(i == chosen ? lines.begin() : lines.end(), lineOf(number));
    }
    for (const TurnableNumber& number : away) lines.push_back(lineOf(number));
    return lines;
}

std::set<std::string> Numbers::left() const {
    std::set<std::string> lines;
    for (const std::vector<TurnableNumber>* some : {&all, &away})
        for (const TurnableNumber& number : *some)
            if (number.turned() && lineOf(number) != suspect)
                lines.insert(number.file + ":" + std::to_string(number.line) + ":" + number.now + ":" +
                             number.source + ":" + number.name());
    return lines;
}

void Numbers::takeOver(const std::set<std::string>& left) {
    for (const std::string& line : left) {
        TurnableNumber number{};
        std::istringstream words(line);
        std::string place;
        for (std::string* word : {&number.file, &place, &number.now, &number.source})
            std::getline(words, *word, ':');
        std::getline(words, number.constant);
        number.line = std::atoi(place.c_str());
        away.push_back(number);
    }
}
