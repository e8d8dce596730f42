// turnable ROOT FOLDER: writes the sources of script/ and effects/ below FOLDER/turned/ so that the numbers
// of their constants can be turned while they run, and what the library tells of them,
// FOLDER/turned/numbers.cpp. Line for line as they are, with the names of the originals in what a compiler
// says.
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "tools/rehearse/live/named_numbers.h"

namespace fs = std::filesystem;

namespace {

struct Source {
    std::string path;  // from the root
    std::string text;
    NamedNumbers names;
    std::string symbol;  // for what belongs to it

    explicit Source(const fs::path& root, const fs::path& file);
    bool isHeader() const { return path.ends_with(".h"); }
};

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Source::Source(const fs::path& root, const fs::path& file)
    : path(file.lexically_relative(root).string()),
      text(contentOf(file)),
      names(namedNumbers(text)),
      symbol(path) {
    for (char& c : symbol)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
}

std::vector<fs::path> filesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, error)) {
        const std::string ending = entry.path().extension();
        if (ending == ".h" || ending == ".cpp") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Which constants stay what they are for the compiler, and which functions.
struct Turning {
    std::set<std::string> fixed;
    std::set<std::string> live;  // constants and functions that are made of numbers, however far away

    Turning(const fs::path& root, const fs::path& folder, const std::vector<Source>& sources);
    bool isLive(const std::string& name) const { return live.contains(name) && !fixed.contains(name); }
    bool touches(const std::set<std::string>& names) const {
        return std::any_of(names.begin(), names.end(), [&](const std::string& name) { return isLive(name); });
    }
};

// What the generator makes pictures and models to looks like those once they have been made anew; only times
// are followed.
std::set<std::string> headersOfProduction(const fs::path& root) {
    std::set<std::string> headers;
    const std::string include = "#include \"";
    for (const fs::path& file : filesBelow(root / "production")) {
        const std::string text = contentOf(file);
        for (size_t at = 0; (at = text.find(include, at)) != std::string::npos;) {
            at += include.size();
            headers.insert(text.substr(at, text.find('"', at) - at));
        }
    }
    headers.erase("script/show_times.h");
    return headers;
}

Turning::Turning(const fs::path& root, const fs::path& folder, const std::vector<Source>& sources)
    : fixed(qualifiedNames(contentOf(root / "tools/rehearse/live/code.h"))) {
    std::ifstream learnt(folder / "fixed");
    fixed.insert(std::istream_iterator<std::string>(learnt), {});
    const std::set<std::string> production = headersOfProduction(root);
    for (const Source& source : sources) {
        fixed.insert(source.names.needed.begin(), source.names.needed.end());
        for (const NamedConstant& constant : source.names.constants) {
            if (!constant.numbers.empty()) live.insert(constant.name);
            if (production.contains(source.path)) fixed.insert(constant.name);
        }
    }
    for (bool more = true; more;) {
        const size_t before = fixed.size() + live.size();
        const auto follow = [&](const std::string& name, const std::set<std::string>& mentions) {
            if (fixed.contains(name)) fixed.insert(mentions.begin(), mentions.end());
            if (touches(mentions)) live.insert(name);
        };
        for (const Source& source : sources) {
            for (const NamedConstant& constant : source.names.constants) {
                follow(constant.name, constant.mentions);
                // What is declared together is of one kind.
                for (const NamedConstant& other : source.names.constants)
                    if (other.keywordsAt == constant.keywordsAt && fixed.contains(other.name))
                        fixed.insert(constant.name);
            }
            for (const NamedFunction& function : source.names.functions)
                if (function.isConstexpr) follow(function.name, function.mentions);
        }
        more = fixed.size() + live.size() > before;
    }
}

struct Edit {
    size_t length;
    std::string text;
};

class Translation {
public:
    Translation(const Source& source, const Turning& turning) : source(source), turning(turning) {
        for (const NamedConstant& constant : source.names.constants) translate(constant);
        for (size_t i = 0; i < source.names.functions.size(); i++) translate(source.names.functions[i], i);
    }
    std::string text() const {
        std::string result;
        size_t at = 0;
        for (const auto& [place, edit] : edits) {
            result += source.text.substr(at, place - at) + edit.text;
            at = place + edit.length;
        }
        return result + source.text.substr(at);
    }

private:
    const Source& source;
    const Turning& turning;
    std::map<size_t, Edit> edits;

    std::string slot(int number) const {
        const WrittenNumber& written = source.names.numbers[size_t(number)];
        const std::string name = "::numbers_" + source.symbol + "[" + std::to_string(number) + "]";
        if (written.alone) return name;
        return source.text[written.at + written.length - 1] == 'f' ? "float(" + name + ")"
                                                                   : "double(" + name + ")";
    }
    void translate(const NamedConstant& constant);
    void translate(const NamedFunction& function, size_t index);
};

// A variable that nobody else sees, and how it is made anew.
void Translation::translate(const NamedConstant& constant) {
    if (!turning.isLive(constant.name)) return;
    std::string value = source.text.substr(constant.valueAt, constant.valueEnd - constant.valueAt);
    for (auto i = constant.numbers.rbegin(); i != constant.numbers.rend(); ++i) {
        const WrittenNumber& written = source.names.numbers[size_t(*i)];
        value.replace(written.at - constant.valueAt, written.length, slot(*i));
        edits[written.at] = {written.length, slot(*i)};
    }
    // On the line of the declaration's end.
    for (size_t at = 0; (at = value.find("//", at)) != std::string::npos;)
        value.erase(at, value.find('\n', at) - at);
    std::replace(value.begin(), value.end(), '\n', ' ');
    edits[constant.keywordsAt] = {constant.keywordsEnd - constant.keywordsAt, "[[maybe_unused]] static "};
    edits[constant.declarationEnd].text +=
        " [[maybe_unused]] static const ::live::Renewal renewalOf_" + constant.name + "([] { decltype(" +
        constant.name + ") fresh = " + value + "; ::live::put(" + constant.name + ", fresh); });";
}

void Translation::translate(const NamedFunction& function, size_t index) {
    const bool changes = function.isConstexpr && turning.isLive(function.name);
    if (changes) edits[function.constexprAt] = {9, function.isInline ? "         " : "inline   "};
    if (function.isConstexpr && !changes) return;
    if (!source.isHeader() || turning.touches(function.mentions))
        edits[function.bodyAt].text = " ::ran_" + source.symbol + "[" + std::to_string(index) + "] = true;";
}

struct Writer {
    fs::path folder;
    timespec began;

    // Older than what was saved since the start; as it is, if it is no other.
    void write(const std::string& path, const std::string& text) const {
        const fs::path file = folder / path;
        if (fs::exists(file) && contentOf(file) == text) return;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        const timespec times[] = {began, began};
        utimensat(AT_FDCWD, file.c_str(), times, 0);
    }
};

std::string quoted(const std::string& text) {
    return "R\"source(" + text + ")source\"";
}

std::string tableOf(const std::vector<Source>& sources, const Turning& turning) {
    std::string text = "#include \"tools/rehearse/live/slots.h\"\n", rows;
    for (const Source& source : sources) {
        std::vector<bool> turnable(source.names.numbers.size());
        for (const NamedConstant& constant : source.names.constants)
            for (const int number : constant.numbers)
                turnable[size_t(number)] = turning.isLive(constant.name);
        text += "live::Slot numbers_" + source.symbol + "[] = {";
        for (size_t i = 0; i < turnable.size(); i++) {
            const WrittenNumber& written = source.names.numbers[i];
            text += "{" + source.text.substr(written.at, written.length) +
                    (turnable[i] ? ", true}, " : ", false}, ");
        }
        text += "{}};\nbool ran_" + source.symbol + "[" + std::to_string(source.names.functions.size() + 1) +
                "];\n";
        rows += "    {\"" + source.path + "\", " + quoted(source.text) + ", numbers_" + source.symbol +
                ", ran_" + source.symbol + "},\n";
    }
    return text + "static const live::Source table[] = {\n" + rows +
           "};\nextern const std::span<const live::Source> sourcesOfShow;\n"
           "const std::span<const live::Source> sourcesOfShow = table;\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 1;
    timespec began;
    clock_gettime(CLOCK_REALTIME_COARSE, &began);
    const fs::path root = argv[1], folder = argv[2];
    const Writer writer = {folder / "turned", began};
    std::vector<Source> sources;
    for (const char* name : {"effects", "script"})
        for (const fs::path& file : filesBelow(root / name)) sources.emplace_back(root, file);
    const Turning turning(root, folder, sources);
    for (const Source& source : sources) {
        const std::string head = "#include \"tools/rehearse/live/slots.h\"\nextern live::Slot numbers_" +
                                 source.symbol + "[];\nextern bool ran_" + source.symbol + "[];\n#line 1 \"" +
                                 (root / source.path).string() + "\"\n";
        writer.write(source.path, head + Translation(source, turning).text());
    }
    writer.write("numbers.cpp", tableOf(sources, turning));
    return 0;
}
