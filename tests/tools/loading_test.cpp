// Files of the show as the tools read them: what it could not draw or play rightly is told by its name, and
// nothing is drawn of a show that is broken.

#include "tests/app/program.h"
#include "tools/loading/readers.h"

namespace {

constexpr char music[] = "data/KVX - Ondrevane2.ogg";
constexpr char picture[] = "data/spot.png";
constexpr char jpeg[] = "data/overlay.jpg";
constexpr char model[] = "data/ring.AML";

std::string kept(const std::string& file) {
    return contentOf("tests/fuzz/kept/" + file);
}

// In a folder with a data set of its own.
class BrokenShow : public Program {
public:
    void SetUp() override { linkData(); }

    // A new file in the place of one of the data set.
    std::string place(const char* file) const {
        std::filesystem::remove_all(scratch.path / file);
        return scratch.file(file);
    }
    void put(const char* file, const std::string& content) const {
        place(file);
        scratch.write(file, content);
    }
    std::string problemOf(FileKind kind, const char* file) const {
        const WorkingDirectory inside(scratch.path);
        return readShowFile({kind, file}).problem;
    }
};

TEST_F(BrokenShow, WhatCantBeDrawnRightlyIsNamed) {
    const std::string wanted = ", where the show takes RGB or RGBA of 8 bits";
    const struct {
        const char *file, *kind, *what;
    } rows[] = {{picture, "png/grey", "shades of grey"},
                {picture, "png/grey of one bit", "shades of grey"},
                {picture, "png/grey with alpha", "shades of grey"},
                {picture, "png/palette", "a palette"},
                {picture, "png/colour", nullptr},
                {picture, "png/colour of 16 bits", "16 bits a channel"},
                {picture, "png/colour with alpha", nullptr},
                {picture, "png/interlaced", nullptr},
                {jpeg, "jpeg/grey", "shades of grey"},
                {jpeg, "jpeg/inks", "CMYK colours"}};
    for (const auto& [file, kind, what] : rows) {
        put(file, kept(kind));
        EXPECT_EQ(problemOf(FileKind::picture, file),
                  what ? file + std::string(": has ") + what + wanted : "")
            << kind;
    }
    put(model, std::string("AML\2\1\0\0\0\0\0\0\0\0\0\1\0\3", 17));
    EXPECT_EQ(problemOf(FileKind::model, model),
              std::string(model) + ": the first attribute is not the index of a position");
    std::filesystem::create_directory(place(picture));
    EXPECT_EQ(problemOf(FileKind::picture, picture), std::string(picture) + ": is not a file");
    mkfifo(place(model).c_str(), 0600);
    EXPECT_EQ(problemOf(FileKind::model, model), std::string(model) + ": is not a file");
}

TEST_F(BrokenShow, IsNotDrawnButSaidInOneLineWithTheName) {
    const std::string track = contentOf(music);
    const std::string cmyk = kept("jpeg/inks"), shader = "void main() { gl_FragColor = colour; }\n";
    const struct {
        const char* file;
        std::string content;  // none: it is missing
        const char* told;
    } cases[] = {{jpeg, cmyk, ": has CMYK colours, where"},
                 {model, contentOf(model).substr(0, 5000), ": the file ends too early"},
                 {music, "", ": No such file or directory"},
                 {music, "no music", ": no Ogg Vorbis file that can be played"},
                 {music, track.substr(0, track.size() / 2), ": the file ends too early"},
                 {"data/shaders/boom.fs", shader, ":1:"}};
    for (const auto& [file, content, told] : cases) {
        const std::string good = contentOf(file);
        content.empty() ? void(place(file)) : put(file, content);
        constexpr const char *look = LOOK_PROGRAM " 5 out.png",
                             *film = CAPTURE_PROGRAM " --to 1 --out out.mp4";
        for (const char* words : {look, film}) {
            if (file == music && words == look) continue;  // a picture has no sound
            program = words;
            const Outcome outcome = run("");
            EXPECT_EQ(outcome.status, 1) << words;
            EXPECT_NE(outcome.errors.find(file + std::string(told)), std::string::npos) << outcome.errors;
            EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
            EXPECT_FALSE(std::filesystem::exists(scratch.file("out.png")));
            EXPECT_FALSE(std::filesystem::exists(scratch.file("out.mp4")));
        }
        put(file, good);
    }
}

// However often a file is asked for while it changes, what is handed out is what it was at last.
TEST_F(BrokenShow, ReadersHandOutTheLatest) {
    const WorkingDirectory inside(scratch.path);
    Readers readers(true);
    for (int i = 0; i <= 100; i++) {
        put(picture, std::string(size_t(i), 'x'));
        readers.request({FileKind::shader, picture});
    }
    readers.request({FileKind::music, music});
    std::vector<ShowFile> files;
    while (!readers.idle()) {
        if (auto file = readers.take()) files.push_back(std::move(*file));
    }
    ASSERT_EQ(files.size(), 3u);
    int measured = 0;
    for (const ShowFile& file : files) {
        EXPECT_EQ(file.problem, "");
        EXPECT_EQ(file.text.size(), file.name.kind == FileKind::shader ? 100u : 0u);
        if (file.waveform.empty()) continue;
        measured++;
        EXPECT_EQ(file.waveform.size(), 2u * waveformColumns);
        EXPECT_GT(*std::max_element(file.waveform.begin(), file.waveform.end()), 60);
    }
    EXPECT_EQ(measured, 1);
}

}  // namespace
