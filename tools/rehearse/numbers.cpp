#include "tools/rehearse/numbers.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/startup.h"
#include "production/shaders/shaders.h"
#include "render/demo.h"
#include "script/resources.h"
#include "tools/formatted.h"
#include "tools/loading/program_build.h"
#include "tools/rehearse/uniforms.h"
#include "tools/times.h"
#include "tools/whole_file.h"

namespace fs = std::filesystem;

namespace {

constexpr double oneGesture = 0.7;  // seconds between steps that are undone together
constexpr char times[] = "script/show_times.h";

bool isShader(const std::string& file) {
    return file.starts_with("data/");
}

// What a number has in common with itself in another text of its source.
std::string keyOf(const TurnableNumber& number) {
    return number.file + ":" + number.name();
}

int decimalsOf(const std::string& digits) {
    const size_t point = digits.find('.');
    if (point == std::string::npos) return 0;
    return int(std::min(digits.find_first_not_of("0123456789", point + 1), digits.size()) - point - 1);
}

// As it is written, not as a float has it.
double decimalOf(std::string digits) {
    std::erase(digits, ' ');
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
    const bool suffix = source.ends_with('f') || source.ends_with('F');
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
    if (code == loadedCode && shaderTexts == loading.shadersInUse) return false;
    const std::vector<TurnableNumber> before = std::move(all);
    const std::string chosenKey = chosen < 0 ? "" : keyOf(before[size_t(chosen)]);
    std::set<std::string> drew;
    for (const size_t source : drawing) drew.insert(sources[source].path);
    if (shaderTexts != loading.shadersInUse) built.clear();
    // What was written since the library was compiled is known already.
    std::map<std::string, std::string> written;
    if (code == loadedCode)
        for (const Source& source : sources) written[source.path] = source.text;
    code = loadedCode;
    shaderTexts = loading.shadersInUse;
    compared = false;
    all.clear();
    sources.clear();
    drawing.clear();
    chosen = -1;
    if (code)
        for (const live::Source& source : *code->sources)
            takeSource(source.path, written.contains(source.path) ? written[source.path] : source.text,
                       source.slots, source.ran);
    for (const auto& [file, text] : shaderTexts) takeSource(file, text, nullptr, nullptr);
    for (size_t i = 0; i < sources.size(); i++)
        if (drew.contains(sources[i].path)) drawing.insert(i);
    for (size_t i = 0; i < all.size(); i++) {
        if (keyOf(all[i]) == chosenKey) chosen = int(i);
        for (const TurnableNumber& old : before) {
            if (!old.turned() || keyOf(old) != keyOf(all[i]) || old.now == all[i].source) continue;
            if (old.source == all[i].source)
                put(all[i], old.now);
            else
                news.push_back(all[i].place() + " is " + all[i].source + " in its source now");
        }
    }
    giveUniforms();
    list();
    return true;
}

void Numbers::takeSource(const std::string& path, const std::string& text, live::Slot* slots, bool* ran) {
    Source source = {path, text, namedNumbers(text), ran, {}};
    source.first.assign(source.names.numbers.size(), -1);
    for (const NamedConstant& constant : source.names.constants) {
        double greatest = 0;
        for (const int i : constant.numbers) {
            const WrittenNumber& written = source.names.numbers[size_t(i)];
            greatest = std::max(greatest, std::fabs(valueOf(text.substr(written.at, written.length))));
        }
        for (const int i : constant.numbers) {
            if (slots && !slots[i].turnable) continue;
            const WrittenNumber& written = source.names.numbers[size_t(i)];
            const std::string digits = text.substr(written.at, written.length);
            const double size = std::fabs(valueOf(digits));
            source.first[size_t(i)] = int(all.size());
            all.push_back({.file = path,
                           .constant = constant.name,
                           .label = written.label,
                           .remark = remarkAt(text, written.at),
                           .line = 1 + int(std::count(text.begin(), text.begin() + long(written.at), '\n')),
                           .at = written.at,
                           .source = digits,
                           .now = digits,
                           .size = size > 0       ? size
                                   : greatest > 0 ? greatest
                                                  : 0.1,
                           .slot = slots ? slots + i : nullptr,
                           .isUniform = constant.isUniform});
        }
    }
    sources.push_back(std::move(source));
}

void Numbers::beginFrame() {
    for (const Source& source : sources)
        if (source.ran) std::fill_n(source.ran, source.names.functions.size(), false);
}

bool Numbers::endFrame(int entry) {
    const size_t before = drawing.size() + drawingShaders.size();
    const bool other = entry != drawnEntry;
    if (other) drawing.clear();
    if (other) drawingShaders.clear();
    drawnEntry = entry;
    for (size_t i = 0; i < sources.size(); i++) {
        const std::vector<NamedFunction>& functions = sources[i].names.functions;
        for (size_t j = 0; sources[i].ran && j < functions.size(); j++) {
            if (!sources[i].ran[j]) continue;
            drawing.insert(i);
            drawingShaders.insert(functions[j].shaders.begin(), functions[j].shaders.end());
        }
    }
    if (!other && drawing.size() + drawingShaders.size() == before) return false;
    list();
    return true;
}

// The constants of these names as that source sees them: its own, or else those of headers.
void Numbers::addMentioned(size_t source, const std::set<std::string>& names, std::set<int>* found,
                           std::set<const NamedConstant*>* seen) const {
    const auto add = [&](size_t from, const std::string& name) {
        bool any = false;
        for (const NamedConstant& constant : sources[from].names.constants) {
            if (constant.name != name) continue;
            any = true;
            if (!seen->insert(&constant).second) continue;
            for (const int i : constant.numbers) found->insert(sources[from].first[size_t(i)]);
            addMentioned(from, constant.mentions, found, seen);
        }
        return any;
    };
    for (const std::string& name : names) {
        if (add(source, name)) continue;
        for (size_t i = 0; i < sources.size(); i++)
            if (sources[i].path.ends_with(".h")) add(i, name);
    }
}

void Numbers::list() {
    std::set<int> found;
    std::set<const NamedConstant*> seen;
    for (const size_t i : drawing) {
        // The programme knows all times; those of the entry that is on follow.
        if (sources[i].path == "script/timeline.cpp") continue;
        std::set<std::string> names;
        if (!sources[i].path.ends_with(".h"))
            for (const NamedConstant& constant : sources[i].names.constants) names.insert(constant.name);
        for (const NamedFunction& function : sources[i].names.functions)
            names.insert(function.mentions.begin(), function.mentions.end());
        addMentioned(i, names, &found, &seen);
    }
    for (const int entry : {drawnEntry, drawnEntry + 1})
        if (entry >= 0) found.insert(cutOf(entry));
    for (const ShaderRow& row : shaderRows()) {
        if (!drawingShaders.contains(row.key)) continue;
        for (const Source& source : sources)
            if (source.path.starts_with(row.base + std::string(".")))
                found.insert(source.first.begin(), source.first.end());
    }
    for (size_t i = 0; i < all.size(); i++)
        if (all[i].turned()) found.insert(int(i));
    found.erase(-1);
    listed.assign(found.begin(), found.end());
    std::stable_sort(listed.begin(), listed.end(),
                     [&](int a, int b) { return rankOf(all[size_t(a)].file) < rankOf(all[size_t(b)].file); });
}

// False if it can't be that: the programme out of order, or a shader that is none.
bool Numbers::put(TurnableNumber& number, const std::string& text) {
    const std::string before = number.now;
    number.now = text;
    bool good = true;
    if (number.slot) {
        number.slot->value = valueOf(text);
        code->renewAll();
        good = number.file != times || inOrder(programme());
    } else if (number.isUniform) {
        giveUniforms();
    } else {
        good = buildPrograms(number.file);
    }
    if (!good) {
        number.now = before;
        if (!number.slot) return false;
        number.slot->value = valueOf(before);
        code->renewAll();
    }
    return good;
}

std::string Numbers::turnedText(const std::string& file) const {
    const auto text = shaderTexts.find(file);
    if (text == shaderTexts.end()) return "";
    std::string result = text->second;
    for (auto number = all.rbegin(); number != all.rend(); ++number)
        if (number->file == file && number->turned() && !number->isUniform && !compared)
            result.replace(number->at, number->source.size(), number->now);
    return result;
}

bool Numbers::buildPrograms(const std::string& file) {
    for (const ShaderRow& row : shaderRows()) {
        const std::string files[] = {row.base + std::string(shaderEndings[0]),
                                     row.base + std::string(shaderEndings[1])};
        if (file != files[0] && file != files[1]) continue;
        std::optional<ShaderText> texts[2];
        std::string both;
        for (int i = 0; i < 2; i++) {
            if (!shaderTexts.contains(files[i])) continue;
            texts[i] = ShaderText{files[i], turnedText(files[i])};
            both += texts[i]->text + '\0';
        }
        if (built[row.key] == both) continue;
        const ProgramBuild program = buildProgram(texts[0], texts[1]);
        if (!program.program) {
            news.push_back(program.problem.substr(0, program.problem.find('\n')));
            return false;
        }
        GLhandleARB& current = demo->shaders[row.key];
        copyUniforms(current, program.program);
        deleteProgram(current);
        current = program.program;
        built[row.key] = both;
    }
    centreBoom();
    giveUniforms();
    return true;
}

void Numbers::giveUniforms() const {
    for (const ShaderRow& row : shaderRows()) {
        const auto program = demo->shaders.find(row.key);
        if (program == demo->shaders.end() || !program->second) continue;
        for (const Source& source : sources) {
            if (!source.path.starts_with(row.base + std::string("."))) continue;
            for (const NamedConstant& constant : source.names.constants) {
                if (!constant.isUniform || constant.numbers.empty()) continue;
                std::vector<float> values;
                for (const int i : constant.numbers) {
                    const TurnableNumber& number = all[size_t(source.first[size_t(i)])];
                    values.push_back(float(valueOf(compared ? number.source : number.now)));
                }
                setUniform(program->second, constant.name.c_str(), values);
            }
        }
    }
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
    const double now = steadySeconds();
    const bool goesOn =
        done > 0 && changes[done - 1].number == keyOf(number) && lastTurn >= 0 && now - lastTurn < oneGesture;
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
                list();
                return true;
            }
        }
    }
    return false;
}

