#include "tools/capture/about.h"

#include <algorithm>
#include <cmath>

#include "script/timeline.h"
#include "tools/formatted.h"

Words tagWords(const std::string& origin) {
    return {"-metadata", "title=Valojuova",
            "-metadata", "creation_time=now",
            "-metadata", "comment=" + origin,
            "-metadata", "copyright=CC BY 4.0, https://creativecommons.org/licenses/by/4.0/"};
}

std::string chapters(double from, double seconds) {
    std::string text = ";FFMETADATA1\n";
    const auto entries = programme();
    const auto milliseconds = [&](const ProgrammeEntry& entry) {
        return std::lround(std::clamp(double(entry.begin) - from, 0.0, seconds) * 1000);
    };
    for (size_t i = 0; i + 1 < entries.size(); i++) {
        const long begin = milliseconds(entries[i]), end = milliseconds(entries[i + 1]);
        if (begin < end)
            text += formatted("[CHAPTER]\nTIMEBASE=1/1000\nSTART=%ld\nEND=%ld\ntitle=%s\n", begin, end,
                              entries[i].name);
    }
    return text;
}
