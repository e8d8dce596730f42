#include "tools/capture/hash.h"

#include <xxhash.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include "render/screen.h"

namespace fs = std::filesystem;

namespace {

struct Hash {
    std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> state{XXH3_createState(), XXH3_freeState};

    Hash() { XXH3_128bits_reset(state.get()); }
    void add(const void* bytes, size_t count) { XXH3_128bits_update(state.get(), bytes, count); }
    std::string text() const {
        const XXH128_hash_t hash = XXH3_128bits_digest(state.get());
        char digits[40];
        snprintf(digits, sizeof digits, "%016llx%016llx", static_cast<unsigned long long>(hash.high64),
                 static_cast<unsigned long long>(hash.low64));
        return digits;
    }
};

bool addFile(const fs::path& path, Hash* hash) {
    FILE* file = fopen(path.c_str(), "rb");
    if (!file) return false;
    std::vector<char> part(1 << 20);
    while (const size_t count = fread(part.data(), 1, part.size(), file)) hash->add(part.data(), count);
    const bool whole = !ferror(file);
    fclose(file);
    return whole;
}

}  // namespace

std::string hashOfPicture(const Picture& picture) {
    constexpr uint32_t opaque = 0xff000000;  // the last byte's bits; GL leaves something in it
    std::array<uint32_t, screenWidth> row;
    Hash hash;
    for (int y = screenHeight - 1; y >= 0; y--) {
        memcpy(row.data(), picture.data() + y * sizeof row, sizeof row);
        for (uint32_t& pixel : row) pixel |= opaque;
        hash.add(row.data(), sizeof row);
    }
    return hash.text();
}

std::string hashOfFile(const std::string& path) {
    Hash hash;
    return addFile(path, &hash) ? hash.text() : "";
}

std::string hashOfFolder(const std::string& path) {
    std::vector<fs::path> files;
    std::error_code failed;
    const auto options = fs::directory_options::follow_directory_symlink;
    for (const auto& entry : fs::recursive_directory_iterator(path, options, failed)) {
        if (entry.is_regular_file() && !entry.path().filename().string().starts_with('.'))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    Hash hash;
    for (const fs::path& file : files) {
        const std::string name = fs::relative(file, path).string();
        hash.add(name.c_str(), name.size() + 1);
        addFile(file, &hash);
    }
    return hash.text();
}