void Numbers::compare() {
    compared = !compared;
    for (const TurnableNumber& number : all) {
        if (!number.turned()) continue;
        if (number.slot)
            number.slot->value = valueOf(compared ? number.source : number.now);
        else
            buildPrograms(number.file);
    }
    giveUniforms();
    if (code) code->renewAll();
}

void Numbers::choose(int steps) {
    if (listed.empty()) return;
    const auto place = std::find(listed.begin(), listed.end(), chosen);
    const int last = int(listed.size()) - 1;
    const int at = place == listed.end() ? (steps > 0 ? 0 : last) : int(place - listed.begin()) + steps;
    chosen = listed[size_t(std::clamp(at, 0, last))];
}

// A shader's is the generator's source, where the copy below data/ is the same.
std::string Numbers::pathOf(const TurnableNumber& number, const std::string& shown) const {
    if (!isShader(number.file)) return root + number.file;
    if (!shaders.empty()) {
        for (const ShaderProduct& product : shaderProducts) {
            if (number.file != std::string("data/") + product.file) continue;
            const std::string path = shaders + "/" + product.source;
            std::ifstream file(path, std::ios::binary);
            const std::string text{std::istreambuf_iterator<char>(file), {}};
            if (text == shown) return path;
        }
    }
    return number.file;
}

