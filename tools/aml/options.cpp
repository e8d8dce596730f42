#include "tools/aml/options.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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

float number(const char* word, const char* text) {
    const float value = float(numberIn(text));
    if (!std::isfinite(value)) refuse(word, "no number");
    return value;
}

float scale(const char* text) {
    const float value = number(text, text);
    if (value == 0) refuse(text, "would leave nothing");
    return value;
}

Turn turn(const char* text) {
    if (text[0] < 'x' || text[0] > 'z' || text[1] != ':') refuse(text, "no turn, such as x:90");
    return {text[0] - 'x', number(text, text + 2)};
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
    readCommandLine(argc, argv, usage, {"--scale=", "--turn="},
                    [&](const std::string& option, const char* value) {
                        if (!option.empty() && options.command != "import")
                            refuse(option, "unknown option; --help tells those there are");
                        if (option == "--scale") options.placing.scale = scale(value);
                        if (option == "--turn") options.placing.turns.push_back(turn(value));
                        if (!option.empty()) return;
                        if (options.command.empty())
                            options.command = commandOf(value).name;
                        else
                            options.files.push_back(value);
                    });
    if (options.command.empty()) {
        fputs(usage, stderr);
        exit(1);
    }
    if (options.files.size() != commandOf(options.command.c_str()).files)
        refuse(options.command, "another number of files; --help tells which");
    return options;
}
