// For formats whose readers drop what has a wrong checksum: inputs change, then their checksums follow, or
// hardly any would get past them.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" size_t LLVMFuzzerMutate(uint8_t* bytes, size_t size, size_t mostSize);

void mendChecksums(uint8_t* bytes, size_t size);
