#include "geometry/res_desc.h"

#include <cstdlib>

namespace {

template <typename T>
T readValue(ResDesc& stream) {
    T value{};
    stream.read(&value, sizeof value);
    return value;
}

}  // namespace

uint8_t ResDesc::readByte() {
    return readValue<uint8_t>(*this);
}
uint16_t ResDesc::readShort() {
    return readValue<uint16_t>(*this);
}
int32_t ResDesc::readInt() {
    return readValue<int32_t>(*this);
}
float ResDesc::readFloat() {
    return readValue<float>(*this);
}
double ResDesc::readDouble() {
    return readValue<double>(*this);
}

ResDescFile::ResDescFile(const char* path) : file(fopen(path, "rb")) {
    if (!file) {
        fprintf(stderr, "File %s not found!\n", path);
        std::exit(1);
    }
}

ResDescFile::~ResDescFile() {
    fclose(file);
}

void ResDescFile::seek(long offset, int origin) {
    fseek(file, offset, origin);
}

int ResDescFile::read(void* buffer, size_t size) {
    return int(fread(buffer, size, 1, file));
}

// It only reads them.
ResDescBytes::ResDescBytes(std::string_view bytes)
    : ResDescFile(fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb")) {}
