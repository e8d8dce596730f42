// Loading what the show loads, but putting up with what is broken: a rehearsal begins with whatever there is.
#pragma once

#include <map>
#include <string>

#include "app/startup.h"
#include "render/demo.h"
#include "script/resources.h"

// The loading screen's picture, which is in no table, as if it were.
constexpr TextureRow loadingRow = {loadingPicture, "loading",          GL_REPEAT,
                                   GL_REPEAT,      loadingPictureSize, loadingPictureSize};

// What is wrong with the files that the show reads, by file: pictures and models now, shaders once the stages
// below have run.
std::map<std::string, std::string>& brokenFiles();

// Before anything is loaded: tries every picture and model.
void lookForBrokenFiles();

// Afterwards: stages for initialiseDemo that load those that are good. A broken picture is a checkerboard, a
// broken model nothing, a broken program the fixed function.
Stages patientStages();
