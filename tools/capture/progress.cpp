#include "tools/capture/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

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

    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const double rate = done / (seconds > 0 ? seconds : 1);
    const int left = int((total - done) / rate + 0.5);
    char text[96];
    const int length = snprintf(text, sizeof text, "%3d %%  frame %d of %d  %.1f frames/s  %d:%02d left",
                                percent, done, total, rate, left / 60, left % 60);
    if (!terminal) {
        fprintf(stderr, "%s\n", text);
        return;
    }
    const int bar = std::clamp(terminalWidth() - length - 5, 0, widestBar);
    const int filled = int(1LL * bar * done / total);
    fprintf(stderr, "\r[%s%s] %s ", std::string(filled, '#').c_str(), std::string(bar - filled, '.').c_str(),
            text);
}
