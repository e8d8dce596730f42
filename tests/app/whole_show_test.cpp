// The show as its audience has it: the program from the first note to its own end, in real time, with sound.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

#include "app/sound_music.h"
#include "script/timeline.h"
#include "tests/sound/signal.h"
#include "tests/sound/sound_server.h"

namespace {

TEST(WholeShow, LastsAsLongAsItsProgrammeAndIsHeardToTheEnd) {
    SoundServer server;
    Recorder recorder(server);
    int output[2];
    ASSERT_EQ(pipe2(output, O_CLOEXEC), 0);
    // Line by line, so that the line about the sound comes when the music starts.
    const pid_t show = startProcess({"stdbuf", "-oL", VALOJUOVA_PROGRAM, "-win"}, output[1], STDERR_FILENO);
    close(output[1]);
    FILE* lines = fdopen(output[0], "r");
    char line[100] = "";
    ASSERT_TRUE(fgets(line, sizeof line, lines));
    const double started = secondsNow();
    EXPECT_STREQ(line, "Using ALSA.\n");

    int status = -1;
    ASSERT_EQ(waitpid(show, &status, 0), show);
    const double length = secondsNow() - started;
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_FALSE(fgets(line, sizeof line, lines)) << line;
    fclose(lines);
    const double programmeLength = programme().back().begin;
    EXPECT_GT(length, programmeLength - 1);

    // On a busy machine the sound may break off now and then, and the show give way by as much.
    const std::vector<float> music = decodeVorbis(SoundMusic::path);
    const std::vector<float>& recording = recorder.samples();
    int sought = 0, heard = 0;
    for (int second = 3; second < int(programmeLength); second += 4, sought++) {
        heard +=
            locate(recording, recorder.frameAt(started + second), music, second * recordRate, recordRate / 2)
                .has_value();
    }
    EXPECT_GT(heard, sought / 2);
}

}  // namespace
