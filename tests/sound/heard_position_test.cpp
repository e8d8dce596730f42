// The clock's arithmetic against devices that exist only here: each reports as badly as real ones do.
#include "sound/heard_position.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

namespace {

using namespace std::chrono_literals;
using sound::HeardPosition;
using sound::Playhead;
using sound::Time;

struct Course {
    Time worstError{};  // of the position against what is heard, after the first two seconds
    Time worstStep{};   // furthest move in one millisecond
    Time leastStep = 1s;
};

// Runs the clock for `length`, with a report of heardAt, off by up to `jitter`, about every 10 ms.
Course follow(Time length, const std::function<Time(Time)>& heardAt, Time jitter = 0ms) {
    HeardPosition position;
    Course course;
    uint32_t random = 1;
    Time before{}, nextReport{};
    for (Time now = 1ms; now <= length; now += 1ms) {
        if (now >= nextReport) {
            random = random * 1664525 + 1013904223;
            const double offset = double(random >> 8) / (1 << 23) - 1;
            position.report(now, heardAt(now) + Time(int64_t(offset * double(jitter.count()))));
            nextReport = now + 7ms + Time((random >> 16) % 6'000'000);
        }
        const Time heard = position.at(now);
        course.worstStep = std::max(course.worstStep, heard - before);
        course.leastStep = std::min(course.leastStep, heard - before);
        if (now > 2s) course.worstError = std::max(course.worstError, std::chrono::abs(heard - heardAt(now)));
        before = heard;
    }
    return course;
}

TEST(HeardPosition, RunsWithTheClockWithoutReports) {
    const HeardPosition position(5s);
    EXPECT_EQ(position.at(5s), 0s);
    EXPECT_EQ(position.at(65s), 60s);
    EXPECT_EQ(position.at(4s), 0s);
}

TEST(HeardPosition, SmoothsReportsThatJitter) {
    const Course course = follow(
        10s, [](Time now) { return now - 30ms; }, 5ms);
    EXPECT_LT(course.worstError, 2ms);
    EXPECT_GT(course.leastStep, 700us);
    EXPECT_LT(course.worstStep, 1300us);
}

TEST(HeardPosition, FollowsADeviceWhoseClockIsOff) {
    const Course fast = follow(3min, [](Time now) { return now + now / 3000; });
    const Course slow = follow(3min, [](Time now) { return now - now / 3000; });
    EXPECT_LT(fast.worstError, 500us);
    EXPECT_LT(slow.worstError, 500us);
}

TEST(HeardPosition, BendsThroughAnUnderrun) {
    const auto heardAt = [](Time now) { return now < 3s ? now : std::max<Time>(3s, now - 100ms); };
    const Course course = follow(10s, heardAt);
    EXPECT_GT(course.leastStep, 700us);
    EXPECT_LT(course.worstStep, 1300us);
    EXPECT_LE(course.worstError, 100ms);
    HeardPosition after;
    for (Time now = 0s; now < 6s; now += 10ms) after.report(now, heardAt(now));
    EXPECT_NEAR(double((after.at(6s) - 5900ms).count()), 0, 1e6);
}

TEST(HeardPosition, ALoneAbsurdReportPassesUnnoticed) {
    HeardPosition position;
    for (Time now = 0s; now < 1s; now += 10ms) position.report(now, now);
    position.report(1s, 900s);
    position.report(1010ms, 1010ms);
    EXPECT_NEAR(double((position.at(2s) - 2s).count()), 0, 1e6);
    position.report(3s, 0s);
    // No more reports: nothing but the clock is left.
    const Time later = position.at(8s);
    EXPECT_GT(later, 7900ms);
    EXPECT_NEAR(double((position.at(9s) - later - 1s).count()), 0, 1e3);
}

TEST(Playhead, SeeksAtOnceAndStandsInAPause) {
    Playhead head;
    head.seek(10s, 3s);
    EXPECT_EQ(head.at(20s), 3s);
    head.run(20s);
    EXPECT_EQ(head.at(20500ms), 3500ms);
    head.seek(21s, 12345ms);
    EXPECT_EQ(head.at(21s), 12345ms);
    EXPECT_EQ(head.at(22s), 13345ms);
    head.stand(22s);
    head.stand(30s);
    EXPECT_EQ(head.at(40s), 13345ms);
    head.seek(41s, 1s);
    EXPECT_EQ(head.at(50s), 1s);
    head.run(60s);
    head.run(61s);
    EXPECT_EQ(head.at(62s), 3s);
}

}  // namespace
