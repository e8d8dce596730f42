// The program's calls of the show's code: the linker leads them here, and they go on to the library in force
// or, as long as there is none, to what is linked.
#include "tools/rehearse/live/code.h"

// The names that the linker makes up for what it was told to wrap.
#define CALL(result, name, symbol, parameters, arguments)                         \
    result linked_##name parameters __asm__("__real_" symbol);                    \
    result called_##name parameters __asm__("__wrap_" symbol);                    \
    result called_##name parameters {                                             \
        return loadedCode ? loadedCode->name arguments : linked_##name arguments; \
    }

CALLS_OF_SHOW