void Numbers::write(int index) {
    if (index < 0) return;
    TurnableNumber& number = all[size_t(index)];
    if (!number.turned()) return;
    const auto source = std::find_if(sources.begin(), sources.end(),
                                     [&](const Source& known) { return known.path == number.file; });
    std::error_code error;
    const std::string path = fs::canonical(pathOf(number, source->text), error).string();
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (text != source->text || text.substr(number.at, number.source.size()) != number.source) {
        news.push_back("not written: " + number.file + " was changed meanwhile");
        return;
    }
    std::string changed = text;
    changed.replace(number.at, number.source.size(), number.now);
    if (!writeWholeFile(path, changed)) {
        news.push_back("not written: " + number.file + ": " + strerror(errno));
        return;
    }
    source->text = changed;
    for (TurnableNumber& other : all)
        if (other.file == number.file && other.at > number.at)
            other.at += number.now.size() - number.source.size();
    number.source = number.now;
    news.push_back("written: " + number.place() + " = " + number.now);
}

int Numbers::cutOf(int entry) const {
    const auto sheet = programme();
    if (entry < 0 || entry >= int(sheet.size())) return -1;
    const double ms = std::round(double(sheet[size_t(entry)].begin) * 1000);
    for (const Source& source : sources) {
        if (source.path != "script/timeline.cpp") continue;
        for (const NamedConstant& constant : source.names.constants)
            for (size_t i = 0; i < all.size(); i++)
                if (all[i].file == times && all[i].slot->value == ms &&
                    constant.mentions.contains(all[i].constant))
                    return int(i);
    }
    return -1;
}

std::vector<std::string> Numbers::unwritten() const {
    std::vector<std::string> lines;
    for (const TurnableNumber& number : all)
        if (number.turned())
            lines.push_back(number.place() + " = " + number.now + " (" + number.source + ")");
    return lines;
}
