// The program as its users meet it: run as a process in a folder of its own, by what it prints and how it
// ends.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/scratch.h"
#include "tests/sound/sound_server.h"
#include "tests/tools/run.h"

struct Outcome {
    int status;  // -1 if it did not end by itself
    std::string output;
    std::string errors;
};

class Program : public testing::Test {
public:
    // Where the program runs: a directory without data, unless a test puts some there.
    ScratchDirectory scratch;
    // What is run, as the shell takes it.
    std::string program = VALOJUOVA_PROGRAM;

    // For tests that only look at what is read, printed and played: the GL driver takes everything and draws
    // nothing or, where its driver for that can't start (Mesa 25), prepares everything and leaves the pixels
    // out.
    void leaveDrawingOut() {
        static const bool noDriver = run("-win -nosound", "GALLIUM_NOOP=1").status == 0;
        environment.set(noDriver ? "GALLIUM_NOOP" : "LP_NO_RAST", "1");
    }

    // Puts the data set into the directory.
    void linkData() const { linkDataSet(scratch.path); }

    // Runs it to its end.
    Outcome run(const std::string& options, const std::string& environment = "") const {
        const std::string command = "cd " + scratch.path.string() + " && " + environment + " " + program +
                                    " " + options + " >output 2>errors";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(scratch.file("output")), errors()};
    }

    // Starts it in a window and goes on when everything has been loaded. Returns the line about
    // the sound.
    std::string start(const std::string& options) {
        int output[2];
        if (pipe2(output, O_CLOEXEC) != 0) return "no pipe";
        // Not with what a night in the background ignores, nor the variable that the tests' own window sets.
        const std::string command =
            "cd " + scratch.path.string() +
            " && exec env --default-signal -u SDL12COMPAT_OPENGL_SCALING stdbuf -oL " + program + " -win " +
            options + " 2>errors";
        process = startShell(command, output[1]);
        close(output[1]);
        std::string line;
        for (char c; !line.ends_with('\n') && read(output[0], &c, 1) == 1;) line += c;
        close(output[0]);
        return line;
    }
    // Presses keys in its window and in no other, `delay` milliseconds apart.
    void press(const std::string& keys, int delay) const {
        act("key --window %1 --delay " + std::to_string(delay) + " " + keys, "Valojuova");
    }
    // Has xdotool do something to its window, %1, which bears that name.
    void act(const std::string& words, const std::string& name) const {
        const std::string search =
            "xdotool search --all --pid " + std::to_string(process) + " --name " + name + " ";
        // A window that is being made may not have its name yet; a program that has died gets none.
        while (std::system((search + ">/dev/null 2>&1").c_str()) != 0 && runs()) usleep(20000);
        ASSERT_TRUE(runs()) << errors();
        // The window may go between a key's press, which ends the program, and its release.
        EXPECT_TRUE(std::system((search + words + " 2>/dev/null").c_str()) == 0 || !runs()) << words;
    }
    // Whether what was started has not ended yet.
    bool runs() const { return isRunning(process); }
    void send(int signal) const { kill(process, signal); }
    // What it has printed to standard error.
    std::string errors() const { return contentOf(scratch.file("errors")); }
    // Waits for the end of what was started, after a click on the close button if that is asked for.
    int end(bool byItself) {
        // SDL makes a click of it.
        if (!byItself) kill(process, SIGTERM);
        int status = 0;
        waitpid(process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    pid_t process = -1;

private:
    Environment environment;
};

// With the show's files, where nobody looks at its pixels.
class UndrawnShow : public Program {
public:
    void SetUp() override {
        leaveDrawingOut();
        linkData();
    }
};
