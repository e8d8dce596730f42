#include "tools/capture/soundtrack.h"

#include <sys/mman.h>

#include <fstream>

Soundtrack::Soundtrack(const ShowFile& music)
    : path("/proc/self/fd/" + std::to_string(memfd_create("soundtrack", 0))),
      hash(music.hash),
      problem(music.problem) {
    if (music.bytes) std::ofstream(path, std::ios::binary) << *music.bytes;
}
