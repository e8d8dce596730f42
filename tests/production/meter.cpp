#include "tests/production/meter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

#include "tests/process.h"

using namespace audio;

namespace {

// The number behind the last place where the report has this label.
double figureOf(const std::string& report, const char* label) {
    const size_t at = report.rfind(label);
    if (at == std::string::npos) {
        ADD_FAILURE() << "no \"" << label << "\" in " << report;
        return NAN;
    }
    return std::strtod(report.c_str() + at + strlen(label), nullptr);
}

// What the meter prints of a file.
std::string metered(const std::string& path, const std::string& options) {
    return outputOf("ffmpeg -hide_banner -nostats -i '" + path + "' -af ebur128=peak=true" + options +
                    " -f null - 2>&1");
}

}  // namespace

Loudness measure(const std::string& path) {
    const std::string report = metered(path, "");
    return {figureOf(report, "I:"), figureOf(report, "Peak:")};
}

LoudnessAt measureAt(const std::string& path, double seconds) {
    std::istringstream report(metered(path, ":framelog=info"));
    for (std::string line; std::getline(report, line);) {
        const size_t time = line.find(" t: "), peaks = line.find("FTPK:");
        if (time == std::string::npos || peaks == std::string::npos) continue;
        if (std::fabs(std::strtod(line.c_str() + time + 4, nullptr) - seconds) > 0.01) continue;
        LoudnessAt heard{figureOf(line, " S:"), 0, 0};
        std::istringstream(line.substr(peaks + 5)) >> heard.left >> heard.right;
        return heard;
    }
    ADD_FAILURE() << "nothing at " << seconds << " s";
    return {};
}

Stereo decode(const std::string& path) {
    const std::string samples = outputOf("ffmpeg -v error -i '" + path + "' -f f32le -ac 2 -ar 44100 -");
    Stereo sound(samples.size() / (2 * sizeof(float)));
    for (size_t i = 0; i < sound.frames(); i++) {
        memcpy(&sound.left[i], samples.data() + 2 * i * sizeof(float), sizeof(float));
        memcpy(&sound.right[i], samples.data() + (2 * i + 1) * sizeof(float), sizeof(float));
    }
    return sound;
}

double levelOf(const Stereo& sound, double from, double to) {
    const size_t first = frameAt(from), end = std::min(frameAt(to), sound.frames());
    double sum = 1e-20;
    for (size_t i = first; i < end; i++)
        sum += sound.left[i] * sound.left[i] + sound.right[i] * sound.right[i];
    return 10 * std::log10(sum / (2.0 * double(std::max<size_t>(1, end - first))));
}

double correlationOf(const Stereo& sound) {
    double product = 0, left = 0, right = 0;
    for (size_t i = 0; i < sound.frames(); i++) {
        product += sound.left[i] * sound.right[i];
        left += sound.left[i] * sound.left[i];
        right += sound.right[i] * sound.right[i];
    }
    return product / std::sqrt(left * right + 1e-20);
}
