#include "tools/capture/encoding.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "tools/command_line.h"

namespace {

// Rounding and filtering done in full, and chroma between its four pixels, as the film's tags say: what a
// player takes for granted without a tag differs from one to the next.
const std::string toVideoLevels =
    "accurate_rnd+full_chroma_inp:out_color_matrix=bt709:out_range=tv:out_h_chr_pos=128:out_v_chr_pos=128";

// Said of the frames, since newer releases of ffmpeg believe these rather than the encoder's options.
const std::string tagged = ",setparams=color_primaries=bt709:color_trc=bt709";

// The quickest preset: on a machine that draws in software, every cycle of the encoder is one less for
// drawing. The larger transform and the smaller blocks of still pictures cost next to nothing and save a
// tenth.
constexpr char x264Settings[] = "8x8dct=1:partitions=i8x8,i4x4:stitchable=1:chromaloc=1";

// At this factor 95 of 100 pixels come back within 3 levels of the brightness that was drawn.
constexpr char rateFactor[] = "11";
// Enlarged pictures are smoother.
constexpr char uploadRateFactor[] = "16";

Words split(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

}  // namespace

void append(Words* words, const Words& more) {
    words->insert(words->end(), more.begin(), more.end());
}

const char* optionOf(FilmKind kind) {
    switch (kind) {
        case FilmKind::Upload:
            return "--upload";
        case FilmKind::Lossless:
            return "--lossless";
        default:
            return "--net";
    }
}

bool hasKinds(const std::string& path) {
    return hasExactTimes(path) || endsIn(path, ".mkv");
}

bool hasExactTimes(const std::string& path) {
    return endsIn(path, ".mp4") || endsIn(path, ".m4v") || endsIn(path, ".mov");
}

Words pictureWords(const std::string& path, FilmKind kind, int fps) {
    if (!hasKinds(path)) return {"-vf", "vflip"};
    // Groups of half a second, none of which needs another, so that a player can start in any. No frame waits
    // for a later one: packets lie in the order of their frames, and films can be cut and joined between any
    // two groups.
    const std::string group = std::to_string(std::max(fps / 2, 1));
    std::string words = "-g " + group + " -keyint_min " + group + " -sc_threshold 0 -flags +cgop -vf vflip";
    if (kind == FilmKind::Lossless)
        return split(words + tagged +
                     " -c:v libx264rgb -preset ultrafast -qp 0 -bf 0 -colorspace rgb -color_range pc"
                     " -color_primaries bt709 -color_trc bt709");
    const bool upload = kind == FilmKind::Upload;
    words += upload ? ",scale=1440:1080:flags=lanczos+" + toVideoLevels +
                          ",format=yuv420p,pad=1920:1080:240:0:black"
                    : ",scale=flags=bicubic+" + toVideoLevels + ",format=yuv420p";
    return split(words + tagged + " -c:v libx264 -preset ultrafast -bf 0 -x264-params " + x264Settings +
                 " -crf " + (upload ? uploadRateFactor : rateFactor) +
                 " -colorspace bt709 -color_range tv -color_primaries bt709 -color_trc bt709");
}

Words soundWords(const std::string& path, FilmKind kind) {
    if (!hasKinds(path)) return {};
    if (kind == FilmKind::Lossless) return split("-c:a alac -sample_fmt s16p");
    return split(kind == FilmKind::Upload ? "-c:a aac -b:a 384k" : "-c:a aac -b:a 256k");
}

Words containerWords(const std::string& path) {
    if (!hasKinds(path)) return {};
    return endsIn(path, ".mkv") ? Words{"-cues_to_front", "1"} : Words{"-movflags", "+faststart"};
}
