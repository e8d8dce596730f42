#include "production/kit/sound/vorbis.h"

#include <vorbis/vorbisenc.h>

#include <algorithm>
#include <fstream>

namespace audio {

namespace {

constexpr size_t framesPerBlock = 4096;

struct Encoder {
    vorbis_info info;
    vorbis_comment comment;
    vorbis_dsp_state dsp;
    vorbis_block block;
    ogg_stream_state stream;
    std::ofstream file;

    void writePage(const ogg_page& page) {
        file.write(reinterpret_cast<const char*>(page.header), page.header_len);
        file.write(reinterpret_cast<const char*>(page.body), page.body_len);
    }

    void writeHeaders() {
        ogg_packet identification, comments, codebooks, *headers[] = {&identification, &comments, &codebooks};
        vorbis_analysis_headerout(&dsp, &comment, &identification, &comments, &codebooks);
        for (ogg_packet* header : headers) ogg_stream_packetin(&stream, header);
        ogg_page page;
        while (ogg_stream_flush(&stream, &page)) writePage(page);
    }

    // Writes the pages that so many frames more in the analysis buffer fill; 0 ends the stream.
    void encode(size_t frames) {
        vorbis_analysis_wrote(&dsp, int(frames));
        ogg_packet packet;
        ogg_page page;
        while (vorbis_analysis_blockout(&dsp, &block) == 1) {
            vorbis_analysis(&block, nullptr);
            vorbis_bitrate_addblock(&block);
            while (vorbis_bitrate_flushpacket(&dsp, &packet)) {
                ogg_stream_packetin(&stream, &packet);
                while (ogg_stream_pageout(&stream, &page)) writePage(page);
            }
        }
    }
};

}  // namespace

bool writeVorbis(const std::string& path, const std::vector<std::span<const float>>& channels,
                 const VorbisForm& form) {
    Encoder encoder;
    encoder.file.open(path, std::ios::binary);
    vorbis_info_init(&encoder.info);
    if (vorbis_encode_init_vbr(&encoder.info, long(channels.size()), form.rate, form.quality) != 0) {
        vorbis_info_clear(&encoder.info);
        return false;
    }
    vorbis_comment_init(&encoder.comment);
    for (const Tag& tag : form.tags) vorbis_comment_add_tag(&encoder.comment, tag.name, tag.value);
    vorbis_analysis_init(&encoder.dsp, &encoder.info);
    vorbis_block_init(&encoder.dsp, &encoder.block);
    ogg_stream_init(&encoder.stream, form.serial);

    encoder.writeHeaders();
    const size_t all = channels.front().size();
    for (size_t at = 0, frames; at < all; at += frames) {
        frames = std::min(framesPerBlock, all - at);
        float** buffer = vorbis_analysis_buffer(&encoder.dsp, int(frames));
        for (size_t channel = 0; channel < channels.size(); channel++)
            std::copy_n(channels[channel].begin() + long(at), frames, buffer[channel]);
        encoder.encode(frames);
    }
    encoder.encode(0);

    ogg_stream_clear(&encoder.stream);
    vorbis_block_clear(&encoder.block);
    vorbis_dsp_clear(&encoder.dsp);
    vorbis_comment_clear(&encoder.comment);
    vorbis_info_clear(&encoder.info);
    encoder.file.close();
    return bool(encoder.file);
}

}  // namespace audio
