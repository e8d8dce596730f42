// What ./play and ./test start ends with them, whatever they are at: a build as well as an installation.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <algorithm>

#include "tests/scratch.h"
#include "tests/sound/sound_server.h"
#include "tests/tools/run.h"

namespace {

// This process inherits what those that it started leave running.
class Prepare : public testing::Test {
public:
    void SetUp() override { prctl(PR_SET_CHILD_SUBREAPER, 1); }
    void TearDown() override { prctl(PR_SET_CHILD_SUBREAPER, 0); }

    // Sources tools/prepare.sh in a folder of its own, runs the command, and ends it by the signal as soon as
    // the file `begun` is there. Returns its status as waitpid has it.
    int endOnceBegun(const std::string& command, int signal) const {
        const std::string script = ". " + std::filesystem::absolute("tools/prepare.sh").string() + "; cd " +
                                   folder.path.string() + "; " + command;
        const pid_t process = startProcess({"env", "--default-signal", "bash", "-euc", script});
        int status = 0;
        while (!std::filesystem::exists(folder.file("begun"))) {
            if (waitpid(process, &status, WNOHANG) == process) return status;
            sleepSeconds(0.05);
        }
        kill(process, signal);
        waitpid(process, &status, 0);
        return status;
    }
    static bool isAnythingLeft() {
        pid_t ended;
        while ((ended = waitpid(-1, nullptr, WNOHANG)) > 0) continue;
        return ended == 0;
    }

    ScratchDirectory folder;
};

TEST_F(Prepare, WhatIsAttendedEndsWithTheScript) {
    folder.write("CMakeLists.txt",
                 "cmake_minimum_required(VERSION 3.25)\n"
                 "project(long NONE)\n"
                 "add_custom_target(long ALL COMMAND sh -c 'touch ../begun && sleep 1000')\n");
    for (const std::string command : {"build", "DISPLAY= withDisplay sh -c 'touch begun; sleep 1000'"}) {
        for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
            std::filesystem::remove(folder.file("begun"));
            const int status = endOnceBegun(command, signal);
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << command << status;
            EXPECT_FALSE(isAnythingLeft()) << command << signal;
        }
    }
}

// Its id may be a stranger's by then, whom no signal of this script must end.
TEST_F(Prepare, WhatHasEndedIsNotAttendedAnyMore) {
    const int status = endOnceBegun(
        "attend sh -c 'exit 3' || [ $? = 3 ]; attend true; [ -z \"$attended$(trap -p)\" ]; exit 5", SIGTERM);
    EXPECT_EQ(WEXITSTATUS(status), 5);
}

TEST_F(Prepare, FuzzRefusesWhatItDoesNotKnowBeforeItDoesAnything) {
    for (const char* words : {"nonsense", "0", "png 1x", "1 2", "-1", "png 999999", "'aml png'"}) {
        const Result refused = shell(std::string("./fuzz ") + words);
        EXPECT_EQ(refused.status, 1) << words;
        EXPECT_TRUE(refused.output.starts_with("fuzz: ")) << refused.output;
        EXPECT_EQ(std::count(refused.output.begin(), refused.output.end(), '\n'), 1) << refused.output;
    }
    EXPECT_TRUE(shell("./fuzz --help").output.starts_with("usage: ./fuzz [FORMAT...] [MINUTES]"));
}

// Cut off in the middle, dpkg would leave a package that has to be mended first.
TEST_F(Prepare, AnInstallationIsFinishedFirst) {
    folder.write("package/DEBIAN/control",
                 "Package: slow\nVersion: 1\nArchitecture: all\nMaintainer: nobody\nDescription: slow\n");
    const std::string script =
        folder.write("package/DEBIAN/preinst", "#!/bin/sh\n>" + folder.file("begun") + "\nsleep 1\n");
    std::filesystem::permissions(script, std::filesystem::perms(0755));
    std::filesystem::create_directories(folder.path / "root/var/lib/dpkg/updates");
    std::filesystem::create_directories(folder.path / "root/var/lib/dpkg/info");
    folder.write("root/var/lib/dpkg/status", "");
    const int status = endOnceBegun(
        "dpkg-deb -b package; attendUnbroken dpkg --root=$PWD/root --log=log --force-not-root "
        "--force-script-chrootless -i package.deb",
        SIGTERM);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << status;
    EXPECT_FALSE(isAnythingLeft());
    EXPECT_EQ(std::system(("dpkg-query --admindir=" + folder.file("root/var/lib/dpkg") +
                           " -Wf '${db:Status-Status}' slow | grep -qx installed")
                              .c_str()),
              0);
}

}  // namespace
