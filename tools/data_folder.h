// Where the tools that are built here find the generator of what they show.
#pragma once

#include <string>
#include <vector>

// The generator's sources, if the data set of the working directory is the one that they make; else empty. As
// seen from the working directory.
std::string generatorSources();

// The command that makes what is stale of it.
std::vector<std::string> makeDataCommand();

// Runs that command, if there are sources, and waits for it. False if it failed, after what it has said.
bool makeStaleData();
