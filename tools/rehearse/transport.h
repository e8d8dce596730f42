// The music under the author's hands: it can be held and go on, moved, stepped by frames and looped.
#pragma once

#include <memory>
#include <optional>

#include "app/clock.h"
#include "sound/heard_position.h"
#include "sound/sound.h"
#include "tools/rehearse/stem_mix.h"

// Whole milliseconds of the music.
struct Loop {
    int from;
    int to;  // not part of it

    bool operator==(const Loop&) const = default;
};

struct Transport : MusicSource {
    static constexpr int channel = 0;
    // What is held, and where jumps lead to, is a frame of this rate: one that a film of the show has too.
    static constexpr int framesPerSecond = 60;

    std::shared_ptr<Faders> faders = std::make_shared<Faders>();  // of the music's stems
    sound::Stream* stream = nullptr;  // nullptr: a music without sound, that runs by the machine's clock
    sound::Playhead silent;           // where that one is
    int end = 0;                      // the first millisecond that is not played any more
    bool held = true;
    std::optional<Loop> loop;
    bool jumped = false;  // by setPosition, since whoever looks after jumps has cleared it

    // Never at or past the end: there it holds.
    int position() override;
    // On the frame nearest to `ms`, within the show.
    void setPosition(int ms) override;
    void pause() override { hold(); }
    const float* spectrum() override;

    void hold();
    void goOn();
    // One frame on (1) or back (-1), holding.
    void step(int frames);
    // Jumps back where the end of the loop was passed. True if it did. Once a frame.
    bool turn();
    // From the next turn on. A loop shorter than a bar's sixteenth is none.
    void setLoop(int from, int to);

    // Lets another music, or none if it is nullptr, play in the place of this one.
    void replaceMusic(std::unique_ptr<sound::Decoder> track);

    int rawPosition();
    void moveTo(int ms);
};

// The frame nearest to a time, and the time of a frame.
int nearestFrame(int ms);
int millisecondsOf(int frame);
