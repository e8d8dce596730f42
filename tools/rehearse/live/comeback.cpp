#include "tools/rehearse/live/comeback.h"

#include <errno.h>
#include <execinfo.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "tools/formatted.h"
#include "tools/process.h"

namespace {

constexpr char variable[] = "REHEARSE_COMEBACK";  // the descriptor that it is read from
constexpr int longestWork = 2;                    // seconds of the thread's own
constexpr int loopSignal = SIGVTALRM;
constexpr int crashes[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, loopSignal};

// What the handler hands on, which may allocate nothing.
struct Handed {
    int signal;
    int depth;        // of the calls
    void* calls[64];  // innermost first
    Whereabouts whereabouts;
    uintptr_t begin;
    char names[1 << 15];  // empty if there is nothing to go back to
} handed;
constexpr int callsOfHandler = 2;  // the first of them

int ends[2] = {-1, -1};  // of the pipe
char** words = nullptr;
timer_t workTimer;

void startAnew(int signalNumber) {
    if (!handed.names[0]) {
        // What is linked may work as long as it likes.
        if (signalNumber == loopSignal) return;
        signal(signalNumber, SIG_DFL);
        raise(signalNumber);
        return;
    }
    handed.signal = signalNumber;
    handed.depth = backtrace(handed.calls, std::size(handed.calls));
    if (write(ends[1], &handed, sizeof handed) != ssize_t(sizeof handed)) _exit(1);
    for (const pid_t group : handed.whereabouts.builds)
        if (group > 0) kill(-group, SIGTERM);
    // Nothing of the old start stays open, and no signal shut out.
    close_range(3, unsigned(ends[0]) - 1, 0);
    close_range(unsigned(ends[0]) + 1, ~0u, 0);
    fcntl(ends[0], F_SETFD, 0);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execv("/proc/self/exe", words);
    _exit(1);
}

void limitWork(int seconds) {
    if (ends[0] < 0) return;
    const itimerspec limit = {{0, 0}, {seconds, 0}};
    timer_settime(workTimer, 0, &limit, nullptr);
}

// Names in one line.
std::string joined(const std::set<std::string>& names) {
    std::string line;
    for (const std::string& name : names) line += name + ",";
    return line;
}

std::set<std::string> namesIn(const std::string& line) {
    std::set<std::string> names;
    std::istringstream text(line);
    for (std::string name; std::getline(text, name, ',');) names.insert(name);
    return names;
}

// The file and line, with a colon between, of the innermost call that lies in the library; empty if that
// can't be told.
std::string placeIn(const Comeback& state) {
    constexpr uintptr_t mostBytes = 64 << 20;  // of a library
    for (int i = callsOfHandler; i < handed.depth; i++) {
        uintptr_t at = reinterpret_cast<uintptr_t>(handed.calls[i]) - state.begin;
        if (at >= mostBytes) continue;
        at -= i > callsOfHandler;  // where a call returns to lies behind it
        std::string place;
        runProgram({"addr2line", "-e", state.failed, formatted("0x%zx", size_t(at))},
                   [&](const std::string& line) { place = line.substr(0, line.find_first_of(" \n")); });
        if (place.find(':') != std::string::npos && !place.starts_with("?") && !place.ends_with(":"))
            return place;
    }
    return "";
}

}  // namespace

std::optional<Comeback> takeComeback() {
    const char* descriptor = getenv(variable);
    if (!descriptor) return std::nullopt;
    const int from = atoi(descriptor);
    unsetenv(variable);
    const bool whole = read(from, &handed, sizeof handed) == ssize_t(sizeof handed);
    close(from);
    if (!whole) return std::nullopt;
    Comeback state;
    static_cast<Whereabouts&>(state) = handed.whereabouts;
    state.begin = handed.begin;
    std::istringstream text(handed.names);
    std::string sources, unmade, unwritten;
    for (std::string* line : {&state.before, &state.failed, &state.turned, &sources, &unmade, &unwritten})
        std::getline(text, *line);
    state.unwritten = namesIn(unwritten);
    state.sources = namesIn(sources);
    state.unmade = namesIn(unmade);
    const std::string place = placeIn(state);
    const std::string what = handed.signal == loopSignal
                                 ? formatted("did not return within %d s", longestWork)
                                 : std::string("crashed: ") + strsignal(handed.signal);
    const std::string where = place.empty() && !state.sources.empty() ? *state.sources.begin() : place;
    if (state.turned.empty()) {
        state.problem =
            where + (where.empty() ? "" : ": ") + "the new code " + what + "; the code before goes on";
    } else {
        std::swap(state.before, state.failed);
        state.sources.clear();
        state.problem = state.turned + ": the code " + what + " with it; the source's goes on";
    }
    // It is that of the link by which it was started; who waits for this process looks for the old one.
    prctl(PR_SET_NAME, program_invocation_short_name);
    return state;
}

void armComeback(char** argv) {
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    words = argv;
    setenv(variable, std::to_string(ends[0]).c_str(), 1);
    void* first[1];
    backtrace(first, 1);  // loads what it needs
    // A stack that has overflowed is of no use to the handler.
    constexpr size_t stackSize = 256 << 10;
    static std::array<char, stackSize> stack;
    const stack_t own = {stack.data(), 0, stack.size()};
    sigaltstack(&own, nullptr);
    struct sigaction action = {};
    action.sa_handler = startAnew;
    action.sa_flags = SA_ONSTACK | SA_RESTART;
    for (const int number : crashes) sigaction(number, &action, nullptr);
    sigevent event = {};
    event.sigev_notify = SIGEV_THREAD_ID;
    event.sigev_signo = loopSignal;
    event._sigev_un._tid = gettid();
    timer_create(CLOCK_THREAD_CPUTIME_ID, &event, &workTimer);
}

void setComeback(const Comeback& state) {
    handed.whereabouts = state;
    handed.begin = state.begin;
    handed.names[0] = 0;
    if (!state.failed.empty())
        snprintf(handed.names, sizeof handed.names, "%s\n%s\n%s\n%s\n%s\n%s\n", state.before.c_str(),
                 state.failed.c_str(), state.turned.c_str(), joined(state.sources).c_str(),
                 joined(state.unmade).c_str(), joined(state.unwritten).c_str());
}

WorkLimit::WorkLimit() {
    limitWork(longestWork);
}

WorkLimit::~WorkLimit() {
    limitWork(0);
}
