#include "tools/rehearse/options.h"

#include <cstdio>
#include <cstdlib>

#include "app/options.h"
#include "script/timeline.h"
#include "tools/command_line.h"

namespace {

constexpr char usage[] =
    "Usage: rehearse [SECOND] [OPTION]...\n"
    "Plays the show in a window, from SECOND on, with a desk over it for whoever works on it. What is saved\n"
    "below data/ and production/ is shown at once. F1 tells the keys.\n"
    "\n"
    " --held             hold at SECOND\n"
    " --state FILE       keep what the desk shows in FILE too, as lines \"name: value\"\n"
    " --picture FILE.png hold at SECOND, write what the window shows to FILE.png, and end\n"
    " -alsa, -oss, -esd, -nosound\n"
    "                    the sound output, as for the show [-alsa]\n"
    " --help             this text\n";

[[noreturn]] void refuse(const char* word, const char* reason) {
    refuseWord("rehearse", word, reason);
}

double second(const char* text) {
    const double value = numberIn(text);
    if (!(value >= 0 && value < double(programme().back().begin))) refuse(text, "no second of the show");
    return value;
}

}  // namespace

RehearseOptions parseRehearseOptions(int argc, const char* const* argv) {
    RehearseOptions options;
    for (int i = 1; i < argc; i++) {
        const std::string word = argv[i];
        if (word == "--help") {
            fputs(usage, stdout);
            exit(0);
        }
        if (word == "--held") {
            options.held = true;
        } else if (word == "--state" || word == "--picture") {
            if (++i == argc) refuse(word.c_str(), "needs a value");
            (word == "--state" ? options.stateFile : options.pictureFile) = argv[i];
        } else if (word == "-alsa" || word == "-oss" || word == "-esd" || word == "-nosound") {
            const char* words[] = {argv[0], argv[i]};
            options.soundOutput = parseOptions(2, words).soundOutput;
        } else if (word.starts_with("-")) {
            refuse(argv[i], "unknown option; --help tells those there are");
        } else {
            options.second = second(argv[i]);
        }
    }
    if (!options.pictureFile.empty()) options.held = true;
    return options;
}
