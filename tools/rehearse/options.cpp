#include "tools/rehearse/options.h"

#include "app/options.h"
#include "tools/command_line.h"

namespace {

constexpr char usage[] =
    "Usage: rehearse [SECOND] [OPTION]...\n"
    "Plays the show in a window, from SECOND on, with a desk over it for whoever works on it. What is saved\n"
    "below data/, production/, script/ and effects/ is shown at once. F1 tells the keys.\n"
    "\n"
    " --held             hold at SECOND\n"
    " --numbers          begin with the list of the numbers that can be turned\n"
    " --state FILE       keep what the desk shows in FILE too, as lines \"name: value\"\n"
    " --picture FILE.png hold at SECOND, write what the window shows to FILE.png, and end\n"
    " -alsa, -oss, -esd, -nosound\n"
    "                    the sound output, as for the show [-alsa]\n"
    " --help             this text\n";

void readOption(const std::string& option, const char* value, RehearseOptions* options) {
    if (option.empty()) options->second = secondOfShow(value);
    if (option == "--held") options->held = true;
    if (option == "--numbers") options->numbers = true;
    if (option == "--state") options->stateFile = value;
    if (option == "--picture") options->pictureFile = value;
    if (option.starts_with("-") && !option.starts_with("--")) {
        const char* words[] = {"", option.c_str()};
        options->soundOutput = parseOptions(2, words).soundOutput;
    }
}

}  // namespace

RehearseOptions parseRehearseOptions(int argc, const char* const* argv) {
    RehearseOptions options;
    readCommandLine(
        argc, argv, usage,
        {"--held", "--numbers", "--state=", "--picture=", "-alsa", "-oss", "-esd", "-nosound"},
        [&](const std::string& option, const char* value) { readOption(option, value, &options); });
    if (!options.pictureFile.empty()) options.held = true;
    return options;
}
