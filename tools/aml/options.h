// The command line of `aml`.
#pragma once

#include <string>
#include <vector>

#include "tools/aml/model.h"

struct AmlOptions {
    std::string command;             // "info", "import" or "export"
    std::vector<std::string> files;  // as many as the command takes, in the order they are written
    Placing placing;                 // of an import
};

// "--help" prints the usage and ends the process with status 0; what can't be understood ends it with a line
// on standard error and status 1.
AmlOptions parseAmlOptions(int argc, const char* const* argv);
