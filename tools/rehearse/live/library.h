// The show's code as a library: built in the background when a source of script/ or effects/ was saved,
// loaded under a name of its own, and in force from the next frame on.
#pragma once

#include <filesystem>
#include <string>

#include "tools/rehearse/background_build.h"
#include "tools/rehearse/live/code.h"
#include "tools/rehearse/live/comeback.h"

struct LiveCode {
    std::string folder;     // what script/ and effects/ lie in, with a slash at its end unless it is empty
    BackgroundBuild build;  // without a command where there are no sources
    std::string problem;    // why the last library is not in force, or is no more
    Comeback left;          // if the library in force, or that which is being loaded, fails

    // Of the sources beside `production` or, where that is empty, in the working directory, if there are any.
    explicit LiveCode(const std::string& production);
    ~LiveCode();
    LiveCode& operator=(LiveCode&&) = delete;

    // Builds it already: the first save would wait for that. It is in force only if a source is younger than
    // this program.
    void begin() { build.request(); }
    // Goes on with the code before that which failed, and builds: what was saved meanwhile nobody has seen.
    void comeBack(const Comeback& state);

    // Whether that is a source of it.
    bool isSource(const std::string& path) const;
    // Puts what is built into force already, so that its numbers can be turned. True if it is: there are no
    // effects then.
    bool load();
    // Once a frame, while nothing is drawn. True if another library is in force: there are no effects then.
    bool poll();
    // Makes the constants of the library in force anew, of the numbers as they are turned now. There are no
    // effects then.
    void renew();

private:
    // Puts a library into force. False, with `problem`, if it does not fit: what was in force still is.
    bool take(const std::string& library);
    // Calls that which is loaded from now on.
    void use(void* library);
    std::string built;  // the library that is built, over and over
    int taken = 0;
    void* handle = nullptr;
    std::filesystem::file_time_type failed{};  // the time of the library that did

    std::string copyOfBuilt();
    bool isLinkedOutdated() const;
};
