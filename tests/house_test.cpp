// The house itself: what each folder may include.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

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
    // A kit that leaned on another could not be taken along alone; what all of them share lies beside them.
    {"production/kit/model", {"production/kit", "geometry"}},
    {"production/kit/picture", {"production/kit", "image"}},
    {"production/kit/sound", {"production/kit"}},
};

// What a source includes of the tree's own.
std::vector<std::string> includesOf(const fs::path& path) {
    std::vector<std::string> headers;
    std::ifstream file(path);
    const std::string opening = "#include \"";
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(opening))
            headers.push_back(line.substr(opening.size(), line.rfind('"') - opening.size()));
    return headers;
}

TEST(House, IncludesPointOneWay) {
    int seen = 0;
    for (const auto& [folder, allowed] : below) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
            for (const std::string& header : includesOf(entry.path())) {
                const std::string from = fs::path(header).parent_path();
                // The clock is the one part of app/ that the folders below it see.
                const bool isClock = header == "app/clock.h" && folder == "render";
                EXPECT_TRUE(from == folder || allowed.contains(from) || isClock)
                    << entry.path() << " includes " << header;
                seen++;
            }
        }
    }
    EXPECT_GT(seen, 100);
}

// The compiler then sees each of these headers by itself; tests/headers has the others.
TEST(House, SourcesIncludeTheirOwnHeaderFirst) {
    int seen = 0;
    for (const std::string folder : {"app", "bench", "effects", "geometry", "image", "production", "render",
                                     "script", "sound", "tests", "tools"}) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
            fs::path header = entry.path();
            header.replace_extension(".h");
            if (entry.path().extension() != ".cpp" || !fs::exists(header)) continue;
            const std::string text = contentOf(entry.path());
            const size_t first = text.find("#include ");
            EXPECT_EQ(text.compare(first, header.string().size() + 11, "#include \"" + header.string() + '"'),
                      0)
                << entry.path();
            seen++;
        }
    }
    EXPECT_GT(seen, 100);
}

// In single precision these have another last bit from one release of the C library to the next, and so would
// pictures and music: their kits have their own.
TEST(House, DataTakesNoAngleFromTheLibrary) {
    for (const char* folder :
         {"production/pictures", "production/kit/picture", "production/kit/sound", "production/shared"})
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
            for (const char* call : {"std::atan", "std::asin", "std::acos", "std::tan"})
                EXPECT_EQ(contentOf(entry.path()).find(call), std::string::npos)
                    << entry.path() << ": " << call;
}

int effectsWritten() {
    int count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator("effects"))
        count += entry.path().extension() == ".h" &&
                 contentOf(entry.path()).find(" : EffectBase {") != std::string::npos;
    return count;
}

// A text can't include the header that has the show's times, and no table has all effects: scenes leave some
// out.
TEST(House, TextsKnowTheShowsTimesAndNumbers) {
    std::ostringstream end;
    end << "second to " << showtime::end.seconds() << " s, and ends";
    const std::string last = std::to_string(framesBefore(showtime::end.seconds(), 60) - 1);
    const std::pair<const char*, std::string> rows[] = {
        {"README.md", "host2 6000-" + last + " &"},
        {"README.md", "? first + 599 : " + last + ")"},
        {"README.md", std::to_string(showtime::beatsPerMinute) + " beats a minute"},
        {"tools/install/valojuova.6", end.str()},
        {"production/pictures/credits.cpp", "effects = " + std::to_string(effectsWritten()) + ";"},
    };
    for (const auto& [file, words] : rows) {
        EXPECT_NE(contentOf(file).find(words), std::string::npos)
            << file << " does not say \"" << words << '"';
    }
}

}  // namespace
