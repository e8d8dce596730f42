#include "tests/sound/sound_server.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/sound/signal.h"

namespace {

namespace fs = std::filesystem;

// Where ./test has unpacked the servers; without it, those that are installed are taken.
const std::string unpacked = BUILD_FOLDER "/servers";

std::string valueOf(const char* variable) {
    const char* value = std::getenv(variable);
    return value ? value : "";
}

bool waitForFile(const std::string& path) {
    for (int i = 0; i < 1000 && !fs::exists(path); i++) sleepSeconds(0.02);
    return fs::exists(path);
}

// What both processes of PipeWire load; each goes on with a list of its own.
const std::string pipeWireBase = R"(
context.spa-libs = { audio.convert.* = audioconvert/libspa-audioconvert, support.* = support/libspa-support }
context.modules = [
    { name = libpipewire-module-rt, args = { nice.level = -11 }, flags = [ ifexists, nofail ] }
    { name = libpipewire-module-protocol-native }
    { name = libpipewire-module-client-node }
    { name = libpipewire-module-adapter }
    { name = libpipewire-module-metadata }
)";
constexpr char pipeWireSink[] = R"(
    { name = libpipewire-module-spa-node-factory }
    { name = libpipewire-module-access }
    { name = libpipewire-module-link-factory }
    { name = libpipewire-module-session-manager }
]
context.properties = { core.daemon = true, core.name = pipewire-0 }
context.objects = [
    { factory = adapter
      args = { factory.name = support.null-audio-sink, node.name = ear, media.class = Audio/Sink
               audio.position = [ FL FR ] } }
]
)";

}  // namespace

SoundServer::SoundServer(Kind kind) {
    fs::create_directories(home + "/.config/pulse");
    fs::create_directories(home + "/run");
    fs::permissions(home + "/run", fs::perms::owner_all);
    std::ofstream(home + "/.config/pulse/client.conf") << "autospawn = no\n";
    environment.set("HOME", home);
    environment.set("XDG_RUNTIME_DIR", home + "/run");
    environment.set("PATH", unpacked + "/bin:" + unpacked + "/usr/bin:" + valueOf("PATH"));
    kind == PulseAudio ? startPulseAudio() : startPipeWire();
    EXPECT_TRUE(waitForFile(recorderSocket)) << "no such server here; ./test fetches it";
}

void SoundServer::startPulseAudio() {
    std::ofstream(home + "/.asoundrc") << "pcm.!default { type pulse }\n";
    processes = {
        startProcess({"pulseaudio", "--daemonize=no", "--exit-idle-time=-1", "-n", "-L",
                      "module-null-sink sink_name=ear rate=44100 channels=2 format=s16le norewinds=1", "-L",
                      "module-native-protocol-unix auth-anonymous=1"})};
    recorderSocket = home + "/run/pulse/native";
}

// The server, a session manager that looks for no hardware, and the front for the recorder.
void SoundServer::startPipeWire() {
    std::ofstream asoundrc(home + "/.asoundrc");
    std::string data = "/usr/share";
    if (fs::exists(unpacked)) {
        data = unpacked + data;
        for (const auto& entry : fs::recursive_directory_iterator(unpacked)) {
            if (entry.path().filename() == "libasound_module_pcm_pipewire.so")
                asoundrc << "pcm_type.pipewire { lib " << entry.path() << " }\n";
        }
    }
    asoundrc << "pcm.!default { type pipewire playback_node ear }\n";
    asoundrc.close();
    std::ofstream(home + "/sink.conf") << pipeWireBase << pipeWireSink;
    recorderSocket = home + "/run/recorder";
    recorderLatency = 20;
    // PulseAudio's protocol in front of it, for the recorder. Not at its usual place, where ALSA would take
    // it for the default device.
    std::ofstream(home + "/front.conf")
        << pipeWireBase
        << "{ name = libpipewire-module-protocol-pulse, args = { server.address = [ \"unix:" << recorderSocket
        << "\" ] } } ]\n";
    environment.set("PIPEWIRE_CONFIG_DIR", data + "/pipewire");
    environment.set("WIREPLUMBER_CONFIG_DIR", data + "/wireplumber");
    environment.set("WIREPLUMBER_DATA_DIR", data + "/wireplumber");
    environment.set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + home + "/no-bus");
    processes = {startProcess({"pipewire", "-c", home + "/sink.conf"})};
    waitForFile(home + "/run/pipewire-0");
    // Older ones know their profiles by the files' names.
    const bool byFile = fs::exists(data + "/wireplumber/policy.conf");
    processes.push_back(
        startProcess({"wireplumber", byFile ? "-c" : "-p", byFile ? "policy.conf" : "policy"}));
    processes.push_back(startProcess({"pipewire", "-c", home + "/front.conf"}));
}

SoundServer::~SoundServer() {
    if (id() > 0) ::kill(id(), SIGCONT);
    for (auto process = processes.rbegin(); process != processes.rend(); process++)
        endProcess(*process, SIGTERM);
}

void SoundServer::kill() {
    for (const pid_t process : processes) endProcess(process, SIGKILL);
    processes.clear();
}

Recorder::Recorder(const SoundServer& server) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    pipeEnd = ends[0];
    // The short latency also makes the sink play in short steps, so that a frame is recorded as it is heard.
    process =
        startProcess({"parec", "--server=unix:" + server.recorderSocket, "--raw", "--device=ear.monitor",
                      "--format=s16le", "--channels=2", "--rate=" + std::to_string(recordRate),
                      "--latency-msec=" + std::to_string(server.recorderLatency)},
                     ends[1]);
    close(ends[1]);
    reader = std::thread(&Recorder::read, this);
    for (int i = 0; i < 1000 && firstFrame > 1e299; i++) sleepSeconds(0.01);
}

Recorder::~Recorder() {
    samples();
}

const std::vector<float>& Recorder::samples() {
    endProcess(process, SIGTERM);
    process = -1;
    if (reader.joinable()) reader.join();
    if (pipeEnd >= 0) close(pipeEnd);
    pipeEnd = -1;
    return recorded;
}

long Recorder::frameAt(double seconds) const {
    return std::lround((seconds - firstFrame) * recordRate);
}

// A frame never arrives much before it is heard, but may be held up: the earliest arrivals tell the time.
void Recorder::read() {
    int16_t frames[2 * 256];
    size_t held = 0;
    for (;;) {
        const ssize_t got = ::read(pipeEnd, reinterpret_cast<char*>(frames) + held, sizeof frames - held);
        if (got <= 0) return;
        firstFrame = std::min(firstFrame.load(), steadySeconds() - double(recorded.size()) / recordRate);
        const size_t bytes = held + size_t(got);
        for (size_t i = 0; i < bytes / 4; i++) recorded.push_back(float(frames[2 * i]) / 32768);
        held = bytes % 4;
        std::copy_n(reinterpret_cast<char*>(frames) + bytes - held, held, reinterpret_cast<char*>(frames));
    }
}
