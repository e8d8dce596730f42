#include "tools/capture/encoding.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "tools/command_line.h"
#include "tools/formatted.h"

namespace {

// Of enlarged pictures: rounding and filtering done in full, and chroma between its four pixels, as the
// film's tags say. What a player takes for granted without a tag differs from one to the next.
const std::string toVideoLevels =
    ":flags=lanczos+accurate_rnd+full_chroma_inp:out_color_matrix=bt709:out_range=tv"
    ":out_h_chr_pos=128:out_v_chr_pos=128";

// Said of the frames, since newer releases of ffmpeg believe these rather than the encoder's options.
const std::string tagged = ",setparams=color_primaries=bt709:color_trc=bt709";
const std::string taggedLevels = tagged + ":colorspace=bt709:range=tv -colorspace bt709 -color_range tv";

// The quickest preset, as it is: on a machine that draws in software, every cycle of the encoder is one less
// for drawing. The larger transform and the smaller blocks of still pictures would cost a fifth more and save
// one byte of two hundred.
constexpr char quickest[] = "-c:v libx264 -preset ultrafast -x264-params stitchable=1:chromaloc=1";

// The noise that the encoder would put in the place of sound, and what else it guesses, rises up to 6 dB
// above the peaks. At these rates the quick coder comes as near to the sound as the other.
constexpr char aac[] =
    "-af aresample=48000:resampler=soxr:precision=28"
    " -c:a aac -aac_coder fast -aac_pns 0 -aac_is 0 -aac_tns 0";

struct KindRow {
    const char* option;
    int rate;    // frames a second, or 0 for any
    int height;  // pixels, of 16 : 9 with black bars; 0 for the picture as it is drawn
    std::string picture;
    std::string sound;
};

// In the order of FilmKind. At the first quantizer 95 of 100 pixels come back within 3 levels of the
// brightness that was drawn; enlarged pictures are smoother. A rate factor, which films that are made less
// often have, varies it by a look through each picture beforehand, for a quarter of the encoder's cycles. The
// archive's pictures need none before them.
const KindRow rows[] = {
    {"--net", 0, 0, quickest + std::string(" -qp 15"), aac + std::string(" -b:a 256k")},
    {"--upload", 60, 1080, quickest + std::string(" -qp 19"), aac + std::string(" -b:a 384k")},
    {"--upload-2160", 60, 2160, quickest + std::string(" -crf 18"), aac + std::string(" -b:a 384k")},
    {"--party", 30, 720,
     "-c:v libx264 -preset superfast -profile:v main -x264-params stitchable=1:chromaloc=1 -crf 14",
     aac + std::string(" -b:a 256k")},
    {"--lossless", 0, 0, "-c:v libx264rgb -preset ultrafast -qp 0", "-c:a alac -sample_fmt s16p"},
    {"--archive", 0, 0, "-c:v ffv1 -level 3 -slices 4 -slicecrc 1", "-c:a flac -sample_fmt s32"},
};

const KindRow& rowOf(FilmKind kind) {
    return rows[size_t(kind)];
}

Words split(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

}  // namespace

void append(Words* words, const Words& more) {
    words->insert(words->end(), more.begin(), more.end());
}

const char* optionOf(FilmKind kind) {
    return rowOf(kind).option;
}

std::optional<FilmKind> kindOf(const std::string& option) {
    for (const KindRow& row : rows)
        if (option == row.option) return FilmKind(&row - rows);
    return std::nullopt;
}

int rateOf(FilmKind kind) {
    return rowOf(kind).rate;
}

bool hasKinds(const std::string& path) {
    return hasExactTimes(path) || endsIn(path, ".mkv");
}

bool hasExactTimes(const std::string& path) {
    return endsIn(path, ".mp4") || endsIn(path, ".m4v") || endsIn(path, ".mov");
}

bool takesVideoLevels(const std::string& path, FilmKind kind) {
    return kind == FilmKind::Net && hasKinds(path);
}

Words pictureWords(const std::string& path, FilmKind kind, int fps) {
    if (kind == FilmKind::Net && !hasKinds(path)) return {"-vf", "vflip"};
    const KindRow& row = rowOf(kind);
    // Groups of half a second, none of which needs another, so that a player can start in any. No frame waits
    // for a later one: packets lie in the order of their frames, and films can be cut and joined between any
    // two groups.
    const std::string group = std::to_string(std::max(fps / 2, 1));
    const std::string words = row.picture + " -g " + group + " -keyint_min " + group +
                              " -sc_threshold 0 -bf 0 -flags +cgop" +
                              " -color_primaries bt709 -color_trc bt709 -vf vflip";
    if (kind == FilmKind::Archive) return split(row.picture + " -g 1 -vf vflip" + tagged);
    if (kind == FilmKind::Lossless) return split(words + tagged + " -colorspace rgb -color_range pc");
    if (takesVideoLevels(path, kind)) return split(words + taggedLevels);
    const int height = row.height;
    return split(words + formatted(",scale=%d:%d", height * 4 / 3, height) + toVideoLevels +
                 formatted(",format=yuv420p,pad=%d:%d:(ow-iw)/2:0:black", height * 16 / 9, height) +
                 taggedLevels);
}

Words soundWords(const std::string& path, FilmKind kind) {
    return hasKinds(path) ? split(rowOf(kind).sound) : Words{};
}

Words containerWords(const std::string& path) {
    if (!hasKinds(path)) return {};
    return endsIn(path, ".mkv") ? Words{"-cues_to_front", "1"} : Words{"-movflags", "+faststart"};
}
