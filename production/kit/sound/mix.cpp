#include "production/kit/sound/mix.h"

#include <algorithm>
#include <cmath>

#include "production/kit/sound/arrangement.h"
#include "production/kit/sound/filter.h"

namespace audio {

namespace {

constexpr double ringing = 5;  // seconds that a part's last note may need to die away

struct Buses {
    Stereo dry, room, hall, echo;
    explicit Buses(size_t frames) : dry(frames), room(frames), hall(frames), echo(frames) {}
};

// Plays notes that follow each other without a long rest, and sends them through the part's channel.
void playRun(const Part& part, std::vector<Note> run, const std::vector<float>& ducking, Buses& buses) {
    const double from = std::max(0.0, run.front().start);
    double to = 0;
    for (const Note& note : run) to = std::max(to, note.start + note.length + ringing);
    for (Note& note : run) note.start -= from;
    const size_t at = frameAt(from);
    Stereo sound(frameAt(to - from));
    part.play(run, sound);

    const Channel& channel = part.channel;
    if (channel.lowCut > 20) Equalizer::lowCut(channel.lowCut).apply(sound);
    if (channel.chorus > 0) chorus(sound, 1, channel.chorus);
    if (channel.width != 1) widen(sound, channel.width);
    const float gain = gainOf(channel.level);
    for (const auto& [bus, level] : {std::pair{&buses.echo, channel.echo}, {&buses.hall, channel.hall}})
        if (level > off) mixAt(*bus, sound, at, gain * gainOf(level), channel.pan);
    if (channel.duck > 0) duck(sound, ducking, channel.duck, at);
    if (channel.room > off) mixAt(buses.room, sound, at, gain * gainOf(channel.room), channel.pan);
    mixAt(buses.dry, sound, at, gain, channel.pan);
}

void playPart(const Part& part, const std::vector<Note>& notes, const std::vector<float>& ducking,
              Buses& buses) {
    std::vector<Note> run;
    double sounding = 0;
    for (const Note& note : notes) {
        if (!run.empty() && note.start > sounding + ringing) {
            playRun(part, run, ducking, buses);
            run.clear();
        }
        run.push_back(note);
        sounding = std::max(sounding, note.start + note.length);
    }
    if (!run.empty()) playRun(part, run, ducking, buses);
}

}  // namespace

Stereo perform(const Song& song) {
    for (const Cue& cue : song.cues) partOf(song, cue.part);  // refuses a name that no part has
    const size_t frames = frameAt(song.seconds);
    std::vector<size_t> triggers;
    for (const Note& note : notesOf(song, partOf(song, song.duckedBy)))
        triggers.push_back(frameAt(note.start));
    const std::vector<float> ducking = duckingCurve(frames, triggers, song.duckRecovery);

    Buses buses(frames);
    for (const Part& part : song.parts) playPart(part, notesOf(song, part), ducking, buses);

    pingPong(buses.echo, 45 / song.beatsPerMinute, song.echoFeedback, 300, 5000);
    mixAt(buses.hall, buses.echo, 0, 0.3f);
    mixAt(buses.dry, buses.echo, 0);
    reverberate(buses.room, song.room);
    mixAt(buses.dry, buses.room, 0);
    reverberate(buses.hall, song.hall);
    duck(buses.hall, ducking, 0.35f);
    mixAt(buses.dry, buses.hall, 0);
    return std::move(buses.dry);
}

}  // namespace audio
