#include "app/loop.h"
#include "app/options.h"
#include "app/startup.h"
#include "render/quit.h"

int main(int argc, char** argv) {
    const Options options = parseOptions(argc, argv);
    if (options.usage) {
        printUsage();
        quit();
    }
    startUp(options);
    runLoop();
    quit();
}
