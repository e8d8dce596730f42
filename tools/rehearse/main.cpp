// Rehearses the show: plays it in a window under its author's hands.
#include <cmath>

#include "app/app.h"
#include "app/startup.h"
#include "app/window.h"
#include "render/quit.h"
#include "tools/data_folder.h"
#include "tools/display.h"
#include "tools/installed_show.h"
#include "tools/rehearse/options.h"
#include "tools/rehearse/rehearsal.h"
#include "tools/success.h"

namespace {

bool rehearse(const RehearseOptions& options) {
    needDisplay();
    // In this order: what is saved while it is being loaded is seen.
    const std::string sources = generatorSources();
    Watch watch;
    watch.add("data");
    if (!sources.empty()) watch.add(sources);
    FolderLock held = holdDataSet();
    Loading loading(true);
    app.screen = openWindow(false);
    initialiseDemo(loading.stages());
    SteppedShow show(Transport::framesPerSecond, SteppedShow::Loaded{});
    Rehearsal rehearsal(show, loading, watch, sources, makeDataCommand());
    SDL_WM_SetCaption("Valojuova: rehearsal", "Valojuova");
    startMusic(options.soundOutput, "");
    demo->clock.source = &rehearsal.transport;
    rehearsal.transport.replaceStream(sound::openStream(loading.takeMusic()));
    rehearsal.transport.setPosition(int(std::lround(options.second * 1000)));
    if (!options.held) rehearsal.transport.goOn();
    rehearsal.stateFile = options.stateFile;
    rehearsal.pictureFile = options.pictureFile;
    held.release();
    SDL_EnableKeyRepeat(SDL_DEFAULT_REPEAT_DELAY, SDL_DEFAULT_REPEAT_INTERVAL);
    while (!rehearsal.done) {
        SDL_Event event;
        while (SDL_PollEvent(&event)) rehearsal.handleEvent(event);
        rehearsal.frame();
    }
    return rehearsal.wrote || options.pictureFile.empty();
}

}  // namespace

int main(int argc, char** argv) {
    RehearseOptions options = parseRehearseOptions(argc, argv);
    const std::string folder = goToInstalledShow();
    options.stateFile = pathFrom(folder, options.stateFile);
    options.pictureFile = pathFrom(folder, options.pictureFile);
    failUnlessSucceeded();
    succeeded = rehearse(options);
    quit();
}
