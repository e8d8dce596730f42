// Tries every file of a folder, in order, without the fuzzer: for the tests.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string>

#include "tests/scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size);

int main(int count, char** words) {
    if (count != 2) return 1;
    const std::set<std::filesystem::path> paths(std::filesystem::directory_iterator(words[1]), {});
    for (const auto& path : paths) {
        printf("%s\n", path.c_str());
        fflush(stdout);
        const std::string bytes = contentOf(path);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    // A replay of nothing would pass for good.
    return paths.empty() ? 1 : 0;
}
