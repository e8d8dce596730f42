// The one thing of the library that is looked up by its name.
#include "interface.h"
#include "script/run_up.h"
#include "tools/rehearse/live/code.h"

#define CALL(result, name, symbol, parameters, arguments) name,
extern "C" const ShowCode showCode = {SHOW_INTERFACE, gridOfBeats, &frame, CALLS_OF_SHOW};
