// What was saved is loaded into its own place while the show runs: a program, a texture's record, a mesh
// set's key, the music. A file that is broken changes nothing and is told until it is mended.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tools/loading/loading.h"
#include "tools/loading/program_build.h"
#include "tools/rehearse/transport.h"

struct ShaderHalf;

// In the generator's folder the source of a shader below data/; empty if there is none.
std::string sourceOf(const std::string& sources, const std::string& file);

struct Reload {
    Transport* transport;
    Loading& loading;  // whose readers, problems and texts of shaders are taken over
    // A folder such as production/: its shader sources are loaded as well, and copied below data/ when they
    // are good. None if empty.
    std::string sources;

    std::string waveform;           // of the music, once it is measured
    SoundFile track;                // which is this
    std::vector<std::string> news;  // lines, for whoever takes them

    // After everything was loaded.
    Reload(Transport* transport, Loading& loading, const std::string& sources);

    // Any path; what it is the file of is loaded soon.
    void saved(const std::string& path);
    // A file or a folder.
    void gone(const std::string& path);
    void everything();
    // Loads what the show's tables have now and watches for its files, for no others.
    void takeNewRows();

    // At the start of a frame, when nothing is being drawn: puts what is ready into its place. True if the
    // picture may be another one now; what effects carry has to be restored before it is drawn.
    bool apply();
    // Nothing is under way.
    bool idle() const { return loading.readers.idle(); }

    std::map<std::string, FileKind> known;            // all that is watched for, by path
    std::map<std::string, double> missing;            // by file: since when, seconds
    std::chrono::steady_clock::time_point waitUntil;  // for what was saved last
    std::unique_ptr<sound::Decoder> savedMusic;       // that is being measured

    void knowFiles();
    bool load(ShowFile& file);
    bool told(const ShowFile& file);
    void loadMusic(ShowFile& file);
    bool loadShader(const ShaderText& saved);
    ShaderHalf halfOf(const ShaderRow& row, const char* ending, const ShaderText& saved) const;
    bool isWanted(const ShaderHalf& half, const ShaderText& saved);
    bool loadProgram(const ShaderRow& row, const ShaderText& saved, std::string* problem);
    void lookForMissing();
    void mend(const std::string& file);
};
