// Rehearses the show: plays it in a window under its author's hands.
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/app.h"
#include "app/startup.h"
#include "app/window.h"
#include "render/quit.h"
#include "tools/data_folder.h"
#include "tools/installed_show.h"
#include "tools/rehearse/loading.h"
#include "tools/rehearse/options.h"
#include "tools/rehearse/rehearsal.h"

namespace {

bool succeeded = false;

// The show's own ways out end with status 0, also where it could not start.
void failUnlessSucceeded() {
    if (succeeded) return;
    fflush(nullptr);
    _exit(1);
}

// Played from memory: what is saved over the file is not heard before it is known to be good.
void startMusicFromMemory(int soundOutput) {
    std::string problem;
    const auto snapshot = takeSnapshot(SoundMusic::path, &problem);
    startMusic(soundOutput, snapshot ? snapshot->path().c_str() : "");
}

bool rehearse(const RehearseOptions& options, FolderLock& held) {
    app.screen = openWindow(false);
    initialiseDemo(patientStages());
    SteppedShow show(Transport::framesPerSecond, SteppedShow::Loaded{});
    Rehearsal rehearsal(show, generatorSources(), makeDataCommand());
    SDL_WM_SetCaption("Valojuova: rehearsal", "Valojuova");
    startMusicFromMemory(options.soundOutput);
    demo->clock.source = &rehearsal.transport;
    rehearsal.transport.replaceStream(app.music.stream);
    rehearsal.transport.setPosition(int(std::lround(options.second * 1000)));
    if (!options.held) rehearsal.transport.goOn();
    rehearsal.stateFile = options.stateFile;
    rehearsal.pictureFile = options.pictureFile;
    rehearsal.reload.problems.merge(brokenFiles());
    rehearsal.reload.measureMusic();
    held.release();
    SDL_EnableKeyRepeat(SDL_DEFAULT_REPEAT_DELAY, SDL_DEFAULT_REPEAT_INTERVAL);
    while (!rehearsal.done) {
        SDL_Event event;
        while (SDL_PollEvent(&event)) rehearsal.handleEvent(event);
        rehearsal.frame();
    }
    return !rehearsal.failed;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && strcmp(argv[1], "--check") == 0) return runCheck(argc, argv);
    RehearseOptions options = parseRehearseOptions(argc, argv);
    const std::string folder = goToInstalledShow();
    options.stateFile = pathFrom(folder, options.stateFile);
    options.pictureFile = pathFrom(folder, options.pictureFile);
    FolderLock held = holdDataSet();
    lookForBrokenFiles();
    atexit(failUnlessSucceeded);
    succeeded = rehearse(options, held);
    quit();
}
