#include "tools/loading/loading.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "app/sound_music.h"
#include "tools/capture/hash.h"
#include "tools/capture/stepped_show.h"
#include "tools/loading/program_build.h"

namespace {

constexpr int checkerSide = 64;    // pixels
constexpr int checkerSquare = 16;  // pixels

// In a colour that no picture of the show has.
void makeCheckerboard(ShowFile* file) {
    file->picture = createImage(checkerSide, checkerSide, 3);
    file->pixels.reset(file->picture.pixels);
    for (int y = 0; y < checkerSide; y++) {
        for (int x = 0; x < checkerSide; x++) {
            const bool dark = (x / checkerSquare + y / checkerSquare) % 2;
            uint8_t* pixel = file->picture.pixels + size_t(y) * file->picture.stride + x * 3;
            pixel[0] = pixel[2] = dark ? 40 : 230;
            pixel[1] = dark ? 0 : 20;
        }
    }
}

std::unique_ptr<Loading> loadingOfShow;

}  // namespace

Loading::Loading(bool measureMusic) : readers(measureMusic) {
    for (const FileName& name : showFiles()) readers.request(name);
}

ShowFile Loading::file(const FileName& name) {
    auto known = files.extract(name.path);
    return known ? std::move(known.mapped()) : readers.await(name);
}

std::unique_ptr<sound::Decoder> Loading::takeMusic() {
    ShowFile read = file({FileKind::music, SoundMusic::path});
    return isGood(read) ? std::move(read.music) : nullptr;
}

bool Loading::isGood(const ShowFile& file) {
    if (file.problem.empty()) return true;
    problems[file.name.path] = file.problem;
    fprintf(stderr, "%s\n", file.problem.c_str());
    return false;
}

void Loading::load(const MeshRow& row) {
    ShowFile read = file({FileKind::model, row.path});
    if (!isGood(read)) read.model = MeshSet();
    putModel(row, read);
    demo->meshSetCount++;
}

void Loading::load(const TextureRow& row) {
    demo->textureNames[row.key] = demo->nextTexture++;
    ShowFile read = file({FileKind::picture, row.path});
    if (!isGood(read)) makeCheckerboard(&read);
    putPicture(row, read);
}

void Loading::load(const ShaderRow& row) {
    std::optional<ShaderText> texts[2];
    for (int i = 0; i < 2; i++) {
        ShowFile read = file({FileKind::shader, std::string(row.base) + shaderEndings[i]});
        if (isGood(read)) texts[i] = ShaderText{read.name.path, std::move(read.text)};
    }
    const ProgramBuild built = buildProgram(texts[0], texts[1]);
    demo->shaders[row.key] = built.program;
    for (const auto& text : texts) {
        if (text) (text->file == built.file ? brokenShaders : shadersInUse)[text->file] = text->text;
    }
    if (built.program) return;
    problems[built.file] = built.problem;
    fprintf(stderr, "%s\n", built.problem.c_str());
}

ReadShow readShow(bool needsMusic) {
    loadingOfShow = std::make_unique<Loading>(false);
    ReadShow show;
    const auto tell = [&](const std::string& problem) {
        fprintf(stderr, "%s: %s\n", program_invocation_short_name, problem.c_str());
        show.good = false;
    };
    const std::vector<FileName> names = showFiles();
    std::vector<std::string> hashes;
    std::string all;
    for (const FileName& name : names) {
        const bool isMusic = name.kind == FileKind::music;
        ShowFile file = loadingOfShow->file(name);
        if (!file.problem.empty() && (needsMusic || !isMusic)) tell(file.problem);
        hashes.push_back(file.hash);
        if (!isMusic) all += name.path + '\n' + file.hash + '\n';
        (isMusic ? show.music : loadingOfShow->files[name.path]) = std::move(file);
    }
    show.data = hashOfText(all);
    // An author may save while it is read: what was read then is of a state that never was.
    for (size_t i = 0; i < names.size() && show.good; i++)
        if (hashOfFile(names[i].path) != hashes[i]) tell("data/ was changed while it was read; start again");
    return show;
}

void loadShow() {
    const OnePixel unseen;
    initialiseDemo(*loadingOfShow);
    if (!loadingOfShow->problems.empty()) exit(1);
    loadingOfShow.reset();
}
