// The soundtrack: a Vorbis file played from several places and at two rates of the mixer.
#include <ogg/ogg.h>

#include "sound/decoder.h"
#include "tests/fuzz/checksums.h"
#include "tests/fuzz/target.h"

// Opening a broken chain loses a few bytes in the library itself, once in the life of the program. Whoever
// forgot ov_clear would still be found: most of a file's memory is libvorbis' and libogg's.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libvorbisfile.so\n";
}

void tryInput(std::string_view input) {
    using namespace std::chrono_literals;
    const MemoryFile file(input);
    const auto decoder = sound::Decoder::open(file.path());
    if (!decoder) return;
    const struct {
        sound::Time from;
        int rate;  // Hz
    } plays[] = {{0ms, 44100}, {60ms, 48000}, {1h, 44100}, {10ms, 44100}};
    for (const auto& play : plays) {
        decoder->seek(play.from, play.rate);
        for (int i = 0; i < 8; i++) {
            constexpr int frames = 600;
            float stereo[2 * frames];
            decoder->read(stereo, frames);
            readAll(stereo, sizeof stereo);
        }
    }
}

// Pages: a header of 27 bytes, the lengths of its segments, the segments.
void mendChecksums(uint8_t* bytes, size_t size) {
    constexpr size_t shortest = 27;
    for (size_t at = 0; at + shortest <= size;) {
        const std::string_view rest(reinterpret_cast<char*>(bytes) + at, size - at);
        if (!rest.starts_with("OggS")) {
            at++;
            continue;
        }
        const size_t segments = bytes[at + shortest - 1], header = shortest + segments;
        if (header > rest.size()) return;
        size_t body = 0;
        for (size_t i = 0; i < segments; i++) body += bytes[at + shortest + i];
        if (body > rest.size() - header) return;
        ogg_page page{bytes + at, long(header), bytes + at + header, long(body)};
        ogg_page_checksum_set(&page);
        at += header + body;
    }
}
