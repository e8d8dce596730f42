// look SECOND [FILE.png]: one frame of the show as a capture has it, in a window or in a file. What is stale
// of the data set is made before.
#include <SDL/SDL.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "script/show_times.h"
#include "tools/capture/stepped_show.h"
#include "tools/capture/whole_picture.h"
#include "tools/capture/window.h"
#include "tools/command_line.h"
#include "tools/data_folder.h"
#include "tools/installed_show.h"
#include "tools/loading/loading.h"
#include "tools/success.h"

namespace {

constexpr int framesPerSecond = 60;

constexpr char usage[] =
    "Usage: look SECOND [FILE.png]\n"
    "Draws the frame at SECOND of the show and shows it until a key is pressed, or writes it to FILE.png.\n"
    "What is stale in data/ is made before, where its generator is at hand.\n";

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
    const double at = secondOfShow(argv[1]);
    std::string file = argc == 3 ? argv[2] : "";
    if (!file.empty() && !endsIn(file, ".png")) refuse(argv[2], "its name does not end in .png");
    file = pathFrom(goToInstalledShow(), file);
    if (!makeStaleData()) return 1;

    FolderLock held = holdDataSet();
    if (!readShow(false).good) return 1;
    held.release();
    failUnlessSucceeded();
    openCaptureWindow(0);
    loadShow();
    SteppedShow show(framesPerSecond, SteppedShow::Loaded{});
    SDL_WM_SetCaption("Valojuova: look", "Valojuova");
    show.draw(
        std::min(frameAt(at, framesPerSecond), framesBefore(showtime::end.seconds(), framesPerSecond) - 1));
    if (file.empty())
        showUntilKey();
    else if (!writeScreen(file))
        return 1;
    succeeded = true;
    return 0;
}
