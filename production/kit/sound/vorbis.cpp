#include "production/kit/sound/vorbis.h"

#include <vorbis/vorbisenc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace audio {

namespace {

constexpr int streamSerial = 126;
constexpr size_t framesPerBlock = 4096;

struct Encoder {
    vorbis_info info;
    vorbis_comment comment;
    vorbis_dsp_state dsp;
    vorbis_block block;
    ogg_stream_state stream;
    FILE* file;
};

void require(bool good, const char* path) {
    if (good) return;
    fprintf(stderr, "%s can't be written\n", path);
    exit(1);
}

void writePage(Encoder& encoder, const ogg_page& page, const char* path) {
    const bool written = fwrite(page.header, 1, page.header_len, encoder.file) == size_t(page.header_len) &&
                         fwrite(page.body, 1, page.body_len, encoder.file) == size_t(page.body_len);
    require(written, path);
}

void writeHeaders(Encoder& encoder, const char* path) {
    ogg_packet identification, comments, codebooks, *headers[] = {&identification, &comments, &codebooks};
    vorbis_analysis_headerout(&encoder.dsp, &encoder.comment, &identification, &comments, &codebooks);
    for (ogg_packet* header : headers) ogg_stream_packetin(&encoder.stream, header);
    ogg_page page;
    while (ogg_stream_flush(&encoder.stream, &page)) writePage(encoder, page, path);
}

// Writes the pages that the samples handed over so far have filled.
void writeReady(Encoder& encoder, const char* path) {
    ogg_packet packet;
    ogg_page page;
    while (vorbis_analysis_blockout(&encoder.dsp, &encoder.block) == 1) {
        vorbis_analysis(&encoder.block, nullptr);
        vorbis_bitrate_addblock(&encoder.block);
        while (vorbis_bitrate_flushpacket(&encoder.dsp, &packet)) {
            ogg_stream_packetin(&encoder.stream, &packet);
            while (ogg_stream_pageout(&encoder.stream, &page)) writePage(encoder, page, path);
        }
    }
}

}  // namespace

void writeVorbis(const char* path, const Stereo& sound, float quality, const std::vector<Tag>& tags) {
    Encoder encoder;
    encoder.file = fopen(path, "wb");
    require(encoder.file, path);
    vorbis_info_init(&encoder.info);
    require(vorbis_encode_init_vbr(&encoder.info, 2, sampleRate, quality) == 0, path);
    vorbis_comment_init(&encoder.comment);
    for (const Tag& tag : tags) vorbis_comment_add_tag(&encoder.comment, tag.name, tag.value);
    vorbis_analysis_init(&encoder.dsp, &encoder.info);
    vorbis_block_init(&encoder.dsp, &encoder.block);
    ogg_stream_init(&encoder.stream, streamSerial);

    writeHeaders(encoder, path);
    for (size_t at = 0; at < sound.frames(); at += framesPerBlock) {
        const size_t frames = std::min(framesPerBlock, sound.frames() - at);
        float** buffer = vorbis_analysis_buffer(&encoder.dsp, int(frames));
        std::copy_n(sound.left.begin() + at, frames, buffer[0]);
        std::copy_n(sound.right.begin() + at, frames, buffer[1]);
        vorbis_analysis_wrote(&encoder.dsp, int(frames));
        writeReady(encoder, path);
    }
    vorbis_analysis_wrote(&encoder.dsp, 0);  // no more samples
    writeReady(encoder, path);

    ogg_stream_clear(&encoder.stream);
    vorbis_block_clear(&encoder.block);
    vorbis_dsp_clear(&encoder.dsp);
    vorbis_comment_clear(&encoder.comment);
    vorbis_info_clear(&encoder.info);
    require(fclose(encoder.file) == 0, path);
}

}  // namespace audio
