#include "app/options.h"

#include <cstdio>
#include <cstring>

namespace {

// Whether the word is an option. "-help" counts as unknown: either way the usage text follows.
bool applyOption(const char* word, Options* options) {
    static const struct {
        const char* word;
        bool fullscreen;
    } screenOptions[] = {{"-fs", true}, {"-win", false}};
    static const struct {
        const char* word;
        sound::Output output;
    } soundOptions[] = {
        {"-oss", sound::Oss}, {"-alsa", sound::Alsa}, {"-esd", sound::Esd}, {"-nosound", sound::None}};

    for (const auto& option : screenOptions) {
        if (strcmp(word, option.word) != 0) continue;
        options->fullscreen = option.fullscreen;
        return true;
    }
    for (const auto& option : soundOptions) {
        if (strcmp(word, option.word) != 0) continue;
        options->soundOutput = option.output;
        return true;
    }
    return false;
}

}  // namespace

Options parseOptions(int argc, const char* const* argv) {
    Options options;
    for (int i = 1; i < argc && !options.usage; i++) options.usage = !applyOption(argv[i], &options);
    return options;
}

void printUsage() {
    printf("Options:\n");
    printf(" -help      Show this help.\n");
    printf(" -fs        Run fullscreen. %s\n", "[default]");
    // Kept: the word that is read is "-win". Whoever types "-window" gets this text again.
    printf(" -window    Run in window. %s\n", "");
    printf("\n");
    printf("Sound options:\n");
    printf(" -oss       Use Open Sound System.\n");
    printf(" -alsa      Use ALSA. [default]\n");
    printf(" -esd       Use Enlightened Sound Daemon.\n");
    printf(" -nosound   No sound.\n");
    printf("\n");
}
