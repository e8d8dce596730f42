// Where the tools that are built here find the data set and the generator of it.
#pragma once

#include <string>
#include <vector>

#include "production/making/laying.h"

// The data set of the working directory, to be held while it is loaded: nobody lays anything there meanwhile,
// so that what is loaded is of one state. Where it must wait it says for whom.
inline FolderLock holdDataSet() {
    return {"data", FolderLock::reading};
}

// The generator's sources, if the data set of the working directory is the one that they make; else empty. As
// seen from the working directory.
std::string generatorSources();

// The command that makes what is stale of the build's target: "data" is that data set, "stems" those of its
// soundtrack, which then lie in the folder, whose name ends with a slash.
std::vector<std::string> makeCommand(const std::string& target);
std::string stemsFolder();

// Runs that command, if there are sources, and waits for it; a line says so where another build is under way.
// False if it failed, after what it has said.
bool makeStaleData();
