#include "tools/capture/pictures.h"

#include <png.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "render/screen.h"
#include "tools/capture/drawing.h"
#include "tools/capture/storyboard.h"
#include "tools/capture/whole_file.h"

namespace {

std::string nameOf(const CaptureOptions& options, int frame) {
    std::vector<char> name(options.out.size() + 16);
    snprintf(name.data(), name.size(), options.out.c_str(), frame);
    return name.data();
}

bool isWholePicture(const std::string& path) {
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&png, path.c_str())) return false;
    png.format = PNG_FORMAT_RGB;
    std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(png));
    const bool read =
        png_image_finish_read(&png, nullptr, pixels.data(), 0, nullptr) && !PNG_IMAGE_FAILED(png);
    return read && png.width == screenWidth && png.height == screenHeight;
}

void fillImage(const Picture& picture, Image* image) {
    for (size_t i = 0; i < picture.size() / 4; i++) {
        for (int channel = 0; channel < 3; channel++)
            image->pixels[i * 3 + channel] = picture[i * 4 + 2 - channel];
    }
    flipImage(*image, 1, 0);
}

}  // namespace

bool drawPictures(const CaptureOptions& options, const std::vector<int>& all) {
    std::vector<int> frames;
    for (int frame : all) {
        if (!options.resume || !isWholePicture(nameOf(options, frame))) frames.push_back(frame);
    }
    if (frames.size() < all.size())
        fprintf(stderr, "capture: %zu of %zu pictures are there already\n", all.size() - frames.size(),
                all.size());
    if (frames.empty()) return true;
    std::error_code ignored;  // writing the first picture reports it
    std::filesystem::create_directories(std::filesystem::path(nameOf(options, frames.front())).parent_path(),
                                        ignored);
    SteppedShow show(options.fps, options.samples);
    Progress progress(int(frames.size()));
    Image image = createImage(screenWidth, screenHeight, 3);
    size_t next = 0;
    const bool done = drawFrames(show, frames, progress, [&](const Picture& picture) {
        fillImage(picture, &image);
        return writeWholePng(nameOf(options, frames[next++]).c_str(), image);
    });
    delete[] image.pixels;
    return done;
}

bool drawStoryboard(const CaptureOptions& options, const std::vector<int>& all) {
    std::vector<int> frames;
    for (int i = 0; options.from + i * options.every < options.to; i++)
        frames.push_back(std::min(framesBefore(options.from + i * options.every, options.fps), all.back()));
    SteppedShow show(options.fps, options.samples);
    Progress progress(int(frames.size()));
    Storyboard storyboard(int(frames.size()));
    int next = 0;
    return drawFrames(show, frames, progress,
                      [&](const Picture& picture) {
                          storyboard.add(next, picture, show.milliseconds(frames[next]) * 0.001);
                          next++;
                          return true;
                      }) &&
           storyboard.save(options.storyboard.c_str());
}
