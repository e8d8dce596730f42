// The way in for the fuzzer's library, and for the replay.
#include "tests/fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    try {
        tryInput({reinterpret_cast<const char*>(bytes), size});
    } catch (const CleanExit& end) {
        // Only a start-up failure of the window or of a texture ends with 0.
        if (end.status != 1) abort();
    }
    return 0;
}
