#include "tools/capture/hash.h"

#include <elf.h>
#include <link.h>
#include <xxhash.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>

#include "render/screen.h"
#include "tools/formatted.h"

namespace {

std::string digitsOf(std::span<const uint8_t> bytes) {
    std::string digits;
    for (uint8_t byte : bytes) digits += formatted("%02x", byte);
    return digits;
}

struct Hash {
    std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> state{XXH3_createState(), XXH3_freeState};

    Hash() { XXH3_128bits_reset(state.get()); }
    void add(const void* bytes, size_t count) { XXH3_128bits_update(state.get(), bytes, count); }
    std::string text() const {
        XXH128_canonical_t bytes;
        XXH128_canonicalFromHash(&bytes, XXH3_128bits_digest(state.get()));
        return digitsOf(bytes.digest);
    }
};

// Notes are a header, a name and what they say, each from a whole word on.
std::string buildIdIn(std::span<const uint8_t> notes) {
    const auto padded = [](size_t size) { return (size + 3) & ~size_t{3}; };
    ElfW(Nhdr) note;
    while (notes.size() >= sizeof note) {
        memcpy(&note, notes.data(), sizeof note);
        const size_t start = sizeof note + padded(note.n_namesz), end = start + padded(note.n_descsz);
        if (end > notes.size()) break;
        if (note.n_type == NT_GNU_BUILD_ID && note.n_namesz == 4 &&
            memcmp(&notes[sizeof note], "GNU", 4) == 0)
            return digitsOf(notes.subspan(start, note.n_descsz));
        notes = notes.subspan(end);
    }
    return "";
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
    const std::unique_ptr<FILE, int (*)(FILE*)> file(fopen(path.c_str(), "rb"), fclose);
    if (!file) return "";
    Hash hash;
    std::vector<char> block(1 << 20);
    while (const size_t count = fread(block.data(), 1, block.size(), file.get()))
        hash.add(block.data(), count);
    return ferror(file.get()) ? "" : hash.text();
}

std::string hashOfText(const std::string& text) {
    Hash hash;
    hash.add(text.data(), text.size());
    return hash.text();
}

std::string hashOfProgram() {
    std::string digits;
    dl_iterate_phdr(
        [](dl_phdr_info* program, size_t, void* found) {
            for (int i = 0; i < program->dlpi_phnum; i++) {
                const ElfW(Phdr)& segment = program->dlpi_phdr[i];
                const auto* notes = reinterpret_cast<const uint8_t*>(program->dlpi_addr + segment.p_vaddr);
                if (segment.p_type == PT_NOTE)
                    *static_cast<std::string*>(found) += buildIdIn({notes, segment.p_memsz});
            }
            return 1;  // it is the first, and libraries follow
        },
        &digits);
    return digits;
}
