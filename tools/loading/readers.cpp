#include "tools/loading/readers.h"

#include <algorithm>
#include <semaphore>
#include <thread>

#include "tools/process.h"

namespace {

// Of those who work at a time: no less than two, since music takes a second.
std::counting_semaphore<> places(std::max(2u, std::thread::hardware_concurrency()));

struct Place {
    Place() { places.acquire(); }
    ~Place() { places.release(); }
};

}  // namespace

// In a thread that no signal disturbs: they are the drawing one's business. Where no thread can be had,
// whoever takes the file does the work.
template <typename Work>
void Readers::start(const std::string& path, Work work) {
    const Undisturbed undisturbed;
    readings.push_back({path, false, std::async(std::launch::async | std::launch::deferred, [work] {
                            const Place place;
                            return work();
                        })});
}

void Readers::request(const FileName& name) {
    for (Reading& reading : readings)
        if (reading.path == name.path) reading.outdated = true;
    start(name.path, [name] { return readShowFile(name); });
}

std::optional<ShowFile> Readers::take(std::chrono::steady_clock::time_point until) {
    for (auto next = readings.begin(); next != readings.end();) {
        const auto reading = next++;
        if (reading->file.wait_until(until) == std::future_status::timeout) continue;
        if (!reading->outdated) return finish(reading);
        readings.erase(reading);
    }
    return std::nullopt;
}

ShowFile Readers::await(const FileName& name) {
    const auto reading = std::find_if(readings.begin(), readings.end(), [&](const Reading& one) {
        return one.path == name.path && !one.outdated;
    });
    return reading == readings.end() ? readShowFile(name) : finish(reading);
}

ShowFile Readers::finish(std::list<Reading>::iterator reading) {
    ShowFile file = reading->file.get();
    readings.erase(reading);
    if (measures && file.problem.empty() && file.music)
        start(file.name.path,
              [this, name = file.name, bytes = file.bytes] { return measureMusic(name, bytes, stopping); });
    return file;
}
