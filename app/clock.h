// The music clock and the beat: every motion of the show is a function of the position of the playing music.
// The clock samples one source once a frame; seeking and pausing act on the source, so picture and sound
// agree.
#pragma once

#include <cstdint>

// Whatever gives the music's position: the sound stream in the show, a stepped counter in films and tests.
struct MusicSource {
    virtual ~MusicSource() = default;
    virtual int position() = 0;            // milliseconds from the start of the music
    virtual void setPosition(int ms) = 0;  // never negative
    virtual void pause() = 0;              // holds the music where it is; nothing resumes it
    virtual const float* spectrum();       // 512 magnitudes of what is playing; all zeros here
};

// A source that stands wherever it is put: any moment of the show can be asked for.
struct SteppedMusic : MusicSource {
    int ms = 0;

    int position() override { return ms; }
    void setPosition(int target) override { ms = target; }
    void pause() override {}
};

// Seconds of the music, as the clock reads a position in milliseconds.
float musicTime(int ms);

// Beats since beat 0 on the grid of the music, at `time` seconds; negative before.
float beatPositionAt(float time);

struct MusicClock {
    MusicSource* source = nullptr;  // not owned; nullptr stands at 0

    float beatCount = 0;     // beats registered so far
    bool paused = false;     // flips with every pause, though only the first one has an effect
    int32_t frameCount = 0;  // frames since the last frame-rate sample
    float lastRate = 0;      // frames per second at the last sample
    float sampleStart = 0;   // milliseconds: when the last sample was taken
    float bpm = 140;
    float pulseLength = 0.05f;   // seconds
    float lastBeatTime = 0;      // seconds
    float currentTime = 0;       // seconds, this frame
    float previousTime = 0;      // seconds, the update before
    float delta = 0;             // currentTime - previousTime; negative after a seek backwards
    bool autoBeatLatch = false;  // set from an automatic beat until the second part of its period

    // Samples the source; once a frame.
    void update();
    // Seconds, as of the last update.
    float time() const { return currentTime; }
    // Moves the music to `target` seconds; what is not greater than 0 (or not a number) goes to the start.
    void seek(float target);
    void pause();
    void registerBeat();
    // 1 at a beat, falling to 0 over 0.3 s; above 1 when the music was moved to before the last beat.
    float beatPulse();
    void setBpm(float value) { bpm = value; }
    void setPulseLength(float seconds) { pulseLength = seconds; }
    // Housekeeping counts every frame twice, so this reads twice the true rate; sampled each half second.
    float frameRate();
    // Beats since beat 0, in this frame.
    float beatPosition() const { return beatPositionAt(currentTime); }
    // 512 magnitudes of the music, analysed from the first call on.
    const float* spectrum();
    // The beat that follows the grid by itself, from a moment before beat 0 on; once per housekeeping.
    void runAutoBeat();
};
