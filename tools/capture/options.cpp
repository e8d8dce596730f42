#include "tools/capture/options.h"

#include <cmath>

#include "tools/command_line.h"
#include "tools/formatted.h"

namespace {

constexpr int mostCells = 1000;
constexpr int usualFps = 60;

const std::string usage =
    "Usage: capture [OPTION]...\n"
    "Draws the show frame by frame, at no matter what speed, and writes it as a film with its sound.\n"
    "\n"
    " --out FILE         the film, .mp4, .m4v, .mov or .mkv, or what else ffmpeg can make of its ending.\n"
    "                    Numbered pictures for a name such as frames/%05d.png [valojuova.mp4]\n"
    " --upload           a film of 1920 x 1080 at 60 frames a second, the picture between black bars\n"
    " --upload-2160      the same of 3840 x 2160\n"
    " --party            a film of 1280 x 720 at 30 frames a second, in H.264's Main profile\n"
    " --lossless         a film of the drawn pixels, bit for bit\n"
    " --archive          the same as archives keep it, an .mkv: FFV1 with checksums, and FLAC\n"
    " --fps N            frames a second, 1 to 1000 [60, or 30 with --party]\n"
    " --samples N        samples a pixel, 0 to what the driver has [4 on a graphics card, 0 in software]\n"
    " --from S, --to S   the seconds of the show to capture [0, " +
    formatted("%g", showtime::end.seconds()) +
    "]\n"
    " --frames LIST      the frames to capture instead, such as 0-2999,3600: a silent part of the film, and\n"
    "                    beside it PART.manifest, which tells what it is a part of\n"
    " --resume           draws only what of an earlier run with it is missing or broken, or was drawn by\n"
    "                    another program or driver, from other data or with other options\n"
    " --join PART...     makes the film of parts, with its sound, and draws nothing\n"
    " --storyboard FILE  one PNG with a grid of frames and their times, and no film\n"
    " --every S          seconds between the frames of the storyboard [5]\n"
    " --help             this text\n";

double number(const char* option, const char* text, double least, double most) {
    const double value = numberIn(text);
    if (!(value >= least && value <= most)) refuse(option, "not a number in its range");
    return value;
}

int wholeNumber(const char* option, const char* text, int least, int most) {
    const double value = number(option, text, least, most);
    if (value != std::floor(value)) refuse(option, "not a whole number");
    return int(value);
}

// Exactly one place for the number, of the form %d or %05d: the name becomes a format.
bool isNumbered(const std::string& name) {
    const size_t place = name.find('%');
    if (place == std::string::npos || name.find('%', place + 1) != std::string::npos) return false;
    const size_t end = name.find_first_not_of("0123456789", place + 1);
    return end != std::string::npos && name[end] == 'd' && end - place <= 3;
}

void checkFrames(const CaptureOptions& options, bool secondsGiven) {
    if (options.from >= options.to) refuse("--from", "does not lie before --to");
    if (options.frames.empty()) return;
    if (secondsGiven) refuse("--frames", "stands instead of --from and --to, not beside them");
    if (!options.storyboard.empty()) refuse("--frames", "a storyboard is of seconds, from --from to --to");
    // Of a film that is joined, the parts tell the rate.
    const int count = framesBefore(CaptureOptions().to, options.fps);
    if (options.parts.empty() && options.frames.back().last >= count)
        refuse("--frames", ("the show ends with frame " + std::to_string(count - 1)).c_str());
}

void checkKind(const CaptureOptions& options) {
    const char* kind = optionOf(options.kind);
    const bool isPart = !options.frames.empty() && options.parts.empty();
    if (options.kind == FilmKind::Archive && !endsIn(options.out, isPart ? ".mov" : ".mkv"))
        refuse(kind, isPart ? "makes a part that is a .mov" : "makes an .mkv");
    if (options.kind != FilmKind::Net && !hasKinds(options.out))
        refuse(kind, "makes an .mp4, .m4v, .mov or .mkv");
    const int rate = rateOf(options.kind);
    if (rate && options.fps != rate) refuse(kind, formatted("has %d frames a second", rate));
    if (options.resume && !options.picturesWanted() && !hasKinds(options.out))
        refuse("--resume", "makes pictures, or an .mp4, .m4v, .mov or .mkv");
    if (isPart && !options.picturesWanted() && !hasExactTimes(options.out))
        refuse("--frames", "makes pictures, or a part that is an .mp4, .m4v or .mov");
}

void checkJoin(const CaptureOptions& options) {
    if (options.parts.empty()) return;
    if (!hasKinds(options.out)) refuse("--join", "makes an .mp4, .m4v, .mov or .mkv");
    if (options.kind != FilmKind::Net || options.samples != samplesOfRenderer || options.resume ||
        !options.storyboard.empty())
        refuse("--join", "takes the parts as they are and draws nothing");
    if (options.frames.size() > 1) refuse("--frames", "a film that is joined has no gaps");
}

void checkPictures(const CaptureOptions& options) {
    if (!options.storyboard.empty() && !endsIn(options.storyboard, ".png"))
        refuse("--storyboard", "its name does not end in .png");
    if (!options.storyboard.empty() && (options.to - options.from) / options.every > mostCells)
        refuse("--every", "makes a storyboard of more than a thousand frames");
    if (!options.storyboard.empty() && options.resume) refuse("--resume", "a storyboard is drawn whole");
    if (options.picturesWanted() && !isNumbered(options.out))
        refuse("--out", "pictures need a number in their name, such as frames/%05d.png");
}

void readOption(const std::string& option, const char* value, CaptureOptions* options) {
    const double end = showtime::end.seconds();
    const bool isPart = option == "--join" || (option.empty() && !options->parts.empty());
    if (isPart && std::string(value).starts_with("--")) refuse(option, "needs parts");
    if (isPart) options->parts.push_back(value);
    if (option.empty() && !isPart) refuse(value, "unknown option; --help tells those there are");
    if (option == "--out") options->out = value;
    if (const auto kind = kindOf(option)) {
        if (options->kind != FilmKind::Net && options->kind != *kind) refuse(option, "a film is of one kind");
        options->kind = *kind;
    }
    if (option == "--fps") options->fps = wholeNumber("--fps", value, 1, mostFps);
    if (option == "--samples") options->samples = wholeNumber("--samples", value, 0, mostSamples);
    if (option == "--from") options->from = number("--from", value, 0, end);
    if (option == "--to") options->to = number("--to", value, 0, end);
    if (option == "--resume") options->resume = true;
    if (option == "--storyboard") options->storyboard = value;
    if (option == "--every") options->every = number("--every", value, 0.01, end);
    if (option == "--frames" && !parseFrames(value, &options->frames))
        refuse("--frames", "not a list of ascending frames, such as 0-2999,3600");
}

}  // namespace

