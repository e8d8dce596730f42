#include "tools/capture/whole_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

bool writeWholePng(const char* path, const Image& image) {
    const std::filesystem::path place(path);
    const std::string unfinished =
        (place.parent_path() / ("unfinished-" + place.filename().string())).string();
    // The writer has told why if it did not return 0.
    const bool written = writePng(unfinished.c_str(), image.width, image.height, image.channels,
                                  image.bytesPerPixel, image.stride, image.pixels) == 0;
    if (written && rename(unfinished.c_str(), path) == 0) return true;
    if (written) fprintf(stderr, "capture: %s: %s\n", path, strerror(errno));
    unlink(unfinished.c_str());
    return false;
}
