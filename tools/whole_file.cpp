#include "tools/whole_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

std::string unfinishedPath(const std::string& path) {
    const std::filesystem::path place(path);
    return place.parent_path() / ("unfinished-" + place.filename().string());
}

bool writeUnfinished(const std::string& path, const std::string& content) {
    FILE* file = fopen(unfinishedPath(path).c_str(), "wb");
    if (!file) return false;
    struct stat before;
    if (stat(path.c_str(), &before) == 0) fchmod(fileno(file), before.st_mode);
    const bool whole = fwrite(content.data(), 1, content.size(), file) == content.size();
    return fclose(file) == 0 && whole;
}

bool moveIntoPlace(const std::string& path, bool written) {
    const std::string unfinished = unfinishedPath(path);
    if (written && rename(unfinished.c_str(), path.c_str()) == 0) return true;
    const int error = errno;
    unlink(unfinished.c_str());
    errno = error;
    return false;
}

bool putInPlace(const std::string& path, bool written, const char* why) {
    if (moveIntoPlace(path, written)) return true;
    fprintf(stderr, "%s: %s was not written: %s\n", program_invocation_short_name, path.c_str(),
            errno ? strerror(errno) : why);
    return false;
}

bool writeWholeFile(const std::string& path, const std::string& content) {
    return moveIntoPlace(path, writeUnfinished(path, content));
}
