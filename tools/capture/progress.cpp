#include "tools/capture/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "tools/times.h"

namespace {

constexpr int widestBar = 40;  // characters
constexpr int linesEvery = 5;  // per cent between plain lines

// A line that is longer than the terminal would not be overwritten by the next.
int terminalWidth() {
    winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

}  // namespace

Progress::Progress(int total) : total(total), terminal(isatty(STDERR_FILENO)) {}

Progress::~Progress() {
    if (terminal && done > 0) fputc('\n', stderr);
}

void Progress::step() {
    done++;
    const int percent = int(100LL * done / total);
    if (!terminal && (percent / linesEvery == printed / linesEvery && printed >= 0) && done < total) return;
    printed = percent;

    const double seconds = steadySeconds() - start;
    const double rate = done / (seconds > 0 ? seconds : 1);
    const std::string text = formatted("%3d %%  frame %d of %d  %.1f frames/s  %s left", percent, done, total,
                                       rate, minutesAndSeconds((total - done) / rate).c_str());
    if (!terminal) {
        fprintf(stderr, "%s\n", text.c_str());
        return;
    }
    const int bar = std::clamp(terminalWidth() - int(text.size()) - 5, 0, widestBar);
    const int filled = int(1LL * bar * done / total);
    fprintf(stderr, "\r[%s%s] %s ", std::string(filled, '#').c_str(), std::string(bar - filled, '.').c_str(),
            text.c_str());
}
