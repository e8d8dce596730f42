// What was saved is loaded into its own place while the show runs: a program, a texture's record, a mesh
// set's key, the music. A file that is broken changes nothing and is told until it is mended.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tools/rehearse/check.h"
#include "tools/rehearse/program_build.h"
#include "tools/rehearse/transport.h"

struct ShaderRow;

struct Reload {
    Transport* transport;
    // A folder such as production/: its shader sources are loaded as well, and copied below data/ when they
    // are good. None if empty.
    std::string sources;

    std::map<std::string, std::string> problems;  // by file: what is wrong with it, in one line or several
    std::string waveform;                         // of the music, as a check prints it
    std::vector<std::string> news;                // lines, for whoever takes them

    // After everything was loaded.
    Reload(Transport* transport, const std::string& sources);

    // Any path; what it is the file of is loaded soon.
    void saved(const std::string& path);
    void gone(const std::string& path);
    void everything();

    // The music that plays already: finds its waveform, and what is wrong with it.
    void measureMusic();

    // At the start of a frame, when nothing is being drawn: puts what is ready into its place. True if the
    // picture may be another one now.
    bool apply();
    // Nothing is under way.
    bool idle() const { return waiting.empty() && checks.empty() && savedShaders.empty(); }

    std::deque<std::string> waiting;  // to be checked
    std::vector<std::unique_ptr<Check>> checks;
    std::set<std::string> savedShaders;
    std::map<std::string, std::string> loadedShaders;  // by file below data/: the text in use
    std::map<std::string, std::string> brokenShaders;  // by file: the text that is not, yet
    std::map<std::string, double> missing;             // by file: since when, seconds

    bool measuring = false;

    void startChecks();
    bool finishChecks();
    bool load(const Check& check, const std::string& output);
    bool loadPicture(const Check& check);
    bool loadModel(const Check& check);
    bool loadMusic(const Check& check, const std::string& columns);
    bool loadShaders();
    bool loadProgram(const ShaderRow& row, const ShaderText& saved, std::string* problem);
    bool isShader(const std::string& path) const;
    void lookForMissing();
    void tell(const std::string& file, const std::string& problem);
    void mend(const std::string& file);
};
