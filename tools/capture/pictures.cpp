#include "tools/capture/pictures.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>

#include "render/screen.h"
#include "tools/capture/drawing.h"
#include "tools/capture/hash.h"
#include "tools/capture/part.h"
#include "tools/capture/storyboard.h"
#include "tools/capture/whole_picture.h"
#include "tools/formatted.h"

namespace {

// The last per cent sign is the number's, others are a folder's own.
std::string nameOf(const CaptureOptions& options, int frame) {
    const size_t place = options.out.rfind('%');
    return options.out.substr(0, place) + formatted(&options.out[place], frame);
}

void fillImage(const Picture& picture, Image* image) {
    for (size_t i = 0; i < picture.size() / 4; i++) {
        for (int channel = 0; channel < 3; channel++)
            image->pixels[i * 3 + channel] = picture[i * 4 + 2 - channel];
    }
    flipImage(*image, 1, 0);
}

// Draws the frames and enters those that were written, also if it fails.
bool drawSome(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& frames,
              Progress& progress, Manifest* manifest) {
    Image image = createImage(screenWidth, screenHeight, 3);
    auto next = frames.begin();
    const auto write = [&](const Picture& picture) {
        fillImage(picture, &image);
        const std::string name = nameOf(options, *next);
        if (!writeWholePng(name.c_str(), image)) return false;
        manifest->frames.push_back({*next++, hashOfFile(name)});
        return true;
    };
    const bool drawn = drawFrames(show, frames, progress, write);
    delete[] image.pixels;
    return drawn;
}

}  // namespace

std::vector<int> missingPictures(const CaptureOptions& options, const std::vector<int>& frames,
                                 Manifest* manifest) {
    Manifest there;
    if (!options.resume || !readManifest(options.out, &there)) return frames;
    const std::string why = differenceOf(there, *manifest);
    if (!why.empty()) {
        tell(options.out + " is drawn again: it was drawn " + why);
        return frames;
    }
    std::set<int> whole;
    for (const DrawnFrame& frame : there.frames) {
        if (hashOfFile(nameOf(options, frame.number)) != frame.hash) continue;
        manifest->frames.push_back(frame);
        whole.insert(frame.number);
    }
    std::vector<int> missing;
    std::copy_if(frames.begin(), frames.end(), std::back_inserter(missing),
                 [&](int frame) { return !whole.contains(frame); });
    if (missing.size() < frames.size())
        tell(formatted("%zu of %zu pictures are there already", frames.size() - missing.size(),
                       frames.size()));
    return missing;
}

bool drawPictures(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& frames,
                  Manifest manifest) {
    std::error_code ignored;  // writing the first picture reports it
    std::filesystem::create_directories(std::filesystem::path(nameOf(options, frames.front())).parent_path(),
                                        ignored);
    Progress progress(int(frames.size()));
    const auto piece = std::ptrdiff_t{secondsOfPiece} * options.fps;
    bool drawn = true;
    for (auto next = frames.begin(); drawn && next != frames.end();) {
        const auto end = next + std::min(piece, frames.end() - next);
        drawn = drawSome(show, options, {next, end}, progress, &manifest);
        next = end;
        std::ranges::sort(manifest.frames, {}, &DrawnFrame::number);
        drawn &= !options.resume || manifest.frames.empty() || writeManifest(options.out, manifest);
    }
    return drawn;
}

bool drawStoryboard(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& all) {
    std::vector<int> frames;
    for (int i = 0; options.from + i * options.every < options.to; i++)
        frames.push_back(std::min(framesBefore(options.from + i * options.every, options.fps), all.back()));
    Progress progress(int(frames.size()));
    Storyboard storyboard(int(frames.size()));
    int next = 0;
    const auto add = [&](const Picture& picture) {
        storyboard.add(next, picture, show.milliseconds(frames[next]) * 0.001);
        next++;
        return true;
    };
    const bool drawn = drawFrames(show, frames, progress, add);
    return drawn && storyboard.save(options.storyboard.c_str());
}
