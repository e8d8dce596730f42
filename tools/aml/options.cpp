#include "tools/aml/options.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "tools/command_line.h"

namespace {

constexpr char usage[] =
    "Usage: aml info FILE.AML\n"
    "       aml import MODEL FILE.AML [--scale S] [--turn AXIS:DEGREES]...\n"
    "       aml export FILE.AML MODEL\n"
    "Tells what a mesh file holds and what the show has against it; makes one of what modellers write (OBJ, "
    "glTF,\n"
    "FBX, PLY, STL ...); writes one for modellers, in the format of MODEL's ending.\n"
    "\n"
    " --scale S            make it S times as large\n"
    " --turn AXIS:DEGREES  turn it around x, y or z, counter-clockwise seen from the axis's end; several "
    "turns\n"
    "                      follow each other (\"--turn x:-90\" where z is up)\n"
    " --help               this text\n";

[[noreturn]] void refuse(const char* word, const char* reason) {
    refuseWord("aml", word, reason);
}

float number(const char* word, const char* text) {
    const float value = float(numberIn(text));
    if (!std::isfinite(value)) refuse(word, "no number");
    return value;
}

struct Command {
    const char* name;
    size_t files;
};

constexpr Command commands[] = {{"info", 1}, {"import", 2}, {"export", 2}};

const Command& commandOf(const char* word) {
    for (const Command& command : commands)
        if (std::strcmp(word, command.name) == 0) return command;
    refuse(word, "no such command; --help tells those there are");
}

}  // namespace

AmlOptions parseAmlOptions(int argc, const char* const* argv) {
    AmlOptions options;
    for (int i = 1; i < argc; i++) {
        const std::string word = argv[i];
        const bool isImport = options.command == "import";
        if (word == "--help") {
            fputs(usage, stdout);
            exit(0);
        }
        if (isImport && (word == "--scale" || word == "--turn")) {
            if (++i == argc) refuse(word.c_str(), "needs a value");
            const char* value = argv[i];
            if (word == "--scale") {
                options.placing.scale = number(value, value);
                if (options.placing.scale == 0) refuse(value, "would leave nothing");
            } else {
                if (value[0] < 'x' || value[0] > 'z' || value[1] != ':')
                    refuse(value, "no turn, such as x:90");
                options.placing.turns.push_back({value[0] - 'x', number(value, value + 2)});
            }
        } else if (word.starts_with("--")) {
            refuse(argv[i], "unknown option; --help tells those there are");
        } else if (options.command.empty()) {
            options.command = commandOf(argv[i]).name;
        } else {
            options.files.push_back(word);
        }
    }
    if (options.command.empty()) {
        fputs(usage, stderr);
        exit(1);
    }
    if (options.files.size() != commandOf(options.command.c_str()).files)
        refuse(options.command.c_str(), "another number of files; --help tells which");
    return options;
}
