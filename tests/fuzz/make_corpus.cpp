// Makes the inputs that fuzzing starts from: small files of every kind that the readers know, in a folder for
// each format.
#include <cstdio>
// libjpeg's header needs FILE and size_t before it.
#include <jpeglib.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "geometry/mesh.h"
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/picture/canvas.h"
#include "production/kit/sound/arrangement.h"
#include "production/kit/sound/vorbis.h"
#include "production/music/soundtrack.h"
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
    const AmlMesh plain = {{{positionAttrib, 3}}, {}, {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}};
    writeBytes(folder / "plain", amlFile({plain}));
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
    const auto write = [&](const char* name, const audio::Stereo& written, const audio::VorbisForm& form) {
        audio::writeVorbis(folder / name, {written.left, written.right}, form);
    };
    write("sound", sound, {.quality = -0.1f, .tags = {{"TITLE", "Seed"}}});
    write("empty", audio::Stereo(0), {.quality = -0.1f});
    const std::string whole = bytesOf(folder / "sound");
    writeBytes(folder / "chain", whole + bytesOf(folder / "empty") + whole);
    writeBytes(folder / "cut", whole.substr(0, whole.size() * 3 / 4));
    // Noise fills its pages soon; one of them is missing.
    for (float& sample : sound.left) sample = float(rand() % 2000) / 1000 - 1;
    write("hole", sound, {.quality = 1});
    std::string pages = bytesOf(folder / "hole");
    size_t page = 0;
    for (int i = 0; i < 4; i++) page = pages.find("OggS", page + 1);
    pages.erase(page, pages.find("OggS", page + 1) - page);
    writeBytes(folder / "hole", pages);
}

void makeManifests(const fs::path& folder) {
    const auto part = [](const char* rate, const char* kind, const char* frames) {
        return std::string(
                   "valojuova part 1\nversion 1.0-5\nprogram 0123\nsound 4567\nrenderer llvmpipe (LLVM "
                   "15.0.6, 256 bits)\n"
                   "data 0123456789abcdef0123456789abcdef\nfps ") +
               rate + "\nsamples 4\nkind " + kind + "\nfilm fedcba9876543210fedcba9876543210\n" + frames +
               "end\n";
    };
    const std::string first = part("60", "--net", "frame 0 00112233\nframe 1 44556677\nframe 5 8899aabb\n");
    writeBytes(folder / "two", first + part("60", "--net", "frame 2 00112233\nframe 3 44556677\n"));
    writeBytes(folder / "upload", first + part("60", "--upload", "frame 9 0\n"));
    writeBytes(folder / "rate", first + part("25", "--lossless", "frame 2147483646 0\n"));
    writeBytes(folder / "none", part("60", "--net", ""));
    for (const char* other : {"version 1.0-5", "renderer llvmpipe", "data 0123", "samples 4"}) {
        std::string second = first;
        second[second.find(other) + strlen(other) - 1] = '8';
        writeBytes(folder / std::string(other).substr(0, 4), first + second);
    }
}

// Every cue of the soundtrack, and what none of them has.
void makeScores(const fs::path& folder) {
    const audio::Song song = soundtrack();
    int count = 0;
    const auto write = [&](const audio::Part& part, const audio::Section& section, const audio::Cue& cue) {
        std::ostringstream text;
        text << int(part.notation) << ' ' << int(part.role) << ' ' << part.range.low << ' '
             << part.range.high - part.range.low << ' ' << part.voices << ' ' << cue.transpose << ' '
             << section.from << ' ' << section.to - section.from << ' ' << std::lround(cue.bars.from * 16)
             << ' ' << std::lround(cue.bars.to * 16) << ' ' << std::lround(section.swing * 100) << '\n'
             << section.scale << '\n'
             << section.chords << '\n'
             << cue.pattern << '\n'
             << (count % 8 == 0 ? "one" : "") << '\n';
        writeBytes(folder / std::to_string(count++), text.str());
    };
    for (const audio::Section& section : song.sections) {
        for (const audio::Cue& cue : section.cues) write(*audio::partOf(song, cue.part), section, cue);
    }
    for (const char* pattern :
         {"Cb0:4 B#9:12 | G4+Bb4:8' -:8,", "X-x-o.:.", "1-3-5-7-", "0123456789", "rRoOfFtTsSaA"})
        for (int notation = 0; notation < 6; notation++)
            writeBytes(folder / std::to_string(count++), std::to_string(notation) +
                                                             " 3 48 36 4 0 0 4 0 0 30\nG minor\nGm F#dim,D5 "
                                                             "Bb/D Ebmaj7\n" +
                                                             pattern + "\none,one\n");
}

// As fuzz_model.cpp reads them: a file's ending to be written in, a placing, nodes, meshes.
void makeModels(const fs::path& folder) {
    const std::string plain = {16, 0}, corners = {0, 0, 0, 16, 0, 0, 16, 16, 0, 0, 16, 0};
    const std::string quad = {4, 0, 1, 2, 3}, triangle = {3, 0, 1, 2}, line = {2, 0, 1};
    const std::string root = {0, 1, 0};
    for (char format = 0; format < 8; format++) {
        const auto write = [&](const char* name, const std::string& rest) {
            writeBytes(folder / (name + std::to_string(format)), format + rest);
        };
        write("quad", plain + std::string{0, 1, 0, 3, 0} + corners + quad + root);
        write("mixed", plain + std::string{0, 1, 0, 3, 2} + corners + quad + triangle + line + root);
        write("normals", plain + std::string{0, 1, 3, 3, 0} + corners + corners + corners + quad + root);
        write("all", plain + std::string{0, 1, 31, 3, 0} + corners + corners + corners + corners +
                         std::string(4, 9) + std::string(1, 1) + corners + quad + root);
        write("shaped", plain + std::string{0, 1, 16, 3, 1} + corners + std::string(1, 1) + corners + quad +
                            triangle + root);
        write("tree", std::string{32, 2, 0, 24, 2, 8, 2, 1, 0, 3, 0} + corners + quad + std::string{0, 3, 0} +
                          corners + triangle + std::string{0, 0, 0, 1, 2, 0, 1, 0, 4, 16, 1, 1});
        write("broken", plain + std::string{0, 1, 0, 3, 1} + std::string{-128, 0, 0} + corners.substr(3) +
                            triangle + std::string{3, 1, 2, 3} + root);
        write("flat", plain + std::string{0, 1, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0} + root);
        write("off", plain + std::string{0, 1, 0, 3, 0} + corners + std::string{3, 0, 1, 4} + root);
    }
    // Copied often enough, these outgrow a mesh of the show's files.
    std::string vertices, faces;
    for (char i = 0; i < 48; i++) vertices += {i, char(i % 5), char(i % 7)};
    for (char i = 0; i < 48; i += 3) faces += {3, i, char(i + 1), char(i + 2)};
    writeBytes(folder / "large", std::string(1, 0) + plain + std::string{0, 1, 0x60, 47, 15} + vertices +
                                     vertices + faces + root);
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
    } makers[] = {{"aml", makeMeshes},    {"png", makePngs},           {"jpeg", makeJpegs},
                  {"vorbis", makeSounds}, {"manifest", makeManifests}, {"score", makeScores},
                  {"model", makeModels}};
    for (const auto& maker : makers) {
        const fs::path folder = fs::path(words[1]) / maker.format;
        fs::create_directories(folder);
        maker.make(folder);
    }
}
