// A file that the show loads, as it was at one moment: read once, whole, and decoded, or what is wrong with
// it.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "geometry/mesh.h"
#include "image/image.h"
#include "render/demo.h"
#include "script/resources.h"
#include "sound/decoder.h"
#include "tools/show_files.h"

constexpr int waveformColumns = 776;

struct ShowFile {
    FileName name;
    std::string problem;   // a line "PATH: what is wrong"; empty if the show can draw or play it rightly
    bool missing = false;  // that is what is wrong
    std::string hash;      // of its bytes

    Image picture{};  // whose pixels are these
    std::unique_ptr<uint8_t[]> pixels;
    MeshSet model;     // with expanded positions
    std::string text;  // of a shader
    std::unique_ptr<sound::Decoder> music;
    std::shared_ptr<const std::string> bytes;  // of the music
    std::string waveform;                      // of it, once it is measured
};

// This and the next may be called in any thread; they print nothing and end nothing.
ShowFile readShowFile(const FileName& name);

// The waveform of a music that was read, two bytes for each of waveformColumns: peak and loudness. Damage on
// the way is a problem. Gives up when `stop` is set.
ShowFile measureMusic(const FileName& name, std::shared_ptr<const std::string> bytes,
                      const std::atomic<bool>& stop);

// What was read into its row's place, by the thread that draws, between frames.
void putPicture(const TextureRow& row, const ShowFile& file);
// Takes the model.
void putModel(const MeshRow& row, ShowFile& file);
