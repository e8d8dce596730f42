// The arithmetic of the show's clock: what is being heard, from a steady clock and a device's rough reports.
// Pure values, any steady clock will do: tests drive it with reports of their own.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>

namespace sound {

using Time = std::chrono::nanoseconds;

// The output's time line: how much of what the mixer has made was heard by a moment. It runs with the steady
// clock and leans towards the device's reports, never by more than a quarter of its speed, so it neither
// stands still nor steps back, and a bad report among good ones moves it little. Without reports it runs at
// speed 1. A report's moment must not lie before one that was already asked for, whose answer it would
// change.
class HeardPosition {
public:
    // 0 at `start`.
    explicit HeardPosition(Time start = {}) : reported(start) {}

    // For any moment from the latest report on; for an earlier one the answer is that of the report.
    Time at(Time now) const {
        const Time elapsed = std::max(now - reported, Time::zero());
        const double caughtUp = 1 - std::exp(-double(elapsed.count()) / double(settling.count()));
        return position + elapsed + Time(std::llround(caughtUp * double(correction.count())));
    }

    // The device says that at `now` it was at `heard`: the frames written less what it still holds.
    void report(Time now, Time heard) {
        position = at(now);
        reported = std::max(now, reported);
        correction = std::clamp(heard - position, -settling / 4, settling / 4);
    }

    // The device was emptied: the latest report says nothing of what it plays from `now` on.
    void forgetReport(Time now) { report(now, at(now)); }

private:
    // Long enough to average reports that are some milliseconds off, short enough that a clock which is 300
    // parts in a million off ends up 0.1 ms away.
    static constexpr Time settling = std::chrono::milliseconds(300);

    Time position{};    // at the latest report
    Time reported{};    // when that was
    Time correction{};  // how far the device was ahead of `position` then
};

// A stream's place on that time line: it runs along with it, or stands.
class Playhead {
public:
    Time at(Time heard) const { return running ? heard - place : place; }
    bool isRunning() const { return running; }

    void seek(Time heard, Time target) { place = running ? heard - target : target; }
    void run(Time heard) {
        if (!running) place = heard - place;
        running = true;
    }
    void stand(Time heard) {
        place = at(heard);
        running = false;
    }

private:
    bool running = false;
    Time place{};  // running: where the stream's start lies on the time line; standing: where the stream is
};

}  // namespace sound
