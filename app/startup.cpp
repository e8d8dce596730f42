#include "app/startup.h"

#include <cstdio>

#include "app/app.h"
#include "app/window.h"
#include "render/demo.h"
#include "script/show_times.h"

namespace {

constexpr int mixingRate = 44100;  // Hz
constexpr int mixingChannels = 16;

void printSoundOutput(int output) {
    switch (output) {
        case sound::Oss:
            printf("Using OSS.\n");
            break;
        case sound::Esd:
            printf("Using ESD.\n");
            break;
        case sound::Alsa:
            printf("Using ALSA.\n");
            break;
        case sound::None:
            printf("Using No sound.\n");
            break;
        default:
            break;
    }
}

}  // namespace

void initialiseDemo(const Stages& stages) {
    startDemo(stages.loadingPicture);
    demo->drawLoadingScreen();
    stages.meshes();
    demo->drawLoadingScreen();
    stages.textures();
    demo->drawLoadingScreen();
    createEffects();
    demo->drawLoadingScreen();
    stages.shaders();
    demo->drawLoadingScreen();

    demo->clock.setBpm(showtime::beatsPerMinute);
    glClearColor(0, 0, 0, 0.5f);
    glClearDepth(1);
    centreBoom();
}

void centreBoom() {
    demo->useShader("boom");
    demo->setUniform2f("boom", "center", 0.5f, 0.5f);
    demo->useShader();
}

void startMusic(int soundOutput, const char* path) {
    sound::setOutput(soundOutput);
    printSoundOutput(sound::output());
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
