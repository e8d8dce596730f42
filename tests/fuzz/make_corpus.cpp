// Makes the inputs that fuzzing starts from: small files of every kind that the readers know, in a folder for
// each format.
#include <cstdio>
// libjpeg's header needs FILE and size_t before it.
#include <jpeglib.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "geometry/mesh.h"
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/picture/canvas.h"
#include "production/kit/sound/vorbis.h"
#include "tests/geometry/aml_bytes.h"
#include "tests/image/png_kinds.h"

using namespace picture;

namespace fs = std::filesystem;

namespace {

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

void makeMeshes(const fs::path& folder) {
    model::writeAml((folder / "box").c_str(), {model::box({2, 1, 3}, 0.1)});
    model::writeAml((folder / "two").c_str(),
                    {model::icosphere(1, 0), model::extrude(model::polygon(5, 1), 0.5, 0.1)});
    writeBytes(folder / "quad", amlFile({quadMesh()}));
    writeBytes(folder / "none", amlFile({}));
    AmlMesh everything = {{}, {}, {}, {0, 1, 2}};
    for (uint8_t type = 0; type < maxAttribs; type++) {
        if (type != gvertexAttrib) everything.attribs.emplace_back(type, type < texCoordAttrib ? 3 : 2);
    }
    for (int i = 0; i < 3 * everything.vsize(); i++) everything.vertices.push_back(0.25f * float(i % 7));
    writeBytes(folder / "everything", amlFile({everything, quadMesh()}));
    // The older layout has no header, and its attributes no types.
    AmlMesh printed = quadMesh();
    printed.attribs[2].second = 3;
    printed.vertices.resize(4 * 7, indexWord(0));
    std::string old = printed.bytes();
    for (const int type : {0, 1, 2}) old.erase(size_t(7 + type), 1);
    writeBytes(folder / "old", std::string("D\1\0\0\0", 5) + old);
}

Canvas drawing() {
    Canvas canvas(24, 20);
    paint(canvas, [](float x, float y, Rgba) {
        return opaque(x / 24, y / 20, 0.5f) * (0.5f + 0.5f * std::sin(x * y));
    });
    return canvas;
}

void makePngs(const fs::path& folder) {
    saveRgb(drawing(), (folder / "rgb.png").c_str(), Rows::TopFirst);
    saveRgba(drawing(), (folder / "rgba.png").c_str(), Rows::BottomFirst);
    for (const PngKind& kind : pngKinds) makePng(folder / kind.name, kind, testRows(kind.stride, 5));
}

struct JpegKind {
    const char* name;
    int channels;
    bool progressive, arithmetic;
    int sampling, restart;  // chroma pixels across and along, blocks between markers
};
constexpr JpegKind jpegKinds[] = {
    {"grey", 1, false, false, 1, 0},
    {"sampled", 3, false, false, 2, 0},
    {"whole", 3, false, false, 1, 3},
    {"progressive", 3, true, false, 2, 2},
    {"arithmetic", 3, false, true, 1, 0},
    {"inks", 4, false, false, 1, 0},
    {"progressive grey", 1, true, false, 1, 0},
};

void makeJpeg(const fs::path& path, const JpegKind& kind) {
    constexpr int side = 20;
    FILE* file = fopen(path.c_str(), "wb");
    if (!file) exit(1);
    jpeg_compress_struct encoder;
    jpeg_error_mgr errors;
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    jpeg_stdio_dest(&encoder, file);
    encoder.image_width = encoder.image_height = side;
    encoder.input_components = kind.channels;
    encoder.in_color_space = kind.channels == 1 ? JCS_GRAYSCALE : kind.channels == 3 ? JCS_RGB : JCS_CMYK;
    jpeg_set_defaults(&encoder);
    if (kind.progressive) jpeg_simple_progression(&encoder);
    encoder.arith_code = kind.arithmetic;
    encoder.restart_interval = unsigned(kind.restart);
    encoder.comp_info[0].h_samp_factor = encoder.comp_info[0].v_samp_factor = kind.sampling;
    jpeg_start_compress(&encoder, TRUE);
    for (auto& row : testRows(side * uint32_t(kind.channels), side)) {
        JSAMPROW pointer = row.data();
        jpeg_write_scanlines(&encoder, &pointer, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    fclose(file);
}

void makeJpegs(const fs::path& folder) {
    saveRgb(drawing(), (folder / "rgb.jpg").c_str(), Rows::TopFirst);
    for (const JpegKind& kind : jpegKinds) makeJpeg(folder / kind.name, kind);
}

void makeSounds(const fs::path& folder) {
    audio::Stereo sound(audio::sampleRate / 5);
    for (size_t i = 0; i < sound.frames(); i++) {
        sound.left[i] = 0.5f * std::sin(float(i) * 0.05f);
        sound.right[i] = i % 4000 < 40 ? 0.9f : 0.3f * std::sin(float(i) * 0.4f);
    }
    audio::writeVorbis((folder / "sound").c_str(), sound, -0.1f, {{"TITLE", "Seed"}});
    audio::writeVorbis((folder / "empty").c_str(), audio::Stereo(0), -0.1f, {});
    const std::string whole = bytesOf(folder / "sound");
    writeBytes(folder / "chain", whole + bytesOf(folder / "empty") + whole);
    writeBytes(folder / "cut", whole.substr(0, whole.size() * 3 / 4));
}

}  // namespace

int main(int count, char** words) {
    if (count != 2) {
        fprintf(stderr, "usage: make_corpus FOLDER\n");
        return 1;
    }
    const struct {
        const char* format;
        void (*make)(const fs::path& folder);
    } makers[] = {{"aml", makeMeshes}, {"png", makePngs}, {"jpeg", makeJpegs}, {"vorbis", makeSounds}};
    for (const auto& maker : makers) {
        const fs::path folder = fs::path(words[1]) / maker.format;
        fs::create_directories(folder);
        maker.make(folder);
    }
}
