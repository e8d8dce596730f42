#include "app/options.h"

#include <cstdio>
#include <cstring>

namespace {

// "-help" is none: it prints the usage text like every word that is unknown.
constexpr struct {
    const char* word;
    void (*apply)(Options& options);
} knownWords[] = {
    {"-fs", [](Options& options) { options.fullscreen = true; }},
    {"-win", [](Options& options) { options.fullscreen = false; }},
    {"-oss", [](Options& options) { options.soundOutput = sound::Oss; }},
    {"-alsa", [](Options& options) { options.soundOutput = sound::Alsa; }},
    {"-esd", [](Options& options) { options.soundOutput = sound::Esd; }},
    {"-nosound", [](Options& options) { options.soundOutput = sound::None; }},
};

// Whether the word is known.
bool applyWord(const char* word, Options& options) {
    for (const auto& known : knownWords) {
        if (strcmp(word, known.word) != 0) continue;
        known.apply(options);
        return true;
    }
    return false;
}

}  // namespace

Options parseOptions(int argc, const char* const* argv) {
    Options options;
    for (int i = 1; i < argc && !options.usage; i++) options.usage = !applyWord(argv[i], options);
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
