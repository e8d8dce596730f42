// Mesh files, and all that is done with a mesh between its file and GL.
#include "geometry/aml.h"
#include "geometry/trace.h"
#include "tests/fuzz/target.h"

namespace {

constexpr char oldLayout = 'D';  // before an input for the reader that prints

void useMeshes(MeshSet& set, const char* name) {
    TraceScene scene;
    scene.addInstance(&set);
    BeamPath path;
    traceBeam(scene, {0, 0, 0}, {0.6f, 0, 0.8f}, 8, path);
    for (Mesh& mesh : set) {
        if (mesh.hasAttrib(positionAttrib)) mesh.makeFaceNormals(mesh.hasAttrib(normalAttrib));
    }
    for (Mesh& mesh : set) mesh.expandPositions(name);
    TraceScene expanded;
    expanded.addInstance(&set);
    traceBeam(expanded, {0, 0, 0}, {0, -1, 0}, 8, path);
}

}  // namespace

void tryInput(std::string_view input) {
    const bool old = input.starts_with(oldLayout);
    const MemoryFile file(input.substr(old ? 1 : 0));
    MeshSet set;
    ResDescFile stream(file.path());
    if (old) {
        dumpAml(set, stream, file.path());
    } else {
        std::string problem;
        const std::optional<MeshSet> read = readAml(input, &problem);
        demand(read.has_value() == problem.empty());
        loadAml(set, stream, file.path());
        demand(read && read->count == set.count);
        useMeshes(set, file.path());
    }
}
