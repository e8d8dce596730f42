// Loading what the show loads from files that were read once, by others, before or meanwhile: what the show
// could not draw or play is told by its file's name, and stands nobody in the way.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/startup.h"
#include "tools/loading/readers.h"

struct Loading {
    Readers readers;
    std::map<std::string, ShowFile> files;        // by path: read, and not yet in their places
    std::map<std::string, std::string> problems;  // by file: what is wrong with it, in one line or several
    // By file: the text that a program was built from, and the one that could not be.
    std::map<std::string, std::string> shadersInUse, brokenShaders;

    // Begins to read everything.
    explicit Loading(bool measureMusic);

    // Waits until all has been read. What is wrong, a line each.
    std::vector<std::string> allProblems();

    // For initialiseDemo; each stage waits for its files. Problems are noted, and told on standard error. A
    // broken picture is a checkerboard, a broken model nothing, a broken program the fixed function.
    Stages stages();

    // Noted if there is none.
    std::unique_ptr<sound::Decoder> takeMusic();

private:
    ShowFile file(const std::string& path);
    bool isGood(const ShowFile& file);
    void loadPicture(const TextureRow& row);
    void loadMeshes();
    void loadTextures();
    void loadShaders();
};

// For programs that draw the show as it is or not at all. Reads every file of it; what is wrong is returned,
// a line each, and told on standard error. loadShow then loads what was read, and ends the program with
// status 1 over a shader that does not compile; without this before, it loads as the show does.
std::vector<std::string> readShow();
void loadShow();
