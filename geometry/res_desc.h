// Binary input streams: typed little-endian reads built on one raw read that each concrete stream supplies.
// Every resource file is little-endian, as is the machine: bytes are copied unchanged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

struct ResDesc {
    virtual ~ResDesc() = default;

    // `origin` is SEEK_SET, SEEK_CUR or SEEK_END. Failure is silent.
    virtual void seek(long offset, int origin) = 0;
    // 1 if all `size` bytes were read, 0 otherwise.
    virtual int read(void* buffer, size_t size) = 0;

    // Past the end these return 0, or the bytes that were left.
    virtual uint8_t readByte();
    virtual uint16_t readShort();
    virtual int32_t readInt();
    virtual float readFloat();
    virtual double readDouble();
};

// Owns its open file; a file that can't be opened ends the process with status 1 and a line that names it.
struct ResDescFile : ResDesc {
    FILE* file;

    explicit ResDescFile(const char* path);
    ~ResDescFile() override;
    ResDescFile& operator=(ResDescFile&&) = delete;

    void seek(long offset, int origin) override;
    int read(void* buffer, size_t size) override;

protected:
    explicit ResDescFile(FILE* file) : file(file) {}
};

// Over bytes that somebody else keeps.
struct ResDescBytes : ResDescFile {
    explicit ResDescBytes(std::string_view bytes);
};
