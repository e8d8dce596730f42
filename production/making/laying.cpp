#include "production/making/laying.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xxhash.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>
#include <set>
#include <utility>

#include "tools/process.h"
#include "tools/whole_file.h"

namespace fs = std::filesystem;

namespace {

constexpr int hashDigits = 16;

bool isSameFolder(int descriptor, const std::string& folder) {
    struct stat held, there;
    return fstat(descriptor, &held) == 0 && stat(folder.c_str(), &there) == 0 &&
           held.st_ino == there.st_ino && held.st_dev == there.st_dev;
}

// Another process that has a lock on the file: "lay (pid 12)".
std::string holderOf(int descriptor) {
    struct stat file;
    fstat(descriptor, &file);
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        int process = 0;
        unsigned long inode = 0;
        if (sscanf(line.c_str(), "%*d: FLOCK %*s %*s %d %*x:%*x:%lu", &process, &inode) != 2) continue;
        if (inode != file.st_ino || process == getpid()) continue;
        std::string name;
        std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
        return name + " (pid " + std::to_string(process) + ")";
    }
    return "another program";
}

std::optional<std::string> wholeFile(const fs::path& path) {
    FILE* file = fopen(path.c_str(), "rb");
    if (!file) return std::nullopt;
    std::string text;
    char block[65536];
    while (const size_t got = fread(block, 1, sizeof block, file)) text.append(block, got);
    const bool whole = !ferror(file);
    fclose(file);
    return whole ? std::optional(text) : std::nullopt;
}

std::string hashOf(const std::string& text) {
    char digits[hashDigits + 1];
    snprintf(digits, sizeof digits, "%016llx",
             static_cast<unsigned long long>(XXH3_64bits(text.data(), text.size())));
    return digits;
}

// Files with hashes of what was laid there. A file has two while it is being laid.
using List = std::set<std::pair<std::string, std::string>>;

List readList(const fs::path& path) {
    List list;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        if (line.find(' ') == hashDigits)
            list.emplace(line.substr(hashDigits + 1), line.substr(0, hashDigits));
    return list;
}

bool told(const fs::path& path, bool written) {
    if (!written) fprintf(stderr, "%s: can't be written: %s\n", path.c_str(), strerror(errno));
    return written;
}

bool writeList(const fs::path& path, const List& list) {
    std::string text;
    for (const auto& [file, hash] : list) text += hash + " " + file + "\n";
    return told(path, writeWholeFile(path, text));
}

}  // namespace

FolderLock::FolderLock(const std::string& folder, Use use) {
    const int operation = use == writing ? LOCK_EX : LOCK_SH;
    bool said = false;
    // Another folder may have come to its place while this one was waited for.
    do {
        release();
        descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (descriptor < 0) return;
        if (flock(descriptor, operation | LOCK_NB) == 0) continue;
        if (errno == EWOULDBLOCK && !std::exchange(said, true))
            fprintf(stderr, "%s: waiting for %s, which holds %s\n", program_invocation_short_name,
                    holderOf(descriptor).c_str(), folder.c_str());
        while (flock(descriptor, operation) != 0 && errno == EINTR) continue;
    } while (!isSameFolder(descriptor, folder));
}

// Also for those who have a copy of the descriptor.
void FolderLock::release() {
    if (descriptor < 0) return;
    flock(descriptor, LOCK_UN);
    close(std::exchange(descriptor, -1));
}

bool isAuthors(const fs::path& folder, const std::string& file) {
    const auto there = wholeFile(folder / file);
    return there ? !readList(folder / ".made").contains({file, hashOf(*there)}) : fs::exists(folder / file);
}

std::string keptLine(const fs::path& folder, const std::string& file) {
    return "kept " + (folder.filename() / file).string() + ", which is yours: remove it to have ours";
}

bool lay(const std::vector<Made>& made, const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    const FolderLock lock(folder, FolderLock::writing);
    const List before = readList(folder / ".made");
    List after = before;
    std::vector<std::string> differing;
    for (const auto& [path, file] : made) {
        const fs::path place = folder / file;
        fs::remove(unfinishedPath(place), error);  // of a run that was stopped
        const auto text = wholeFile(path), there = wholeFile(place);
        if (!text) {
            fprintf(stderr, "%s: can't be read\n", path.c_str());
            return false;
        }
        const std::string hash = hashOf(*text);
        const bool isOurs =
            there ? *there == *text || before.contains({file, hashOf(*there)}) : !fs::exists(place);
        if (!isOurs) {
            printf("%s\n", keptLine(folder, file).c_str());
            continue;
        }
        std::erase_if(after, [&name = file](const auto& entry) { return entry.first == name; });
        after.emplace(file, hash);
        if (there && *there == *text) continue;
        fs::create_directories(place.parent_path(), error);
        if (!told(place, writeUnfinished(place, *text))) return false;
        differing.push_back(file);
    }
    if (differing.empty() && after == before) return true;

    const Undisturbed undisturbed;
    List both = before;
    both.insert(after.begin(), after.end());
    if (!writeList(folder / ".made", both)) return false;
    for (const std::string& file : differing) {
        // It was saved there since it was looked at.
        if (isAuthors(folder, file)) {
            fs::remove(unfinishedPath(folder / file), error);
            printf("%s\n", keptLine(folder, file).c_str());
            continue;
        }
        if (!told(folder / file, moveIntoPlace(folder / file, true))) return false;
        printf("laid %s\n", file.c_str());
    }
    return writeList(folder / ".made", after);
}
