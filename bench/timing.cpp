#include <algorithm>
#include <ctime>
#include <filesystem>

#include "bench/bench.h"
#include "tools/process.h"
#include "tools/times.h"

double ratio(const Figure& figure) {
    return figure.ratios.empty() ? figure.value / figure.compared : median(figure.ratios);
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Figure paired(const std::string& name, const char* unit, const std::vector<double>& ours,
              const std::vector<double>& others, Goal kind, double goal) {
    Figure figure = {name, median(ours), unit, median(others), kind, goal};
    for (size_t i = 0; i < ours.size(); i++) figure.ratios.push_back(ours[i] / others[i]);
    return figure;
}

double processSeconds(pid_t process) {
    clockid_t clock;
    timespec time = {};
    if (clock_getcpuclockid(process, &clock) == 0) clock_gettime(clock, &time);
    return time.tv_sec + time.tv_nsec * 1e-9;
}

double bestSeconds(int runs, const std::function<void()>& work) {
    double best = 1e9;
    for (int i = 0; i < runs; i++) {
        const double start = steadySeconds();
        work();
        best = std::min(best, steadySeconds() - start);
    }
    return best;
}

std::string outputOf(const std::string& command) {
    std::string output;
    runProgram({"sh", "-c", command + " 2>/dev/null"}, [&](const std::string& line) { output += line; });
    return output;
}

std::string thisProgram(const std::string& words) {
    return std::filesystem::read_symlink("/proc/self/exe").string() + " " + words;
}
