// The manifests of two parts of a film, one behind the other: each as it is read, and both as they are
// joined.
#include "tests/fuzz/target.h"
#include "tests/scratch.h"
#include "tools/capture/manifest.h"

namespace {

bool read(const std::string& part, std::string_view text, Manifest* manifest) {
    std::ofstream(manifestPath(part), std::ios::binary) << text;
    return readManifest(part, manifest);
}

void use(const std::string& part, const Manifest& manifest) {
    const FrameRuns runs = manifest.runs();
    demand(framesOf(runs).size() == manifest.frames.size());
    FrameRuns parsed;
    demand(parseFrames(textOf(runs), &parsed) && framesOf(parsed) == framesOf(runs));
    isWhole(part, manifest);
    demand(!writeManifest(part + "/in no folder", manifest));
    Manifest again;
    demand(writeManifest(part, manifest) && readManifest(part, &again));
    demand(differenceOf(manifest, again).empty() && again.film == manifest.film);
    demand(std::equal(
        manifest.frames.begin(), manifest.frames.end(), again.frames.begin(), again.frames.end(),
        [](const DrawnFrame& a, const DrawnFrame& b) { return a.number == b.number && a.hash == b.hash; }));
}

}  // namespace

void tryInput(std::string_view input) {
    static const ScratchDirectory folder;
    constexpr std::string_view last = "\nend\n";
    const size_t end = std::min(input.find(last), input.size() - std::min(last.size(), input.size()));
    Manifest manifests[2];
    bool whole[2];
    for (int i = 0; i < 2; i++) {
        const std::string part = folder.file(i == 0 ? "one" : "two");
        const std::string_view text = i == 0 ? input.substr(0, end + last.size())
                                             : input.substr(std::min(end + last.size(), input.size()));
        whole[i] = read(part, text, &manifests[i]);
        if (whole[i]) use(part, manifests[i]);
    }
    if (whole[0] && whole[1])
        demand(differenceOf(manifests[0], manifests[1]).empty() ==
               differenceOf(manifests[1], manifests[0]).empty());
}
