#include "tools/capture/frames.h"

#include <charconv>
#include <cmath>

int millisecondsOf(int frame, int fps) {
    return int(std::lround(frame * 1000.0 / fps));
}

int frameAt(double seconds, int fps) {
    return int(std::lround(seconds * fps));
}

int framesBefore(double seconds, int fps) {
    const double ms = std::round(seconds * 1e6) / 1000;  // a decimal as it was meant: 65.4 is 65400 ms
    int count = int(seconds * fps);
    while (millisecondsOf(count, fps) < ms) count++;
    while (count > 0 && millisecondsOf(count - 1, fps) >= ms) count--;
    return count;
}

bool parseFrames(const std::string& text, FrameRuns* runs) {
    const char* next = text.data();
    const char* const end = next + text.size();
    const auto readNumber = [&](int* number) {
        if (next == end || *next < '0' || *next > '9') return false;
        const auto [after, error] = std::from_chars(next, end, *number);
        next = after;
        return error == std::errc();
    };
    runs->clear();
    for (;;) {
        FrameRun run;
        if (!readNumber(&run.first)) return false;
        run.last = run.first;
        if (next != end && *next == '-' && (++next, !readNumber(&run.last))) return false;
        if (run.last < run.first || (!runs->empty() && run.first <= runs->back().last)) return false;
        if (!runs->empty() && run.first == runs->back().last + 1)
            runs->back().last = run.last;
        else
            runs->push_back(run);
        if (next == end) return true;
        if (*next++ != ',') return false;
    }
}

std::string textOf(const FrameRuns& runs) {
    std::string text;
    for (const FrameRun& run : runs) {
        if (!text.empty()) text += ',';
        text += std::to_string(run.first);
        if (run.last > run.first) text += '-' + std::to_string(run.last);
    }
    return text;
}

std::vector<int> framesOf(const FrameRuns& runs) {
    std::vector<int> frames;
    for (const FrameRun& run : runs) {
        for (int frame = run.first; frame <= run.last; frame++) frames.push_back(frame);
    }
    return frames;
}

FrameRuns runsOf(const std::vector<int>& frames) {
    FrameRuns runs;
    for (int frame : frames) {
        if (!runs.empty() && frame == runs.back().last + 1)
            runs.back().last = frame;
        else
            runs.push_back({frame, frame});
    }
    return runs;
}
