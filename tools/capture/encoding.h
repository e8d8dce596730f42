// The kinds of film, as words for ffmpeg.
#pragma once

#include <optional>
#include <string>

#include "tools/process.h"

void append(Words* words, const Words& more);

enum class FilmKind {
    Net,         // H.264 and AAC, to be put on the net as it is
    Upload,      // the same at 1920 x 1080, as platforms take it, the picture between two black bars
    Upload2160,  // the same at 3840 x 2160
    Party,       // 1280 x 720 in the Main profile, which the machines at parties play
    Lossless,    // the drawn pixels, bit for bit, as browsers play them too
    Archive,     // the same as archives keep them: in FFV1, with checksums, and FLAC
};

// The kind's name, among the options too but for the one that needs none; and back.
const char* optionOf(FilmKind kind);
std::optional<FilmKind> kindOf(const std::string& option);
// The only rate that it has, or 0.
int rateOf(FilmKind kind);

// Whether the kinds are made for a film of this name, all but the archive's. For others, whatever their
// ending means to ffmpeg, there is only the first kind, with the settings that ffmpeg has for them.
bool hasKinds(const std::string& path);

// Whether frames lie at their exact times in such a film; elsewhere they lie at whole milliseconds.
bool hasExactTimes(const std::string& path);

// Whether pictures go to ffmpeg in the levels of video rather than as they are drawn.
bool takesVideoLevels(const std::string& path, FilmKind kind);

// What makes frames of a film out of pictures: the filters and the encoder.
Words pictureWords(const std::string& path, FilmKind kind, int fps);
// The encoder of the sound.
Words soundWords(const std::string& path, FilmKind kind);
// The container: what a player needs to begin comes first.
Words containerWords(const std::string& path);
