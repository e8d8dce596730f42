#include "tools/capture/manifest.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <limits>
#include <sstream>

#include "tools/capture/hash.h"
#include "tools/capture/window.h"
#include "tools/whole_file.h"

namespace {

constexpr char firstLine[] = "valojuova part 1";

bool readNumber(const std::string& text, int least, int most, int* number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
    return error == std::errc() && end == text.data() + text.size() && *number >= least && *number <= most;
}

bool readLine(const std::string& line, Manifest* manifest) {
    std::istringstream words(line);
    std::string key, value;
    words >> key >> std::ws;
    if (key == "frame") {
        DrawnFrame frame;
        if (!(words >> frame.number >> frame.hash)) return false;
        const int before = manifest->frames.empty() ? -1 : manifest->frames.back().number;
        if (frame.number <= before || frame.number == std::numeric_limits<int>::max()) return false;
        manifest->frames.push_back(frame);
        return true;
    }
    if (!std::getline(words, value)) return false;
    if (key == "program") manifest->program = value;
    if (key == "renderer") manifest->renderer = value;
    if (key == "data") manifest->data = value;
    if (key == "sound") manifest->sound = value;
    if (key == "fps") return readNumber(value, 1, mostFps, &manifest->fps);
    if (key == "samples") return readNumber(value, 0, std::numeric_limits<int>::max(), &manifest->samples);
    if (key == "film") manifest->film = value;
    const std::optional<FilmKind> kind = key == "kind" ? kindOf(value) : manifest->kind;
    manifest->kind = kind.value_or(FilmKind::Net);
    return kind.has_value();
}

}  // namespace

FrameRuns Manifest::runs() const {
    std::vector<int> numbers;
    for (const DrawnFrame& frame : frames) numbers.push_back(frame.number);
    return runsOf(numbers);
}

Manifest manifestOfWindow(int fps, FilmKind kind, const std::string& data, const std::string& sound) {
    return {hashOfProgram(), rendererName(), data, sound, fps, windowSamples(), kind, "", {}};
}

std::string originOf(const Manifest& manifest) {
    return "drawn by " + manifest.renderer + "; program " + manifest.program + ", data " + manifest.data +
           ", soundtrack " + manifest.sound;
}

std::string manifestPath(const std::string& part) {
    return part + ".manifest";
}

bool readManifest(const std::string& part, Manifest* manifest) {
    std::ifstream file(manifestPath(part));
    std::string line;
    if (!std::getline(file, line) || line != firstLine) return false;
    *manifest = {};
    while (std::getline(file, line)) {
        if (line == "end") return manifest->fps > 0 && !manifest->frames.empty();
        if (!readLine(line, manifest)) return false;
    }
    return false;
}

bool writeManifest(const std::string& part, const Manifest& manifest) {
    const std::string path = manifestPath(part);
    errno = 0;
    std::ofstream file(unfinishedPath(path));
    const auto line = [](const char* key, const std::string& value) {
        return value.empty() ? "" : key + (' ' + value) + '\n';
    };
    file << firstLine << '\n'
         << line("program", manifest.program) << line("renderer", manifest.renderer)
         << line("data", manifest.data) << line("sound", manifest.sound)
         << line("fps", std::to_string(manifest.fps)) << line("samples", std::to_string(manifest.samples))
         << line("kind", optionOf(manifest.kind)) << line("film", manifest.film);
    for (const DrawnFrame& frame : manifest.frames)
        file << "frame " << frame.number << ' ' << frame.hash << '\n';
    file << "end\n";
    file.close();
    return putInPlace(path, bool(file));
}

std::string differenceOf(const Manifest& part, const Manifest& other) {
    const auto both = [](const std::string& one, const std::string& two) { return ": " + one + "; " + two; };
    if (part.program != other.program) return "by another program" + both(part.program, other.program);
    if (part.renderer != other.renderer) return "by another renderer" + both(part.renderer, other.renderer);
    if (part.data != other.data) return "from another data set" + both(part.data, other.data);
    if (part.sound != other.sound) return "for another soundtrack" + both(part.sound, other.sound);
    if (part.fps != other.fps)
        return "at another rate" + both(std::to_string(part.fps), std::to_string(other.fps));
    if (part.samples != other.samples)
        return "with other samples" + both(std::to_string(part.samples), std::to_string(other.samples));
    if (part.kind != other.kind)
        return "for another kind of film" + both(optionOf(part.kind), optionOf(other.kind));
    return "";
}

bool isWhole(const std::string& part, const Manifest& manifest) {
    if (manifest.film.empty()) return false;
    if (hashOfFile(part) == manifest.film) return true;
    const std::string unfinished = unfinishedPath(part);
    return hashOfFile(unfinished) == manifest.film && rename(unfinished.c_str(), part.c_str()) == 0;
}
