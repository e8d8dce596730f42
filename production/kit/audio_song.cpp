#include "production/kit/audio_song.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "production/kit/audio_filter.h"

namespace {

constexpr float stepsPerBar = 16;
constexpr double ringing = 5;  // seconds that a part's last note may need to die away

const Part& partOf(const Song& song, const char* name) {
    for (const Part& part : song.parts)
        if (!strcmp(part.name, name)) return part;
    fprintf(stderr, "No part is called \"%s\"\n", name);
    exit(1);
}

// The chords from a bar on, as many as there are until the last row begins to repeat.
std::vector<Chord> chordsFrom(const Song& song, int bar, int count) {
    std::vector<Chord> chords;
    for (int i = bar; i < bar + count; i++) {
        const Harmony* row = &song.harmony.front();
        for (const Harmony& each : song.harmony)
            if (each.from <= i) row = &each;
        const std::vector<Chord> all = chordsOf(row->chords);
        const int size = int(all.size());
        chords.push_back(all[((i - row->from) % size + size) % size]);
    }
    return chords;
}

Pattern patternOf(const Part& part, std::string_view text, const std::vector<Chord>& chords) {
    switch (part.notation) {
        case Notation::melody:
            return melodyOf(text);
        case Notation::hits:
            return hitsOf(text);
        case Notation::arpeggio:
            return arpeggioOf(text, chords, part.pitch);
        case Notation::bass:
            return bassOf(text, chords, part.pitch);
        case Notation::stabs:
            return stabsOf(text, chords, part.pitch);
    }
    return {};
}

// Patterns over chords change with each bar, so they are written out over all of the cue's bars, with rests
// in front where the cue begins within one.
std::string writtenOut(std::string_view pattern, float from, float to) {
    std::string once;
    for (const char mark : pattern)
        if (mark != ' ') once += mark;
    const float firstBar = std::floor(from);
    std::string marks(size_t(std::lround((from - firstBar) * stepsPerBar)), '.');
    while (!once.empty() && float(marks.size()) < (to - firstBar) * stepsPerBar) marks += once;
    return marks;
}

void addNotes(const Song& song, const Part& part, const Cue& cue, std::vector<Note>& notes) {
    const bool overChords = part.notation != Notation::melody && part.notation != Notation::hits;
    const float origin = overChords ? std::floor(cue.from) : cue.from;
    const std::string text = overChords ? writtenOut(cue.pattern, cue.from, cue.to) : cue.pattern;
    const int bars = int(std::ceil(cue.to)) - int(std::floor(cue.from));
    const Pattern pattern = patternOf(part, text, chordsFrom(song, int(std::floor(cue.from)), bars));
    const double stepSeconds = 15 / song.beatsPerMinute;
    const float steps = (cue.to - origin) * stepsPerBar;
    const float shift = float(cue.transpose + (part.notation == Notation::melody ? part.pitch : 0));
    for (float start = 0; pattern.length && start < steps; start += float(pattern.length)) {
        for (const Step& step : pattern.steps) {
            const float at = start + step.at;
            if (at >= steps - 0.001f) break;
            const float length = std::min(step.length, steps - at);
            const float way = at / steps;
            notes.push_back({song.secondsAt(origin) + at * stepSeconds, float(length * stepSeconds),
                             step.pitch + shift, step.velocity * gainOf(cue.level.at(way)),
                             cue.bright.at(way)});
        }
    }
}

std::vector<Note> notesOf(const Song& song, const Part& part) {
    std::vector<Note> notes;
    for (const Cue& cue : song.cues)
        if (!strcmp(cue.part, part.name)) addNotes(song, part, cue, notes);
    std::stable_sort(notes.begin(), notes.end(),
                     [](const Note& a, const Note& b) { return a.start < b.start; });
    return notes;
}

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
    if (channel.duck > 0) {
        for (size_t i = 0; i < sound.frames() && at + i < ducking.size(); i++) {
            const float dip = 1 - channel.duck * (1 - ducking[at + i]);
            sound.left[i] *= dip;
            sound.right[i] *= dip;
        }
    }
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
