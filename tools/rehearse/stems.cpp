#include "tools/rehearse/stems.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>

#include "app/sound_music.h"
#include "production/making/laying.h"

namespace fs = std::filesystem;

namespace {

constexpr size_t mostStems = 9;  // as many as there are keys

}  // namespace

void Stems::show(bool shown) {
    choice.shown = shown;
    faders->hear(heard());
    if (shown) makeAgain();
}

void Stems::makeAgain() {
    if (!choice.shown) return;
    const std::string track = fs::path(SoundMusic::path).filename();
    if (build.command.empty())
        read();
    else if (fs::exists(SoundMusic::path) && isAuthors("data", track))
        refuse(std::string("no stems: ") + SoundMusic::path + " is yours, and they would be the score's");
    else
        build.request();
}

void Stems::toggle(uint32_t StemChoice::*which, int stem) {
    if (!choice.shown || size_t(stem) >= rows.size()) return;
    choice.*which ^= 1u << stem;
    faders->hear(heard());
}

void Stems::hearAll() {
    choice.muted = choice.soloed = 0;
    faders->hear(heard());
}

bool Stems::isHeard(int stem) const {
    const uint32_t all = (1u << rows.size()) - 1, soloed = choice.soloed & all;
    return (soloed ? soloed : ~choice.muted) >> stem & 1;
}

void Stems::poll() {
    if (build.poll() && build.problem.empty()) read();
    if (!readers) return;
    while (auto file = readers->take()) {
        take(*file);
        if (!readers) return;
    }
    if (!readers->idle()) return;
    readers.reset();
    if (unread > 0) refuse("no stems: " + folder + "list: names one twice");
}

std::vector<SoundFile> Stems::heardFiles(const SoundFile& track) const {
    const Faders::State state = faders->state();
    std::vector<SoundFile> files;
    if (state.isTrack() && track) files.push_back(track);
    if (state.isTrack()) return files;
    for (size_t i = 0; i < state.stems.size(); i++)
        if (state.heard >> i & 1) files.push_back(state.stems[i]);
    return files;
}

// Unless they are the ones that have been read.
void Stems::read() {
    const std::string list = folder + "list";
    std::error_code error;
    const auto time = fs::last_write_time(list, error);
    if (error) return refuse("no stems: " + list + ": " + error.message());
    if (time == listed && problem.empty()) return;
    listed = time;
    coming.clear();
    std::ifstream names(list);
    for (std::string name; std::getline(names, name);) coming.push_back({name, nullptr, ""});
    if (coming.empty() || coming.size() > mostStems)
        return refuse("no stems: " + list + ": has not between 1 and 9 names");
    readers.emplace(true);
    unread = int(coming.size());
    for (const Stem& stem : coming) readers->request({FileKind::music, folder + stem.name + ".ogg"});
}

// Comes twice for each: read, and measured.
void Stems::take(ShowFile& file) {
    if (!file.problem.empty()) return refuse("no stems: " + file.problem);
    std::vector<Stem>& into = unread > 0 ? coming : rows;
    const auto stem = std::find_if(into.begin(), into.end(), [&](const Stem& one) {
        return file.name.path == folder + one.name + ".ogg";
    });
    if (stem == into.end()) return;
    if (file.music) {
        stem->file = file.bytes;
        unread--;
    } else {
        // Raised, so that what is quiet beside the others is seen, too.
        for (char& height : file.waveform) height = char(std::lround(std::sqrt(uint8_t(height) * 255.0)));
        stem->waveform = file.waveform;
    }
    if (unread > 0 || !file.music) return;
    problem.clear();
    rows = std::move(coming);
    std::vector<SoundFile> files;
    for (const Stem& row : rows) files.push_back(row.file);
    faders->setStems(std::move(files), heard());
    build.news.push_back("loaded the stems");
}

// The track goes on.
void Stems::refuse(const std::string& why) {
    if (problem != why) fprintf(stderr, "%s\n", why.c_str());
    problem = why;
    readers.reset();
    rows.clear();
    faders->setStems({}, 0);
}

uint32_t Stems::heard() const {
    uint32_t bits = 0;
    for (size_t i = 0; i < rows.size(); i++)
        if (!choice.shown || isHeard(int(i))) bits |= 1u << i;
    return bits;
}
