// Each loader against the bare library call on the same file.
#include <algorithm>
#include <vector>

#include "bench/bare.h"
#include "bench/bench.h"
#include "geometry/aml.h"
#include "image/image.h"
#include "sound/decoder.h"

namespace {

constexpr int runs = 9;
constexpr double goal = 1.1;
// A model is a hundredth of a millisecond, of which half is spent on trying what was read.
constexpr double modelGoal = 2;
constexpr char music[] = "data/KVX - Ondrevane2.ogg";

void loadPicture(const char* path) {
    Image image;
    if (loadImage(path, &image, 0) == 0) delete[] image.pixels;
}

void loadModel(const char* path) {
    MeshSet set;
    ResDescFile file(path);
    loadAml(set, file, path);
}

void decodeMusic(long frames) {
    constexpr int blockFrames = 4096;
    const auto decoder = sound::Decoder::open(music);
    decoder->seek({}, 44100);
    std::vector<float> block(2 * blockFrames);
    for (long done = 0; done < frames; done += blockFrames) decoder->read(block.data(), blockFrames);
}

// `count` times each, in turns, so that both meet the same weather.
Figure compare(const char* name, int count, double goal, const std::function<void()>& ours,
               const std::function<void()>& bare) {
    double best[2] = {1e9, 1e9};
    const std::function<void()>* loads[2] = {&ours, &bare};
    for (int i = 0; i < 2 * runs; i++) {
        const double seconds = bestSeconds(1, [&] {
            for (int k = 0; k < count; k++) (*loads[i % 2])();
        });
        best[i % 2] = std::min(best[i % 2], seconds);
    }
    return {name, best[0] / count * 1000, "ms", best[1] / count * 1000, Goal::ratioAtMost, goal};
}

}  // namespace

Figures benchLoaders(const std::string&) {
    const long frames = bareVorbis(music);
    return {
        compare(
            "PNG, shiptex", 3, goal, [] { loadPicture("data/shiptex.png"); },
            [] { barePng("data/shiptex.png"); }),
        compare(
            "JPEG, start", 3, goal, [] { loadPicture("data/start.jpg"); },
            [] { bareJpeg("data/start.jpg"); }),
        compare(
            "AML, ship", 20, modelGoal, [] { loadModel("data/ship.AML"); },
            [] { bareFile("data/ship.AML"); }),
        compare(
            "Vorbis, the soundtrack", 1, goal, [&] { decodeMusic(frames); }, [] { bareVorbis(music); }),
    };
}
