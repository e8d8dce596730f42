// The named numbers of what is drawing, under the author's hands: each can be turned, seen at once, undone,
// compared with what its source has, and written back there.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "tools/loading/loading.h"
#include "tools/rehearse/live/library.h"
#include "tools/rehearse/live/named_numbers.h"
#include "tools/rehearse/live/number.h"

struct TurnableNumber : NamedNumber {
    std::string file;    // as in "effects/robo.cpp" or "data/shaders/boom.fs"
    std::string remark;  // what its line says behind "//"
    int line;
    std::string source;  // the digits there
    std::string now;     // and those it is turned to
    double size;         // what it, or the greatest beside it, is about; not 0
    const Piece* piece;  // of the source, whose it is
    live::Slot* slot;    // nullptr in a shader

    // The constant's, with the label behind it.
    std::string name() const;
    // "effects/robo.cpp:12: turnSpeed"
    std::string place() const;
    bool turned() const { return now != source; }
    bool isUniform() const { return piece->keywords.contains("uniform"); }
    const std::string& seen(bool compared) const { return compared ? source : now; }
};

struct Numbers {
    std::string root;     // what script/ and effects/ lie in, with a slash at its end unless it is empty
    std::string shaders;  // the generator's folder, whose shaders are copied below data/; none if empty

    std::vector<TurnableNumber> all;
    std::vector<TurnableNumber> away;  // turned, and in no source at the moment
    std::vector<int> listed;           // those of what is drawing, and what is turned; by file
    int chosen = -1;                   // of all
    bool compared = false;             // what is seen is what the sources have
    std::vector<std::string> news;     // lines, for whoever takes them
    const ShowCode* code = nullptr;    // whose they are
    std::string suspect;               // the one of it that was turned last, as unwritten() tells it

    // Where something else is in force than what they are of: takes them anew. What was turned and not
    // written stays turned if its source has what it had. True if it was so.
    bool follow(const Loading& loading);
    // To the library in force, if some were turned: true then. Those that bring the programme out of order
    // are what they were.
    bool hand(LiveCode* live);
    // Before and after a frame is drawn: finds out what draws. `entry` is the programme's. True if others are
    // listed now.
    void beginFrame();
    bool endFrame(int entry);

    // By so many steps from `start`, digits that it had; a step changes the second of them. False if it is as
    // it was. What follows closely is undone as one, unless a gesture has ended in between.
    bool turn(int number, double steps, const std::string& start);
    bool turn(int number, double steps) { return turn(number, steps, all[size_t(number)].now); }
    bool turnTo(int number, const std::string& digits);
    // What is turned in the hand is one step, however long that takes.
    void beginGesture() { inHand = true, lastTurn = -1; }
    void endGesture() { inHand = false, lastTurn = -1; }
    // Undoes (-1) or redoes (1). False if there is nothing.
    bool step(int direction);
    // Between what the sources have and what is turned.
    void compare();
    // The next one of the list, or the one before.
    void choose(int steps);
    // Into its source, that one token; nothing if there is none, or the file is not what it was read from.
    void write(int number);

    // The number by which an entry of the programme begins; -1 if there is none.
    int cutOf(int entry);
    // What is turned, each a line; the chosen one first.
    std::vector<std::string> unwritten() const;
    // The same but for the suspect, for another start to take over.
    std::set<std::string> left() const;
    void takeOver(const std::set<std::string>& left);
    // To the programs, where a shader's text gives a uniform a value of its own.
    void giveUniforms() const;

private:
    struct Source {
        std::string text;
        NamedNumbers names;
    };
    struct Change {
        std::string number, before, after;
    };
    std::map<std::string, Source> sources;
    std::map<std::string, std::string> shaderTexts;  // as they are loaded
    std::map<std::string, std::string> unhanded;     // what numbers were when the library was told last
    std::vector<Change> changes;
    size_t done = 0;                // of the changes
    double lastTurn = -1;           // seconds
    bool inHand = false;            // between a gesture's begin and its end
    std::set<std::string> drawing;  // of the sources
    int drawnEntry = -1;

    void takeSource(const std::string& path, const std::string& text, live::Source* compiled);
    void list();
    bool show(const TurnableNumber& number);
    bool put(TurnableNumber& number, const std::string& digits);
    bool buildPrograms(const std::string& file);
};

// The digits `text` turned by so many steps of a number whose source has `source` and whose size is about
// `size`; whole if it is of an integer, else with an "f" where one of single precision is no integer any
// more.
std::string turnedBy(const std::string& text, const std::string& source, double steps, double size,
                     bool whole, bool single);
