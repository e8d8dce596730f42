#include "tools/capture/soundtrack.h"

#include <sys/mman.h>

#include <cerrno>
#include <cstring>
#include <fstream>

#include "app/sound_music.h"
#include "sound/decoder.h"
#include "tools/capture/hash.h"

Soundtrack::Soundtrack() : path("/proc/self/fd/" + std::to_string(memfd_create("soundtrack", 0))) {
    std::ifstream saved(SoundMusic::path, std::ios::binary);
    if (!saved) problem = strerror(errno);
    std::ofstream(path, std::ios::binary) << saved.rdbuf();
    hash = hashOfFile(path);
    if (problem.empty() && !sound::Decoder::open(path.c_str()))
        problem = "not a Vorbis file that can be played";
}
