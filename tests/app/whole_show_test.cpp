// The show with its sound, from the first note to its own end: heard at stops all along its music, through a
// storm of keys before them, and in time at its end though the server dies on the way.
#include <algorithm>
#include <sstream>

#include "app/sound_music.h"
#include "script/timeline.h"
#include "tests/app/program.h"
#include "tests/sound/signal.h"

namespace {

struct WholeShow : UndrawnShow {
    // A key in a frame of its own, as the line of a shot that can't be written tells: the clock takes one
    // seek a frame.
    void pressAlone(const std::string& key) const {
        const size_t before = errors().size();
        press(key + " F11", 0);
        await(process, [&] { return errors().size() != before; });
    }
};

TEST_F(WholeShow, IsHeardAllAlongAndEndsInTimeWhateverBecomesOfItsKeysShotsAndServer) {
    SoundServer server;
    Recorder recorder(server);
    EXPECT_EQ(start(""), "Using ALSA.\n");
    press("Right Left Right Left F11 Up Down Up Down F11 q w a s space Right Left F11 Left Left", 20);
    pressAlone("Page_Up");  // to 0, from less than 30 s

    const double begun = steadySeconds();
    double sought = 0;  // what the keys have moved the music by since, seconds
    struct Stop {
        double heardAt, second;
    };
    std::vector<Stop> stops;
    const auto listen = [&] {
        for (int i = 0; i < 2; i++) {
            sleepSeconds(0.75);
            stops.push_back({steadySeconds(), steadySeconds() - begun + sought});
        }
    };
    listen();
    for (const auto& [key, seconds] : {std::pair{"Page_Down", 30},
                                       {"Page_Down", 30},
                                       {"Page_Down", 30},
                                       {"Page_Down", 30},
                                       {"Page_Down", 30},
                                       {"Up", 5},
                                       {"Up", 5}}) {
        pressAlone(key);
        sought += seconds;
        listen();
    }
    const std::vector<float>& recording = recorder.samples();
    server.kill();
    pressAlone("Left");
    pressAlone("Right");

    EXPECT_EQ(end(true), 0);
    EXPECT_GT(steadySeconds() - begun + sought, programme().back().begin - 1);

    std::istringstream lines(errors());
    int shots = 0;
    for (std::string line; std::getline(lines, line); shots++) {
        char expected[80];
        snprintf(expected, sizeof expected, "can't open w:/shots/shot%04d.png", shots);
        EXPECT_EQ(line, expected);
    }
    EXPECT_GE(shots, 10) << "one for each key in a frame of its own";

    // On a busy machine the sound may break off now and then: somewhere within the half second before each
    // stop it is heard.
    const std::vector<float> music = decodeVorbis(SoundMusic::path);
    const auto isHeard = [&](const Stop& stop) {
        for (double before = 0; before < 0.5; before += 0.1) {
            const long expected = long((stop.second - before) * recordRate);
            if (locate(recording, recorder.frameAt(stop.heardAt - before), music, expected,
                       recordRate * 3 / 2))
                return true;
        }
        return false;
    };
    const auto heard = std::count_if(stops.begin(), stops.end(), isHeard);
    EXPECT_GT(heard, int(stops.size()) / 2);
}

}  // namespace
