// A rehearsal as its users meet it: a process with a window, keys, a mouse and sound.
#pragma once

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "script/show_times.h"
#include "tests/app/program.h"

inline constexpr char music[] = "data/KVX - Ondrevane2.ogg";

// What is looked at is what the desk says, and what is heard.
class RehearseProgram : public UndrawnShow {
public:
    void SetUp() override {
        UndrawnShow::SetUp();
        program = REHEARSE_PROGRAM;
    }
    void TearDown() override { endProcess(process, SIGTERM); }

    // Starts it with the desk's state in a file, and goes on when it is there.
    void rehearse(const std::vector<std::string>& words) {
        std::vector<std::string> all = {"env", "-C", scratch.path, REHEARSE_PROGRAM, "--state", "state"};
        all.insert(all.end(), words.begin(), words.end());
        const int errors = creat(scratch.file("errors").c_str(), 0600);
        process = startProcess(all, -1, errors);
        close(errors);
        ASSERT_TRUE(await([&] { return !state("time").empty(); }));
    }
    virtual bool await(const std::function<bool()>& condition) const { return ::await(process, condition); }
    std::string desk() const { return contentOf(scratch.file("state")); }
    bool says(const std::string& words) const {
        return await([&] { return desk().find(words) != std::string::npos; });
    }
    // The first value of that name.
    std::string state(const std::string& name) const {
        std::istringstream lines(desk());
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with(name + ": ")) return line.substr(name.size() + 2);
        return "";
    }
    int time() const { return std::atoi(state("time").c_str()); }
    // Goes on when the keys are up: what is pressed again before that is one press that is held.
    void act(const std::string& words) const {
        Program::act(words, "rehearsal");
        for (int frames = 0; frames < 2; frames++) {
            const std::string before = state("now");
            ASSERT_TRUE(await([&] { return state("now") != before; }) || !runs());
        }
    }
    static int xAt(double seconds) { return int(12 + 776 * seconds / showtime::end.seconds()); }
};
