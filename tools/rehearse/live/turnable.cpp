// turnable ROOT FOLDER: writes the sources of script/ and effects/ below FOLDER/turned/ so that the numbers
// of their constants can be turned as the library is loaded. Line for line as they are, with the names of the
// originals in what a compiler says. What FOLDER/fixed names, a constant or a source, stays as it is.
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tools/rehearse/live/named_numbers.h"
#include "tools/whole_file.h"

namespace fs = std::filesystem;

namespace {

using Names = std::set<std::string>;

struct Source {
    std::string path;  // from the root
    std::string text;
    NamedNumbers names = namedNumbers(text);
};

void add(const Names& more, Names* names) {
    names->insert(more.begin(), more.end());
}

// The constants, and functions that are some, that are made of numbers, however far away, where the compiler
// needs none of them.
Names liveNames(const std::vector<Source>& sources, Names fixed) {
    for (const Source& source : sources) {
        add(source.names.needed, &fixed);
        for (const Piece& piece : source.names.pieces)
            if (fixed.contains(source.path)) add(piece.names, &fixed);
    }
    Names live;
    for (size_t before = 0; before != fixed.size() + live.size();) {
        before = fixed.size() + live.size();
        for (const Source& source : sources) {
            for (const Piece& piece : source.names.pieces) {
                if (!piece.keywords.contains("constexpr")) continue;
                if (haveCommon(piece.names, fixed)) {
                    add(piece.mentions, &fixed);
                    for (const std::string& name : piece.names) live.erase(name);
                } else if (!piece.numbers.empty() || haveCommon(piece.mentions, live)) {
                    add(piece.names, &live);
                }
            }
        }
    }
    return live;
}

std::string firstLine(const fs::path& root, const Source& source) {
    return "#line 1 \"" + (root / source.path).string() + "\"\n";
}

std::string translated(const fs::path& root, const Source& source, const Names& live) {
    std::string symbol = "source_" + source.path, text = source.text;
    for (char& c : symbol)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    for (auto piece = source.names.pieces.rbegin(); piece != source.names.pieces.rend(); ++piece) {
        if (piece->bodyAt && source.path.ends_with(".cpp"))
            text.insert(piece->bodyAt, " ::" + symbol + ".ran = true;");
        if (!piece->keywords.contains("constexpr") || !haveCommon(piece->names, live)) continue;
        for (auto number = piece->numbers.rbegin(); number != piece->numbers.rend(); ++number)
            text.replace(number->at, number->length,
                         "::live::Number{::" + symbol + ", " + std::to_string(number->at) + ", " +
                             source.text.substr(number->at, number->length) + "}");
        const bool isFunction = piece->numbers.empty() && piece->bodyAt;
        text.replace(piece->at, piece->typeAt - piece->at, isFunction ? "inline " : "static const ");
    }
    return "#include \"tools/rehearse/live/number.h\"\ninline live::Source& " + symbol +
           " = live::sourceOf(\"" + source.path + "\", R\"source(" + source.text + ")source\");\n" +
           firstLine(root, source) + text;
}

// Older than what was saved since the start; as it is, if it is no other. False, after a line, if it can't be
// written.
bool write(const fs::path& file, const std::string& text, const timespec& began) {
    std::error_code error;
    if (fs::exists(file, error) && contentOf(file) == text) return true;
    fs::create_directories(file.parent_path(), error);
    const timespec times[] = {began, began};
    if (writeWholeFile(file, text)) return utimensat(AT_FDCWD, file.c_str(), times, 0) == 0;
    fprintf(stderr, "%s: error: %s\n", file.c_str(), strerror(errno));
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 1;
    timespec began;
    clock_gettime(CLOCK_REALTIME_COARSE, &began);
    const fs::path root = argv[1], folder = argv[2];
    std::vector<Source> sources;
    for (const char* name : {"effects", "script"})
        for (const fs::directory_entry& file : fs::recursive_directory_iterator(root / name))
            if (const fs::path own = file.path().filename();
                !own.string().starts_with('.') && (own.extension() == ".h" || own.extension() == ".cpp"))
                sources.push_back({file.path().lexically_relative(root).string(), contentOf(file)});
    std::ifstream learnt(folder / "fixed");
    Names fixed(std::istream_iterator<std::string>(learnt), {});
    // The clock has those, too.
    for (const Piece& piece : namedNumbers(contentOf(root / "tools/rehearse/live/code.h")).pieces)
        if (piece.names.contains("gridOfBeats")) add(piece.mentions, &fixed);
    const Names live = liveNames(sources, fixed);
    for (const Source& source : sources)
        if (!write(folder / "turned" / source.path,
                   fixed.contains(source.path) ? firstLine(root, source) + source.text
                                               : translated(root, source, live),
                   began))
            return 1;
    return 0;
}
