// look SECOND [FILE.png]: one frame of the show as a capture has it, in a window or in a file. What is stale
// of the data set is made before.
#include <SDL/SDL.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "script/timeline.h"
#include "tools/capture/stepped_show.h"
#include "tools/capture/whole_file.h"
#include "tools/capture/window.h"
#include "tools/command_line.h"
#include "tools/data_folder.h"
#include "tools/installed_show.h"
#include "tools/loading/loading.h"

namespace {

constexpr int framesPerSecond = 60;

constexpr char usage[] =
    "Usage: look SECOND [FILE.png]\n"
    "Draws the frame at SECOND of the show and shows it until a key is pressed, or writes it to FILE.png.\n"
    "What is stale in data/ is made before, where its generator is at hand.\n";

bool succeeded = false;

// The show's own ways out end with status 0, also where it could not start.
void failUnlessSucceeded() {
    if (succeeded) return;
    fflush(nullptr);
    _exit(1);
}

[[noreturn]] void refuse(const char* word, const char* reason) {
    refuseWord("look", word, reason);
}

double second(const char* text) {
    const double value = numberIn(text);
    if (!(value >= 0 && value < double(programme().back().begin))) refuse(text, "no second of the show");
    return value;
}

// Without the loading screens, which take as long as all the rest where they are drawn in software.
void openShow() {
    openCaptureWindow(0);
    const OnePixel unseen;
    loadShow();
}

void showUntilKey() {
    SDL_GL_SwapBuffers();
    SDL_Event event;
    while (SDL_WaitEvent(&event)) {
        if (event.type == SDL_KEYDOWN || event.type == SDL_QUIT) return;
        if (event.type == SDL_VIDEOEXPOSE) SDL_GL_SwapBuffers();
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "--help") {
        fputs(usage, stdout);
        return 0;
    }
    if (argc != 2 && argc != 3) {
        fputs(usage, stderr);
        return 1;
    }
    const double at = second(argv[1]);
    std::string file = argc == 3 ? argv[2] : "";
    if (!file.empty() && !endsIn(file, ".png")) refuse(argv[2], "its name does not end in .png");
    file = pathFrom(goToInstalledShow(), file);
    if (!makeStaleData()) return 1;

    FolderLock held = holdDataSet();
    if (!readShow(false).good) return 1;
    held.release();
    atexit(failUnlessSucceeded);
    openShow();
    SteppedShow show(framesPerSecond, SteppedShow::Loaded{});
    SDL_WM_SetCaption("Valojuova: look", "Valojuova");
    show.draw(std::min(int(std::lround(at * framesPerSecond)),
                       framesBefore(double(programme().back().begin), framesPerSecond) - 1));
    if (file.empty())
        showUntilKey();
    else if (!writeScreen(file))
        return 1;
    succeeded = true;
    return 0;
}
