// The clock over the show's own music, played by no output.
#include "app/sound_music.h"

#include <gtest/gtest.h>

#include "tests/sound/signal.h"
#include "tests/sound/sound_server.h"

namespace {

TEST(SoundMusic, StandsAfterOnePauseAndAfterTwo) {
    const std::string path = scratchPath("music.ogg");
    writeVorbis(path, makeTone(1, recordRate, 441), recordRate, 2);
    sound::setOutput(sound::None);
    sound::start(44100, 16);
    SoundMusic music;
    music.stream = sound::openStream(path.c_str());
    sound::play(SoundMusic::channel, music.stream);
    MusicClock clock;
    clock.source = &music;
    sleepSeconds(0.05);
    clock.update();
    EXPECT_GE(clock.time(), 0.049f);

    for (const bool paused : {true, false, true}) {
        clock.pause();
        EXPECT_EQ(clock.paused, paused);
        const int standing = music.position();
        sleepSeconds(0.05);
        EXPECT_EQ(music.position(), standing);
        clock.seek(clock.time() + 30);
        EXPECT_EQ(music.position(), int((clock.time() + 30) * 1000)) << "seeking still moves it";
    }
    sound::stop();
}

}  // namespace
