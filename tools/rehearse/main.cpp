// Rehearses the show: plays it in a window under its author's hands.
#include <cmath>
#include <cstdio>

#include "app/app.h"
#include "app/startup.h"
#include "app/window.h"
#include "render/quit.h"
#include "tools/data_folder.h"
#include "tools/display.h"
#include "tools/installed_show.h"
#include "tools/process.h"
#include "tools/rehearse/options.h"
#include "tools/rehearse/rehearsal.h"
#include "tools/success.h"

namespace {

// Every frame that the show does not get is seen. Not that which builds its code: the author waits for it.
Words behindTheShow(const Words& command) {
    Words words = {"nice", "-n", "10"};
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

const Numbers* turned = nullptr;  // in the rehearsal that is under way

void tellUnwritten() {
    if (!turned) return;
    for (const std::string& number : turned->unwritten())
        fprintf(stderr, "not written: %s\n", number.c_str());
    turned = nullptr;
}

bool rehearse(const RehearseOptions& options, char** words) {
    needDisplay();
    const std::optional<Comeback> back = takeComeback();
    // In this order: what is saved while it is being loaded is seen.
    const std::string sources = generatorSources();
    Watch watch;
    watch.add("data");
    if (!sources.empty()) watch.add(sources);
    LiveCode live(sources);
    if (!live.build.command.empty()) {
        armComeback(words);
        for (const char* name : {"script", "effects"}) watch.add(live.folder + name);
    }
    back ? live.comeBack(*back) : live.begin();
    FolderLock held = holdDataSet();
    Loading loading(true);
    app.screen = openWindow(false);
    initialiseDemo(loading);
    SteppedShow show(Transport::framesPerSecond, SteppedShow::Loaded{});
    Rehearsal rehearsal(show, loading, watch, sources, behindTheShow(makeCommand("data")));
    rehearsal.live = &live;
    rehearsal.numbers.root = live.folder;
    rehearsal.numbers.shaders = sources;
    turned = &rehearsal.numbers;
    if (!sources.empty()) {
        rehearsal.stems.folder = stemsFolder();
        rehearsal.stems.build.command = behindTheShow(makeCommand("stems"));
    }
    SDL_WM_SetCaption("Valojuova: rehearsal", "Valojuova");
    startMusic(options.soundOutput, "");
    demo->clock.source = &rehearsal.transport;
    rehearsal.transport.replaceMusic(loading.takeMusic());
    if (back) {
        rehearsal.comeBack(*back);
    } else {
        rehearsal.transport.setPosition(int(std::lround(options.second * 1000)));
        if (!options.held) rehearsal.transport.goOn();
    }
    rehearsal.list.open = options.numbers;
    rehearsal.stateFile = options.stateFile;
    rehearsal.pictureFile = options.pictureFile;
    held.release();
    SDL_EnableKeyRepeat(SDL_DEFAULT_REPEAT_DELAY, SDL_DEFAULT_REPEAT_INTERVAL);
    while (!rehearsal.done) {
        SDL_Event event;
        while (SDL_PollEvent(&event)) rehearsal.handleEvent(event);
        rehearsal.frame();
    }
    tellUnwritten();
    return rehearsal.wrote || options.pictureFile.empty();
}

}  // namespace

int main(int argc, char** argv) {
    RehearseOptions options = parseRehearseOptions(argc, argv);
    const std::string folder = goToInstalledShow();
    options.stateFile = pathFrom(folder, options.stateFile);
    options.pictureFile = pathFrom(folder, options.pictureFile);
    // When the display goes away, its library ends the process.
    failUnlessSucceeded(tellUnwritten);
    succeeded = rehearse(options, argv);
    quit();
}
