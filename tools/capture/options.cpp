#include "tools/capture/options.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int mostCells = 1000;

constexpr char usage[] =
    "Usage: capture [OPTION]...\n"
    "Draws the show frame by frame, at no matter what speed, and writes it as a film with its sound.\n"
    "\n"
    " --out FILE         the film; its ending tells the kind. Numbered pictures for a name such as\n"
    "                    frames/%%05d.png [valojuova.mp4]\n"
    " --fps N            frames a second, 1 to 1000 [60]\n"
    " --from S, --to S   the seconds of the show to capture [0, %g]\n"
    " --storyboard FILE  one PNG with a grid of frames and their times, and no film\n"
    " --every S          seconds between the frames of the storyboard [5]\n"
    " --help             this text\n";

[[noreturn]] void refuse(const char* word, const char* reason) {
    fprintf(stderr, "capture: %s: %s\n", word, reason);
    exit(1);
}

double number(const char* option, const char* text, double least, double most) {
    char* end = nullptr;
    const double value = strtod(text, &end);
    if (end == text || *end || !(value >= least && value <= most))
        refuse(option, "not a number in its range");
    return value;
}

int wholeNumber(const char* option, const char* text, int least, int most) {
    const double value = number(option, text, least, most);
    if (value != std::floor(value)) refuse(option, "not a whole number");
    return static_cast<int>(value);
}

bool endsIn(const std::string& text, const char* ending) {
    return text.size() >= strlen(ending) &&
           text.compare(text.size() - strlen(ending), std::string::npos, ending) == 0;
}

// Exactly one place for the number, of the form %d or %05d: the name becomes a format.
bool isNumbered(const std::string& name) {
    const size_t place = name.find('%');
    if (place == std::string::npos || name.find('%', place + 1) != std::string::npos) return false;
    const size_t end = name.find_first_not_of("0123456789", place + 1);
    return end != std::string::npos && name[end] == 'd' && end - place <= 3;
}

void check(const CaptureOptions& options) {
    if (options.from >= options.to) refuse("--from", "does not lie before --to");
    if (!options.storyboard.empty() && !endsIn(options.storyboard, ".png"))
        refuse("--storyboard", "its name does not end in .png");
    if (!options.storyboard.empty() && (options.to - options.from) / options.every > mostCells)
        refuse("--every", "makes a storyboard of more than a thousand frames");
    if (endsIn(options.out, ".png") && !isNumbered(options.out))
        refuse("--out", "pictures need a number in their name, such as frames/%05d.png");
}

}  // namespace

CaptureOptions parseCaptureOptions(int argc, const char* const* argv) {
    CaptureOptions options;
    const double end = options.to;
    for (int i = 1; i < argc; i++) {
        const std::string word = argv[i];
        if (word == "--help") {
            printf(usage, end);
            exit(0);
        }
        if (word != "--out" && word != "--fps" && word != "--from" && word != "--to" &&
            word != "--storyboard" && word != "--every")
            refuse(argv[i], "unknown option; --help tells those there are");
        if (++i == argc) refuse(word.c_str(), "needs a value");
        if (word == "--out") options.out = argv[i];
        if (word == "--storyboard") options.storyboard = argv[i];
        if (word == "--fps") options.fps = wholeNumber("--fps", argv[i], 1, 1000);
        if (word == "--from") options.from = number("--from", argv[i], 0, end);
        if (word == "--to") options.to = number("--to", argv[i], 0, end);
        if (word == "--every") options.every = number("--every", argv[i], 0.01, end);
    }
    check(options);
    return options;
}
