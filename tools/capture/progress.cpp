#include "tools/capture/progress.h"

#include <unistd.h>

#include <cstdio>
#include <string>

namespace {

constexpr int linesEvery = 5;  // per cent between plain lines

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
    // Blanks over what is left of a longer line.
    fprintf(stderr, terminal ? "\r%s  " : "%s\n", text.c_str());
}
