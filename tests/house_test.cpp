// The house itself: what each folder may include.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "script/show_times.h"
#include "tests/scratch.h"
#include "tools/capture/frames.h"

namespace {

namespace fs = std::filesystem;

// For each folder, the other folders that its sources may include from; what these include comes with them.
const std::map<std::string, std::set<std::string>> below = {
    {"image", {}},
    {"geometry", {}},
    {"sound", {}},
    {"render", {"geometry", "image"}},
    {"effects", {"render", "geometry", "image"}},
    {"script", {"effects", "render", "geometry", "image"}},
    {"app", {"script", "effects", "render", "geometry", "image", "sound"}},
};

// The clock is the one part of app/ that the folders below it see.
bool mayInclude(const std::string& folder, const std::string& header) {
    const std::string from = header.substr(0, header.find('/'));
    return from == folder || below.at(folder).contains(from) ||
           (header == "app/clock.h" && folder == "render");
}

TEST(House, IncludesPointOneWay) {
    int seen = 0;
    for (const auto& [folder, allowed] : below) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
            std::ifstream file(entry.path());
            std::string line;
            const std::string opening = "#include \"";
            while (std::getline(file, line)) {
                if (!line.starts_with(opening)) continue;
                const std::string header = line.substr(opening.size(), line.rfind('"') - opening.size());
                EXPECT_TRUE(mayInclude(folder, header)) << entry.path() << " includes " << header;
                seen++;
            }
        }
    }
    EXPECT_GT(seen, 100);
}

// A kit that leaned on another could not be taken along alone.
TEST(House, KitsStandAlone) {
    for (const std::string kit : {"model", "picture", "sound"}) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator("production/kit/" + kit)) {
            std::ifstream file(entry.path());
            std::string line;
            while (std::getline(file, line)) {
                if (line.starts_with("#include \"production/")) {
                    EXPECT_TRUE(line.starts_with("#include \"production/kit/" + kit + "/"))
                        << entry.path() << ": " << line;
                }
            }
        }
    }
}

// A text can't include the header that has the show's times.
TEST(House, TextsKnowTheShowsTimes) {
    std::ostringstream end;
    end << "second to " << showtime::end.seconds() << " s, and ends";
    const std::string last = std::to_string(framesBefore(showtime::end.seconds(), 60) - 1);
    const std::pair<const char*, std::string> rows[] = {
        {"README.md", "host2 6000-" + last + " &"},
        {"README.md", "? first + 599 : " + last + ")"},
        {"README.md", std::to_string(showtime::beatsPerMinute) + " beats a minute"},
        {"tools/install/valojuova.6", end.str()},
    };
    for (const auto& [file, words] : rows) {
        EXPECT_NE(contentOf(file).find(words), std::string::npos)
            << file << " does not say \"" << words << '"';
    }
}

}  // namespace