bool CaptureOptions::picturesWanted() const {
    return endsIn(out, ".png");
}

FrameRuns CaptureOptions::runs(int fps) const {
    if (!frames.empty()) return frames;
    const FrameRun run = {framesBefore(from, fps), framesBefore(to, fps) - 1};
    return run.last < run.first ? FrameRuns{} : FrameRuns{run};
}

CaptureOptions parseCaptureOptions(int argc, const char* const* argv) {
    CaptureOptions options;
    bool secondsGiven = false;
    readCommandLine(argc, argv, usage,
                    {"--out=", "--upload", "--upload-2160", "--party", "--lossless", "--archive",
                     "--fps=", "--samples=", "--from=", "--to=", "--frames=", "--resume",
                     "--join=", "--storyboard=", "--every="},
                    [&](const std::string& option, const char* value) {
                        secondsGiven |= option == "--from" || option == "--to";
                        readOption(option, value, &options);
                    });
    if (options.fps == 0) options.fps = rateOf(options.kind) ? rateOf(options.kind) : usualFps;
    checkFrames(options, secondsGiven);
    checkPictures(options);
    checkKind(options);
    checkJoin(options);
    // Pictures and storyboards show what the show draws.
    const bool pictures = options.picturesWanted() || !options.storyboard.empty();
    if (pictures && options.samples == samplesOfRenderer) options.samples = 0;
    return options;
}
