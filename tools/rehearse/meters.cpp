#include "tools/rehearse/meters.h"

#include <ebur128.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <mutex>

#include "tools/process.h"

namespace {

constexpr int rate = 44100;                // Hz
constexpr int blockMs = 100;               // a figure for each
constexpr int blockFrames = rate / 10;     // of it
constexpr int shortTerm = 3000 / blockMs;  // blocks
constexpr int settling = 5;                // blocks, of the filters

float decibelsOf(double amplitude) {
    return float(20 * std::log10(std::max(amplitude, 1e-6)));
}

struct Sum {
    std::vector<std::unique_ptr<sound::Decoder>> decoders;
    std::vector<float> one, all;

    Sum(const std::vector<SoundFile>& files, int firstBlock) : one(2 * blockFrames), all(2 * blockFrames) {
        for (const SoundFile& file : files) {
            decoders.push_back(sound::Decoder::open(file));
            if (!decoders.back())
                decoders.pop_back();
            else
                decoders.back()->seek(std::chrono::milliseconds(firstBlock * blockMs), rate);
        }
    }
    void read() {
        std::fill(all.begin(), all.end(), 0.0f);
        for (const auto& decoder : decoders) {
            decoder->read(one.data(), blockFrames);
            for (size_t i = 0; i < all.size(); i++) all[i] += one[i];
        }
    }
};

}  // namespace

struct Meters::Measured {
    mutable std::mutex mutex;
    std::vector<std::optional<Level>> levels;  // of the blocks; `held` is left to who asks
    std::atomic<bool> stopped = false;

    explicit Measured(int blocks) : levels(size_t(blocks)) {}
    void measure(const std::vector<SoundFile>& files, int from, int to);
};

// Blocks that are whole: from the song's first one on, or once the time that a figure is of has passed.
void Meters::Measured::measure(const std::vector<SoundFile>& files, int from, int to) {
    const int first = std::max(from - shortTerm - settling, 0);
    Sum sum(files, first);
    ebur128_state* meter = ebur128_init(2, rate, EBUR128_MODE_S | EBUR128_MODE_TRUE_PEAK);
    for (int block = first; block < to && meter && !stopped; block++) {
        sum.read();
        Level level;
        double loudness = 0, left = 0, right = 0;
        if (ebur128_add_frames_float(meter, sum.all.data(), blockFrames) != EBUR128_SUCCESS) break;
        ebur128_loudness_shortterm(meter, &loudness);
        ebur128_prev_true_peak(meter, 0, &left);
        ebur128_prev_true_peak(meter, 1, &right);
        if (block < from) continue;
        const std::lock_guard lock(mutex);
        levels[size_t(block)] = Level{float(loudness), decibelsOf(left), decibelsOf(right)};
    }
    if (meter) ebur128_destroy(&meter);
}

void Meters::follow(const std::vector<SoundFile>& files, int ms, int end) {
    if (files == measuring && end == lastEnd) return;
    stop();
    measuring = files;
    lastEnd = end;
    const int blocks = end / blockMs;
    measured = std::make_shared<Measured>(blocks);
    if (files.empty()) return;
    // What is held over three seconds is asked for, too.
    const int first = std::clamp(ms / blockMs - shortTerm, 0, blocks);
    const Undisturbed undisturbed;
    work =
        std::async(std::launch::async | std::launch::deferred, [measured = measured, files, first, blocks] {
            setpriority(PRIO_PROCESS, id_t(gettid()), 10);  // the show goes first
            measured->measure(files, first, blocks);
            measured->measure(files, 0, first);
        });
}

std::optional<Level> Meters::at(int ms) const {
    if (!measured) return std::nullopt;
    const int last = std::min(ms / blockMs, int(measured->levels.size())) - 1;
    const std::lock_guard lock(measured->mutex);
    if (last < 0 || !measured->levels[size_t(last)]) return std::nullopt;
    Level level = *measured->levels[size_t(last)];
    level.held = std::max(level.left, level.right);
    for (int block = std::max(last - shortTerm + 1, 0); block < last; block++)
        if (const auto& other = measured->levels[size_t(block)])
            level.held = std::max({level.held, other->left, other->right});
    return level;
}

bool Meters::idle() const {
    return !work.valid() || work.wait_for(std::chrono::seconds(0)) != std::future_status::timeout;
}

void Meters::stop() {
    if (measured) measured->stopped = true;
    if (work.valid()) work.wait();
}
