// Tries every file of a folder, in order, without the fuzzer: for the tests.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size);

int main(int count, char** words) {
    if (count != 2) return 1;
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(words[1])) paths.push_back(entry);
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths) {
        printf("%s\n", path.c_str());
        fflush(stdout);
        const std::string bytes = contentOf(path);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    // A replay of nothing would pass for good.
    return paths.empty() ? 1 : 0;
}
