#include "production/kit/sound/mix.h"

#include <algorithm>
#include <deque>
#include <future>
#include <thread>

#include "production/kit/sound/arrangement.h"
#include "production/kit/sound/dynamics.h"
#include "production/kit/sound/filter.h"

namespace audio {

namespace {

constexpr double ringing = 5;   // seconds that a part's last note may need to die away
constexpr double leadIn = 2.5;  // seconds before a window in which its rooms fill

struct Buses {
    size_t origin;  // the song's frame that the buses begin on
    Stereo drums, dry, room, hall, echo;

    Buses(size_t origin, size_t frames)
        : origin(origin), drums(frames), dry(frames), room(frames), hall(frames), echo(frames) {}
};

// Notes that follow each other without a long rest, played through their part's channel.
struct Run {
    std::ptrdiff_t at;  // the song's frame
    Stereo sound;       // before the kick's dips
};

Run playRun(const Part& part, std::vector<Note> notes) {
    const double from = std::max(0.0, notes.front().start);
    double to = 0;
    for (const Note& note : notes) to = std::max(to, note.start + note.length + ringing);
    for (Note& note : notes) note.start -= from;
    Run run{std::ptrdiff_t(frameAt(from)), Stereo(frameAt(to - from))};
    part.play(notes, run.sound);

    const Channel& channel = part.channel;
    if (channel.lowCut > 20) Equalizer::lowCut(channel.lowCut).apply(run.sound);
    if (channel.highCut < 20000) Equalizer::highCut(channel.highCut).apply(run.sound);
    if (channel.chorus > 0) chorus(run.sound, channel.chorus);
    if (channel.width != 1) widen(run.sound, channel.width);
    if (channel.monoBelow > 0) shapeSides(run.sound, {Equalizer::lowCut(channel.monoBelow)});
    return run;
}

std::vector<Run> playPart(const Part& part, const std::vector<Note>& notes) {
    std::vector<Run> runs;
    std::vector<Note> current;
    double sounding = 0;
    for (const Note& note : notes) {
        if (!current.empty() && note.start > sounding + ringing) {
            runs.push_back(playRun(part, std::move(current)));
            current.clear();
        }
        current.push_back(note);
        sounding = std::max(sounding, note.start + note.length);
    }
    if (!current.empty()) runs.push_back(playRun(part, std::move(current)));
    return runs;
}

void send(const Part& part, Run& run, const std::vector<float>& ducking, Buses& buses) {
    const Channel& channel = part.channel;
    const float gain = gainOf(channel.level);
    const std::ptrdiff_t at = run.at - std::ptrdiff_t(buses.origin);
    for (const auto& [bus, level] : {std::pair{&buses.echo, channel.echo}, {&buses.hall, channel.hall}})
        if (level > off) mixAt(*bus, run.sound, at, gain * gainOf(level), channel.pan);
    if (channel.duck > 0) duck(run.sound, ducking, channel.duck, size_t(run.at));
    if (channel.room > off) mixAt(buses.room, run.sound, at, gain * gainOf(channel.room), channel.pan);
    mixAt(part.role == Role::drums ? buses.drums : buses.dry, run.sound, at, gain, channel.pan);
}

// The notes that can be heard in the buses' time.
std::vector<Note> notesInReach(const Song& song, const Part& part, const Buses& buses) {
    std::vector<Note> notes = notesOf(song, part);
    const double from = double(buses.origin) / sampleRate;
    const double to = from + double(buses.dry.frames()) / sampleRate;
    std::erase_if(notes, [&](const Note& note) {
        return note.start >= to || note.start + note.length + (from > 0 ? leadIn : ringing) < from;
    });
    return notes;
}

// Plays as many parts at once as there are cores, and mixes them in the band's order whoever is ready first,
// so that the sums are the same each time.
void playAll(const Song& song, const std::vector<const Part*>& parts, const std::vector<float>& ducking,
             Buses& buses) {
    const size_t cores = std::max(1u, std::thread::hardware_concurrency());
    std::deque<std::future<std::vector<Run>>> playing;
    size_t next = 0;
    for (const Part* part : parts) {
        for (; next < parts.size() && playing.size() < cores; next++)
            playing.push_back(std::async(std::launch::async, [&song, &buses, part = parts[next]] {
                return playPart(*part, notesInReach(song, *part, buses));
            }));
        std::vector<Run> runs = playing.front().get();
        playing.pop_front();
        for (Run& run : runs) send(*part, run, ducking, buses);
    }
}

bool silent(const Stereo& sound) {
    const auto zero = [](float sample) { return sample == 0; };
    return std::all_of(sound.left.begin(), sound.left.end(), zero) &&
           std::all_of(sound.right.begin(), sound.right.end(), zero);
}

void clip(Stereo& sound, const Clip& clip, const Stereo* whole) {
    clipSoftly(sound, clip.drive, whole);
    scale(sound, gainOf(clip.level));
}

// Drums and music through their clips, the sends through their rooms, all into the dry bus.
void sumUp(const Song& song, const std::vector<float>& ducking, const Unclipped* whole, Buses& buses) {
    const Mixer& mixer = song.mixer;
    std::thread drums([&] {
        clip(buses.drums, mixer.drums, whole ? &whole->drums : nullptr);
        if (!silent(buses.room)) reverberate(buses.room, mixer.room);
    });
    if (!silent(buses.echo)) pingPong(buses.echo, 3 * song.grid.sixteenth(), mixer.echo);
    mixAt(buses.hall, buses.echo, 0, mixer.echoToHall);
    if (!silent(buses.hall)) reverberate(buses.hall, mixer.hall);
    duck(buses.hall, ducking, mixer.hallDuck, buses.origin);
    clip(buses.dry, mixer.music, whole ? &whole->music : nullptr);
    for (Stereo* wide : {&buses.echo, &buses.hall}) widen(*wide, mixer.width);
    drums.join();
    for (const Stereo* bus : {&buses.drums, &buses.echo, &buses.room, &buses.hall}) mixAt(buses.dry, *bus, 0);
}

// One section of the mix in its colour and at its level.
void colour(const Song& song, const Section& section, const Stereo& mix, size_t origin, Stereo& coloured) {
    constexpr size_t lead = sampleRate / 10, edge = 64;  // frames for the filters to settle, and of a fade
    const bool first = &section == &song.sections.front(), last = &section == &song.sections.back();
    const auto inMix = [&](size_t frame) {
        return std::clamp(frame, origin, origin + mix.frames()) - origin;
    };
    const size_t from = first ? 0 : inMix(frameAt(song.grid.secondsAt(section.from)));
    const size_t to = last ? mix.frames() : inMix(frameAt(song.grid.secondsAt(section.to)));
    if (from == to) return;
    const size_t before = from - std::min(from, lead);
    Stereo part = sliceOf(mix, before, std::min(mix.frames(), to + edge));
    const ToneCorners& corners = song.mixer.tone;
    Equalizer::lowShelf({corners.low, section.tone.low}).apply(part);
    Equalizer::bell({corners.middle, section.tone.middle, corners.octaves}).apply(part);
    Equalizer::highShelf({corners.high, section.tone.high}).apply(part);
    for (size_t i = from; i < before + part.frames(); i++) {
        const double way =
            (song.grid.barAt(double(origin + i) / sampleRate) - section.from) / (section.to - section.from);
        const float in = first ? 1 : std::min(1.0f, float(i - from) / edge);
        const float out = i < to ? 1 : 1 - float(i - to) / edge;
        const float gain = in * out * gainOf(section.level.at(float(std::clamp(way, 0.0, 1.0))));
        coloured.add(i, gain * part.at(i - before));
    }
}

// What of the master is the same however loud it is.
void shape(const Master& master, Stereo& sound) {
    Equalizer::lowCut(master.lowCut).apply(sound);
    for (const Bell& bell : master.bells) Equalizer::bell(bell).apply(sound);
    Equalizer::highShelf(master.highs).apply(sound);
    const Equalizer centre = Equalizer::lowCut(master.centredBelow);
    shapeSides(sound, {centre, centre});
    scale(sound, gainOf(master.gain));
}

}  // namespace

Stereo perform(const Song& song, const Window& window, const std::vector<std::string_view>& heard,
               const Unclipped* whole, Unclipped* kept) {
    std::vector<size_t> triggers;
    for (const Note& note : notesOf(song, *partOf(song, song.mixer.duckedBy)))
        triggers.push_back(frameAt(note.start));
    const std::vector<float> ducking = duckingCurve(frameAt(song.seconds), triggers, song.mixer.duckRecovery);

    std::vector<const Part*> parts;
    for (const Part& part : song.parts)
        if (heard.empty() || std::find(heard.begin(), heard.end(), part.name) != heard.end())
            parts.push_back(&part);
    const size_t origin = window.from - std::min(window.from, frameAt(leadIn));
    Buses buses(origin, window.to - origin);
    playAll(song, parts, ducking, buses);
    if (kept) *kept = {buses.drums, buses.dry};
    sumUp(song, ducking, whole, buses);
    Stereo coloured(buses.dry.frames());
    for (const Section& section : song.sections) colour(song, section, buses.dry, origin, coloured);
    return sliceOf(coloured, window.from - origin, window.to - origin);
}

MasterGains passMaster(const Master& master, Stereo& whole) {
    shape(master, whole);
    std::vector<float> compressor = compress(whole, master.compressor);
    return {std::move(compressor), limit(whole, master.limiter)};
}

void passMaster(const Master& master, const MasterGains& gains, Stereo& part) {
    shape(master, part);
    for (size_t i = 0; i < part.frames(); i++)
        part.set(i, gains.limiter[i] * (gains.compressor[i] * part.at(i)));
}

}  // namespace audio
