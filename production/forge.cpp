// Makes the data set, or the icons: every product whose sources have changed since it was last made, two at a
// time or more. The folder's .made remembers the fingerprint of the sources that each file was made from.
#include "production/forge.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "production/music/desk.h"

namespace fs = std::filesystem;

namespace {

// FNV-1a, 64 bits (Fowler, Noll, Vo): enough to tell one version of a source from another.
uint64_t fingerprint(const std::string& text, uint64_t hash) {
    for (unsigned char byte : text) hash = (hash ^ byte) * 0x100000001b3u;
    return hash;
}

std::string wholeFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Of every file below production/ whose path begins with the product's source or kit, and of the show's
// times, which the music keeps.
uint64_t sourceFingerprint(const Product& product) {
    const fs::path production = PRODUCTION_DIR;
    const std::string source = (production / product.source).string();
    const std::string kit = product.kit ? (production / product.kit).string() : source;
    std::vector<fs::path> sources;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(production)) {
        const std::string path = entry.path().string();
        if (entry.is_regular_file() && (path.starts_with(source) || path.starts_with(kit)))
            sources.push_back(path);
    }
    std::sort(sources.begin(), sources.end());
    sources.push_back(production.parent_path() / "script/show_times.h");
    uint64_t hash = 0xcbf29ce484222325u;
    for (const fs::path& path : sources) hash = fingerprint(wholeFile(path), hash);
    return hash;
}

std::map<std::string, uint64_t> readMade(const fs::path& path) {
    std::map<std::string, uint64_t> made;
    std::ifstream file(path);
    uint64_t hash = 0;
    std::string name;
    while (file >> hash && std::getline(file >> std::ws, name)) made[name] = hash;
    return made;
}

void writeMade(const fs::path& path, const std::map<std::string, uint64_t>& made) {
    std::ofstream file(path);
    for (const auto& [name, hash] : made) file << hash << ' ' << name << '\n';
}

// Written beside its place and moved there when whole, so that a run that is stopped leaves no half file.
void makeWhole(const Product& product, const fs::path& path) {
    fs::create_directories(path.parent_path());
    const fs::path unfinished = path.parent_path() / ("unfinished-" + path.filename().string());
    product.make(unfinished.c_str());
    fs::rename(unfinished, path);
}

void makeWhatChanged(const std::vector<const std::vector<Product>*>& tables, const fs::path& folder) {
    fs::create_directories(folder);
    std::map<std::string, uint64_t> made = readMade(folder / ".made");

    std::vector<Product> work;
    for (const auto* table : tables) {
        for (const Product& product : *table) {
            const auto known = made.find(product.file);
            const bool fresh = known != made.end() && known->second == sourceFingerprint(product);
            if (!fresh || !fs::exists(folder / product.file)) work.push_back(product);
        }
    }

    std::atomic<size_t> next = 0;
    std::mutex telling;
    auto worker = [&] {
        for (size_t i = next++; i < work.size(); i = next++) {
            makeWhole(work[i], folder / work[i].file);
            const std::lock_guard<std::mutex> lock(telling);
            made[work[i].file] = sourceFingerprint(work[i]);
            writeMade(folder / ".made", made);
            printf("made %s\n", work[i].file);
            fflush(stdout);
        }
    };
    std::vector<std::thread> others;
    for (unsigned i = 1; i < std::thread::hardware_concurrency(); i++) others.emplace_back(worker);
    worker();
    for (std::thread& other : others) other.join();
}

}  // namespace

int main(int count, char** words) {
    const std::vector<std::string> desk(words + 1, words + count);
    if (isForDesk(desk)) return runDesk(desk);
    const bool icons = count == 3 && std::string(words[1]) == "--icons";
    if (!icons && (count != 2 || words[1][0] == '-')) {
        fprintf(stderr, "usage: forge [--icons] FOLDER\n%s", deskUsage);
        return 1;
    }
    // The music takes longest, so it goes first and the pictures fill the other cores.
    if (icons)
        makeWhatChanged({&iconProducts}, words[2]);
    else
        makeWhatChanged({&musicProducts, &pictureProducts, &modelProducts, &shaderProducts}, words[1]);
    return 0;
}
