#include "tools/capture/join.h"

#include <algorithm>
#include <cinttypes>
#include <filesystem>

#include "app/sound_music.h"
#include "tools/capture/drawing.h"
#include "tools/capture/hash.h"
#include "tools/capture/manifest.h"
#include "tools/formatted.h"

namespace fs = std::filesystem;

namespace {

struct Part {
    std::string path;
    Manifest manifest;
};

// Frames that follow each other in the film and in a part.
struct Stretch {
    const Part* part;
    FrameRun run;
    int offset;  // of its first frame in the part
};

bool readParts(const std::vector<std::string>& paths, std::vector<Part>* parts) {
    for (const std::string& path : paths) {
        Part part{path, {}};
        const bool told = readManifest(path, &part.manifest), whole = told && isWhole(path, part.manifest);
        if (!fs::exists(path)) return tell(path + ": there is no such part");
        if (!told) return tell(path + ": it has no manifest, or a broken one");
        if (!whole) return tell(path + " is broken: it is not the film that its manifest tells of");
        if (!parts->empty()) {
            const std::string difference = differenceOf(part.manifest, parts->front().manifest);
            if (!difference.empty())
                return tell(path + " was drawn " + difference + " (" + parts->front().path + ')');
        }
        parts->push_back(part);
    }
    return true;
}

std::vector<Stretch> stretchesOf(const std::vector<Part>& parts) {
    std::vector<Stretch> stretches;
    for (const Part& part : parts) {
        int offset = 0;
        for (const FrameRun& run : part.manifest.runs()) {
            stretches.push_back({&part, run, offset});
            offset += run.last - run.first + 1;
        }
    }
    std::ranges::sort(stretches, {}, [](const Stretch& stretch) { return stretch.run.first; });
    return stretches;
}

// Nothing missing, nothing twice, nothing too much.
bool checkFrames(const std::vector<Stretch>& stretches, const FrameRuns& wanted) {
    std::vector<int> there;
    const Stretch* before = nullptr;
    for (const Stretch& stretch : stretches) {
        if (before && stretch.run.first <= before->run.last) {
            const FrameRun twice = {stretch.run.first, std::min(stretch.run.last, before->run.last)};
            return tell("frames " + textOf({twice}) + " are in both " + before->part->path + " and " +
                        stretch.part->path);
        }
        before = &stretch;
        for (int frame : framesOf({stretch.run})) there.push_back(frame);
    }
    const std::vector<int> frames = framesOf(wanted);
    std::vector<int> missing, spare;
    std::set_difference(frames.begin(), frames.end(), there.begin(), there.end(),
                        std::back_inserter(missing));
    std::set_difference(there.begin(), there.end(), frames.begin(), frames.end(), std::back_inserter(spare));
    if (!missing.empty()) return tell("no part has the frames " + textOf(runsOf(missing)));
    if (!spare.empty()) return tell("the film has no frames " + textOf(runsOf(spare)));
    return true;
}

std::string quoted(const std::string& path) {
    std::string text = "'file:";
    for (char c : fs::absolute(path).string()) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return text + "'";
}

// Of the time of a frame, up to what ffmpeg's lists can tell.
int64_t microsecondsOf(int frame, int fps) {
    return (frame * INT64_C(1000000) + fps - 1) / fps;
}

// What ffmpeg is to put behind each other. It takes frames from the last group that begins by `inpoint` up to
// `outpoint`, and the stretches' lengths add up without the roundings of their own.
std::string listOf(const std::vector<Stretch>& stretches, int fps) {
    std::string list = "ffconcat version 1.0\n";
    int frame = 0;
    for (const Stretch& stretch : stretches) {
        const int count = stretch.run.last - stretch.run.first + 1;
        list += "file " + quoted(stretch.part->path) + '\n';
        list += formatted("inpoint %" PRId64 "us\noutpoint %" PRId64 "us\nduration %" PRId64 "us\n",
                          microsecondsOf(stretch.offset, fps),
                          microsecondsOf(2 * (stretch.offset + count) - 1, 2 * fps),
                          microsecondsOf(frame + count, fps) - microsecondsOf(frame, fps));
        frame += count;
    }
    return list;
}

Words joinWords(const std::string& path, const Manifest& manifest, const FilmSound& sound) {
    Words words = {"-protocol_whitelist", "file,pipe", "-f", "concat", "-safe", "0", "-i", "pipe:0"};
    append(&words, soundInput(path, manifest.kind, sound));
    append(&words, {"-map", "0:v", "-c:v", "copy", "-progress", "pipe:1", "-stats_period", "3600"});
    if (!sound.path.empty()) append(&words, {"-map", "1:a"});
    append(&words, containerWords(path));
    return words;
}

bool writeFilm(const std::vector<Part>& parts, const std::string& path, const FilmSound& sound,
               Manifest* manifest) {
    Film film(path, joinWords(path, *manifest, sound));
    const std::string list = listOf(stretchesOf(parts), manifest->fps);
    film.expectedFrames = int(manifest->frames.size());
    const bool given = film.problem.empty() && film.write(list.data(), list.size());
    return finishFilm(film, given, manifest, [&] {
        const auto part = std::ranges::find_if(
            parts, [](const Part& one) { return hashOfFile(one.path) != one.manifest.film; });
        return part == parts.end() ? "" : part->path + " was changed meanwhile";
    });
}

}  // namespace

bool joinParts(const std::vector<std::string>& paths, const CaptureOptions& options,
               const Soundtrack* soundtrack) {
    std::vector<Part> parts;
    if (!readParts(paths, &parts)) return false;
    Manifest manifest = parts.front().manifest;
    const int fps = manifest.fps;
    const FrameRuns wanted = options.runs(fps);
    const std::vector<Stretch> stretches = stretchesOf(parts);
    if (!checkFrames(stretches, wanted)) return false;
    for (const Part& part : parts) {
        std::error_code failed;
        if (fs::equivalent(part.path, options.out, failed)) return tell(options.out + " is one of the parts");
    }
    if (soundtrack && soundtrack->hash != manifest.sound)
        return tell(SoundMusic::path + std::string(": not the soundtrack that ") + parts.front().path +
                    " was drawn for");

    manifest.frames.clear();
    for (const Stretch& stretch : stretches) {
        const auto first = stretch.part->manifest.frames.begin() + stretch.offset;
        manifest.frames.insert(manifest.frames.end(), first,
                               first + stretch.run.last - stretch.run.first + 1);
    }
    FilmSound sound;
    if (soundtrack) {
        sound = {soundtrack->path, millisecondsOf(wanted.front().first, fps) * 0.001,
                 double(manifest.frames.size()) / fps, originOf(manifest)};
    }
    return writeFilm(parts, options.out, sound, &manifest);
}
