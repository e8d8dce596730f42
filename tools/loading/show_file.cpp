#include "tools/loading/show_file.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <new>

#include "geometry/aml.h"
#include "image/whole_file.h"
#include "render/textures.h"
#include "script/timeline.h"
#include "tools/capture/hash.h"

namespace fs = std::filesystem;

namespace {

constexpr uintmax_t largestFile = 32 << 20;  // bytes: several times what any file of the show has
constexpr int measuredRate = 44100;          // Hz

bool isPng(const std::string& path) {
    return path.ends_with("png") || path.ends_with("PNG");
}

// What of the picture the show would take for something else, or turn down without its name; empty if
// nothing.
std::string objection(const Image& image, const std::string& path, const std::string& bytes) {
    constexpr char wanted[] = ", where the show takes RGB or RGBA of 8 bits";
    constexpr size_t pngColourType = 25;  // its place in every PNG file
    std::string what;
    if (!isPng(path) && image.channels == 4)
        what = "CMYK colours";
    else if (isPng(path) && bytes[pngColourType] == 3)
        what = "a palette";
    else if (image.channels < 3)
        what = "shades of grey";
    else if (!isTextureImage(image))
        what = "16 bits a channel";
    return what.empty() ? "" : "has " + what + wanted;
}

// These return what is wrong; empty if nothing is.
std::string readPicture(ShowFile* file, const std::string& bytes) {
    const std::string& path = file->name.path;
    std::string problem;
    const auto image = isPng(path) ? readPng(bytes, &problem) : readJpeg(bytes, &problem);
    if (!image) return problem;
    file->picture = *image;
    file->pixels.reset(image->pixels);
    return objection(*image, path, bytes);
}

std::string readModel(ShowFile* file, const std::string& bytes) {
    std::string problem;
    auto set = readAml(bytes, &problem);
    if (!set) return problem;
    for (Mesh& mesh : *set) {
        if (!mesh.canExpandPositions()) return "the first attribute is not the index of a position";
        mesh.expandPositions(file->name.path.c_str());
    }
    file->model = std::move(*set);
    return "";
}

// The last page of a whole file says that it is the last.
bool isWhole(const std::string& bytes) {
    constexpr char lastPage = 4;
    const size_t page = bytes.rfind("OggS");
    return page != std::string::npos && bytes.size() - page > 5 && (bytes[page + 5] & lastPage);
}

std::string readMusic(ShowFile* file, std::string bytes) {
    file->bytes = std::make_shared<const std::string>(std::move(bytes));
    file->music = sound::Decoder::open(file->bytes);
    if (!file->music) return "no Ogg Vorbis file that can be played";
    return isWhole(*file->bytes) ? "" : "the file ends too early";
}

std::string readContent(ShowFile* file) {
    const std::string& path = file->name.path;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    // A pipe in its place would be waited for.
    if (fs::exists(status) && !fs::is_regular_file(status)) return "is not a file";
    if (fs::file_size(path, error) > largestFile && !error) return "is larger than any file of the show";
    errno = 0;
    auto bytes = readWholeFile(path.c_str());
    if (!bytes) {
        file->missing = errno == ENOENT;
        return strerror(errno);
    }
    file->hash = hashOfText(*bytes);
    if (file->name.kind == FileKind::picture) return readPicture(file, *bytes);
    if (file->name.kind == FileKind::model) return readModel(file, *bytes);
    if (file->name.kind == FileKind::music) return readMusic(file, std::move(*bytes));
    file->text = std::move(*bytes);
    return "";
}

struct Column {
    float peak = 0;
    double squares = 0;
    long samples = 0;
};

std::string waveformOf(const std::vector<Column>& columns) {
    std::string waveform;
    for (const Column& column : columns) {
        const double loudness = std::sqrt(column.squares / double(std::max(column.samples, 1L)));
        waveform += char(std::lround(std::min(column.peak, 1.0f) * 255));
        waveform += char(std::lround(std::min(loudness, 1.0) * 255));
    }
    return waveform;
}

}  // namespace

ShowFile readShowFile(const FileName& name) {
    ShowFile file;
    file.name = name;
    std::string problem;
    try {
        problem = readContent(&file);
    } catch (const std::bad_alloc&) {
        problem = "not enough memory";
    }
    if (!problem.empty()) file.problem = name.path + ": " + problem;
    return file;
}

ShowFile measureMusic(const FileName& name, std::shared_ptr<const std::string> bytes,
                      const std::atomic<bool>& stop) {
    constexpr int blockFrames = 4096;
    ShowFile measured;
    measured.name = name;
    measured.bytes = bytes;
    const auto decoder = sound::Decoder::open(std::move(bytes));
    if (!decoder) return measured;
    decoder->seek({}, measuredRate);
    std::vector<Column> columns(waveformColumns);
    const double frames = double(programme().back().begin) * measuredRate;
    float stereo[2 * blockFrames];
    for (int first = 0; first < frames && !stop; first += blockFrames) {
        decoder->read(stereo, blockFrames);
        for (int i = 0; i < blockFrames; i++) {
            const int at = int((first + i) / frames * waveformColumns);
            if (at >= waveformColumns) break;
            for (const float sample : {stereo[2 * i], stereo[2 * i + 1]}) {
                columns[at].peak = std::max(columns[at].peak, std::fabs(sample));
                columns[at].squares += double(sample) * sample;
                columns[at].samples++;
            }
        }
    }
    if (decoder->isDamaged()) measured.problem = name.path + ": the file is damaged";
    measured.waveform = waveformOf(columns);
    return measured;
}

void putPicture(const TextureRow& row, const ShowFile& file) {
    demo->replaceTexture(row.key, file.picture, row.wrapS, row.wrapT);
    demo->setTextureSize(row.key, row.width, row.height);
}

void putModel(const MeshRow& row, ShowFile& file) {
    for (Mesh& mesh : file.model) mesh.upload();
    demo->replaceMesh(row.key, new MeshSet(std::move(file.model)));
    if (row.afterwards) row.afterwards();
}
