// Loading what the show loads from files that were read once, by others, before or meanwhile: what the show
// could not draw or play is told by its file's name, and stands nobody in the way.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/startup.h"
#include "tools/loading/readers.h"

// A broken picture is a checkerboard, a broken model nothing, a broken program the fixed function; problems
// are noted, and told on standard error.
struct Loading : Loader {
    Readers readers;
    std::multimap<std::string, ShowFile> files;   // by path: read, and not yet in their places
    std::map<std::string, std::string> problems;  // by file: what is wrong with it, in one line or several
    // By file: the text that a program was built from, and the one that could not be.
    std::map<std::string, std::string> shadersInUse, brokenShaders;

    // Begins to read everything.
    explicit Loading(bool measureMusic);

    // That file, once it has been read.
    ShowFile file(const FileName& name);

    // Each waits for its files. What a key has already stays if they are broken.
    void load(const MeshRow& row) override;
    void load(const TextureRow& row) override;
    void load(const ShaderRow& row) override;

    // Between frames, while there are no effects: what the tables have now, and have no more.
    void loadNewRows();

    // Noted if there is none.
    std::unique_ptr<sound::Decoder> takeMusic();

    // Notes it and says it, unless that is what was said last.
    void tell(const std::string& file, const std::string& problem);
    // No row has it any more.
    void forget(const std::string& file);

private:
    // By key, the rest of the row that was loaded.
    std::map<std::string, std::string> meshes, textures, shaders;
    std::vector<int> freeRecords;  // of textures

    bool isGood(const ShowFile& file);
};

// For programs that draw the show as it is or not at all: every file of it, read once and in one state.
struct ReadShow {
    bool good = true;  // if not, standard error has a line for each file that is not
    std::string data;  // the hash of all but the music
    ShowFile music;
};
// A music that isn't needed may be missing or broken.
ReadShow readShow(bool needsMusic);
// Loads what was read before, without the loading screens, which take as long as all the rest where they are
// drawn in software. Ends the program with status 1 over a shader that does not compile.
void loadShow();
