#include "bench/moments.h"

#include <GL/glew.h>

#include <algorithm>
#include <cstdio>

#include "app/frame.h"
#include "bench/bench.h"
#include "script/timeline.h"
#include "tools/capture/stepped_show.h"

std::vector<Segment> segments(const std::string& filter) {
    std::vector<Segment> all;
    const auto sheet = programme();
    for (int entry = 0; entry + 1 < int(sheet.size()); entry++) {
        char name[64];
        snprintf(name, sizeof name, "a frame after %.1f s", double(sheet[entry].begin));
        if (std::string(name).find(filter) != std::string::npos) all.push_back({entry, name});
    }
    return all;
}

int millisecond(const Moment& moment, int frame) {
    const auto sheet = programme();
    const double middle = 500.0 * (sheet[moment.entry].begin + sheet[moment.entry + 1].begin);
    return int(middle) + (frame - moment.frames / 2) * moment.step;
}

FrameCost drawMoment(const Moment& moment) {
    SteppedShow show(1000 / moment.step);
    std::vector<double> beginnings;
    double start = 0;
    for (int i = 0; i < moment.frames; i++) {
        beginnings.push_back(wallSeconds());
        if (i == warmUpFrames) start = processSeconds();
        show.music.ms = millisecond(moment, i);
        renderFrame();
    }
    glFinish();
    beginnings.push_back(wallSeconds());
    return {medianFrame(beginnings, moment.frames),
            (processSeconds() - start) / (moment.frames - warmUpFrames)};
}

double medianFrame(const std::vector<double>& beginnings, int frames) {
    std::vector<double> durations;
    for (size_t i = beginnings.size() - frames + warmUpFrames; i < beginnings.size(); i++)
        durations.push_back(beginnings[i] - beginnings[i - 1]);
    return median(durations);
}

bool drawingIsLeftOut() {
    float colour[4] = {};
    glClearColor(1, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glReadPixels(0, 0, 1, 1, GL_RGBA, GL_FLOAT, colour);
    return colour[0] < 0.5f;
}
