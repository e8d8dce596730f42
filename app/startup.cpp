#include "app/startup.h"

#include <cstdio>

#include "app/app.h"
#include "app/window.h"
#include "render/demo.h"
#include "script/show_times.h"

namespace {

constexpr int mixingRate = 44100;  // Hz
constexpr int mixingChannels = 16;

constexpr struct {
    sound::Output output;
    const char* name;
} outputNames[] = {
    {sound::Oss, "OSS"}, {sound::Esd, "ESD"}, {sound::Alsa, "ALSA"}, {sound::None, "No sound"}};

}  // namespace

void initialiseDemo(Loader& loader) {
    startDemo();
    loadResources(loader);

    demo->clock.setBpm(showtime::beatsPerMinute);
    glClearColor(0, 0, 0, 0.5f);
    glClearDepth(1);
    centreBoom();
}

void initialiseDemo() {
    Loader fromFiles;
    initialiseDemo(fromFiles);
}

void centreBoom() {
    demo->useShader("boom");
    demo->setUniform2f("boom", "center", 0.5f, 0.5f);
    demo->useShader();
}

void startMusic(int soundOutput, const char* path) {
    sound::setOutput(soundOutput);
    for (const auto& known : outputNames)
        if (known.output == sound::output()) printf("Using %s.\n", known.name);
    sound::start(mixingRate, mixingChannels);
    app.music.stream = sound::openStream(path);
    sound::play(SoundMusic::channel, app.music.stream);
    demo->clock.source = &app.music;
}

void startUp(const Options& options) {
    watchForHangUp();
    app.screen = openWindow(options.fullscreen, 0, true);
    initialiseDemo();
    startMusic(options.soundOutput);
}
