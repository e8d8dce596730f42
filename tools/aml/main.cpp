// Mesh files for those who have modellers.
#include <sys/resource.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "geometry/aml.h"
#include "image/whole_file.h"
#include "tools/aml/info.h"
#include "tools/aml/model.h"
#include "tools/aml/options.h"
#include "tools/whole_file.h"

namespace {

int fail(const std::string& path, const std::string& problem) {
    fprintf(stderr, "%s: %s\n", path.c_str(), problem.c_str());
    return 1;
}

// Of the file as it is at this moment. Ends the process with a line if it can't be read.
MeshSet read(const std::string& path) {
    const auto bytes = readWholeFile(path.c_str());
    std::string problem = bytes ? "" : strerror(errno);
    auto set = bytes ? readAml(*bytes, &problem) : std::nullopt;
    if (!set) exit(fail(path, problem));
    return std::move(*set);
}

int info(const std::string& path) {
    const MeshSet set = read(path);
    int faces = 0;
    for (const Mesh& mesh : set) faces += mesh.faceCount;
    printf("%s: %d mesh%s, %d faces\n", path.c_str(), set.count, set.count == 1 ? "" : "es", faces);
    fputs(describeMeshes(set).c_str(), stdout);
    if (const MeshRow* row = rowOf(path))
        printf("the show draws it as \"%s\"%s\n", row->key, row->traced ? ", and beams bounce off it" : "");
    for (const std::string& line : objections(set, path)) printf("! %s\n", line.c_str());
    return 0;
}

// A file that claims more than it has must not take all that the machine has.
void boundMemory() {
    constexpr rlim_t most = rlim_t{4} << 30;  // bytes
    rlimit limit;
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur <= most) return;
    limit.rlim_cur = most;
    setrlimit(RLIMIT_AS, &limit);
}

// Moved to its place when it is whole.
int import(const std::string& model, const std::string& path, const Placing& placing) {
    boundMemory();
    const ImportedModel imported = importModel(model, placing);
    if (!imported.problem.empty()) return fail(model, imported.problem);
    const bool written = writeAmlFile(unfinishedPath(path).c_str(), imported.meshes);
    if (!moveIntoPlace(path, written)) return fail(path, strerror(errno));
    for (const std::string& note : imported.notes) printf("%s\n", note.c_str());
    return info(path);
}

int exportTo(const std::string& path, const std::string& model) {
    const MeshSet set = read(path);
    const std::string problem = exportModel(set, model);
    return problem.empty() ? 0 : fail(model, problem);
}

}  // namespace

int main(int argc, char** argv) {
    const AmlOptions options = parseAmlOptions(argc, argv);
    if (options.command == "import") return import(options.files[0], options.files[1], options.placing);
    if (options.command == "export") return exportTo(options.files[0], options.files[1]);
    return info(options.files[0]);
}
