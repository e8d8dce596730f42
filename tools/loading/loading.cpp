#include "tools/loading/loading.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "app/sound_music.h"
#include "tools/capture/hash.h"
#include "tools/capture/stepped_show.h"
#include "tools/formatted.h"
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

// What makes another thing of the same key.
std::string restOf(const MeshRow& row) {
    return row.path;
}
std::string restOf(const TextureRow& row) {
    return formatted("%s %u %u %d %d", row.path, row.wrapS, row.wrapT, row.width, row.height);
}
std::string restOf(const ShaderRow& row) {
    return row.base;
}

template <typename Row>
bool isLoaded(const std::map<std::string, std::string>& loaded, const Row& row) {
    const auto entry = loaded.find(row.key);
    return entry != loaded.end() && entry->second == restOf(row);
}

// Takes out the keys that no row has, and hands them on.
template <typename Row, typename Drop>
void dropAbsent(std::map<std::string, std::string>* loaded, std::span<const Row> rows, Drop drop) {
    std::erase_if(*loaded, [&](const auto& entry) {
        for (const Row& row : rows)
            if (entry.first == row.key) return false;
        drop(entry.first);
        return true;
    });
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

void Loading::tell(const std::string& file, const std::string& problem) {
    if (std::exchange(problems[file], problem) != problem) fprintf(stderr, "%s\n", problem.c_str());
}

void Loading::forget(const std::string& file) {
    for (auto* texts : {&problems, &shadersInUse, &brokenShaders}) texts->erase(file);
}

bool Loading::isGood(const ShowFile& file) {
    if (!file.problem.empty()) tell(file.name.path, file.problem);
    return file.problem.empty();
}

void Loading::load(const MeshRow& row) {
    ShowFile read = file({FileKind::model, row.path});
    const bool good = isGood(read), isNew = meshes.insert_or_assign(row.key, restOf(row)).second;
    if (!good && !isNew) return;
    if (!good) read.model = MeshSet();
    putModel(row, read);
    demo->meshSetCount += isNew;
}

void Loading::load(const TextureRow& row) {
    ShowFile read = file({FileKind::picture, row.path});
    const bool good = isGood(read), isNew = textures.insert_or_assign(row.key, restOf(row)).second;
    if (!good && !isNew) return;
    if (!good) makeCheckerboard(&read);
    if (isNew) {
        if (freeRecords.empty()) freeRecords.push_back(demo->nextTexture++);
        demo->textureNames[row.key] = freeRecords.back();
        freeRecords.pop_back();
    }
    putPicture(row, read);
}

void Loading::load(const ShaderRow& row) {
    std::optional<ShaderText> texts[2];
    for (int i = 0; i < 2; i++) {
        ShowFile read = file({FileKind::shader, std::string(row.base) + shaderEndings[i]});
        if (isGood(read)) texts[i] = ShaderText{read.name.path, std::move(read.text)};
    }
    const ProgramBuild built = buildProgram(texts[0], texts[1]);
    for (const auto& text : texts) {
        if (text) (text->file == built.file ? brokenShaders : shadersInUse)[text->file] = text->text;
    }
    if (!built.program) tell(built.file, built.problem);
    if (!shaders.insert_or_assign(row.key, restOf(row)).second && !built.program) return;
    deleteProgram(std::exchange(demo->shaders[row.key], built.program));
}

void Loading::loadNewRows() {
    dropAbsent(&meshes, meshRows(), [](const std::string& key) {
        demo->replaceMesh(key.c_str(), nullptr);
        demo->meshes.erase(key);
    });
    dropAbsent(&textures, textureRows(), [&](const std::string& key) {
        freeRecords.push_back(demo->textureNames[key]);
        demo->textureNames.erase(key);
    });
    dropAbsent(&shaders, shaderRows(), [](const std::string& key) {
        deleteProgram(demo->shaders[key]);
        demo->shaders.erase(key);
    });
    // What is done to one afterwards may be another thing now.
    for (const MeshRow& row : meshRows())
        if (row.afterwards || !isLoaded(meshes, row)) load(row);
    for (const TextureRow& row : textureRows())
        if (!isLoaded(textures, row)) load(row);
    for (const ShaderRow& row : shaderRows())
        if (!isLoaded(shaders, row)) load(row);
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
        if (isMusic)
            show.music = std::move(file);
        else
            loadingOfShow->files.emplace(name.path, std::move(file));
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
