#include "geometry/aml.h"

#include <algorithm>
#include <bit>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <vector>

#include "geometry/aml_format.h"

namespace {

constexpr int dumpedWords = 7;  // that a dumped line shows of a vertex

constexpr uint32_t mostMeshes = 10000;  // many times what any file of the show has
constexpr char foreign[] = "File is not AML file (or is format version 0).";
constexpr char otherVersion[] = "AML format version != 2";

// Checks every read of another stream. A read that comes back short, or a value that a mesh can't have, ends
// the process with a line that names the file. A stream without a name keeps the first such problem instead,
// and all reads after it give 0.
struct CheckedStream : ResDesc {
    ResDesc& source;
    const char* name;
    std::string problem;  // empty as long as all is well

    explicit CheckedStream(ResDesc& source, const char* name) : source(source), name(name) {}
    void seek(long offset, int origin) override { source.seek(offset, origin); }
    int read(void* buffer, size_t size) override {
        if (good() && size > 0 && source.read(buffer, size) != 1) fail("the file ends too early");
        return good();
    }
    bool good() const { return problem.empty(); }

    [[gnu::format(printf, 2, 3)]] void fail(const char* reason, ...) {
        if (!good()) return;
        char text[128];
        va_list arguments;
        va_start(arguments, reason);
        vsnprintf(text, sizeof text, reason, arguments);
        va_end(arguments);
        problem = text;
        if (!name) return;
        if (problem != foreign && problem != otherVersion) fprintf(stderr, "AML file %s: ", name);
        fprintf(stderr, "%s\n", text);
        std::exit(1);
    }
};

// An array filled from the file; none once there is a problem.
template <typename T>
std::unique_ptr<T[]> readArray(CheckedStream& stream, size_t count) {
    if (!stream.good()) return nullptr;
    std::unique_ptr<T[]> array(new (std::nothrow) T[count]);
    if (!array) stream.fail("not enough memory");
    if (array) stream.read(array.get(), count * sizeof(T));
    return array;
}

void readCounts(Mesh& mesh, CheckedStream& stream) {
    mesh.gvertexCount = stream.readShort();
    mesh.vertexCount = stream.readShort();
    mesh.faceCount = stream.readShort();
    mesh.attribCount = stream.readByte();
    if (mesh.attribCount > maxAttribs)
        stream.fail("%d attributes, where a mesh holds at most %d", mesh.attribCount, maxAttribs);
}

void readAttribTable(Mesh& mesh, CheckedStream& stream) {
    for (int slot = 0; slot < mesh.attribCount && stream.good(); slot++) {
        const int type = stream.readByte();
        const int size = stream.readByte();
        if (type >= maxAttribs)
            stream.fail("attribute type %d, where the last is %d", type, maxAttribs - 1);
        else if (size < amlAttribSizes[type].least || size > amlAttribSizes[type].most)
            stream.fail("attribute type %d can't have a size of %d", type, size);
        if (!stream.good()) return;
        mesh.attribType[slot] = type;
        mesh.attribSize[slot] = size;
        mesh.vsize += size;
    }
}

// Here once and for all: what draws, expands or traces a mesh relies on its indices.
void checkIndices(const Mesh& mesh, CheckedStream& stream) {
    int highest = -1;
    for (int i = 0; i < 3 * mesh.faceCount; i++) highest = std::max<int>(highest, mesh.faces[i]);
    if (highest >= mesh.vertexCount) stream.fail("a face uses vertex %d of %d", highest, mesh.vertexCount);
    if (!mesh.hasAttrib(gvertexAttrib)) return;
    const float* word = mesh.vertices.get() + mesh.attribOffset(gvertexAttrib);
    uint32_t highestPosition = 0;
    for (int vertex = 0; vertex < mesh.vertexCount; vertex++, word += mesh.vsize)
        highestPosition = std::max(highestPosition, std::bit_cast<uint32_t>(*word));
    if (mesh.vertexCount > 0 && highestPosition >= uint32_t(mesh.gvertexCount))
        stream.fail("a vertex uses position %u of %d", highestPosition, mesh.gvertexCount);
}

// Only when all meshes are read does the set get room for them: the count in the file may be wrong.
void fill(MeshSet& set, std::vector<Mesh>& meshes) {
    set.reset(int(meshes.size()));
    std::move(meshes.begin(), meshes.end(), set.begin());
}

void readMeshes(MeshSet& set, CheckedStream& stream) {
    for (const char magic : amlMagic)
        if (stream.readByte() != magic) return stream.fail("%s", foreign);
    if (stream.readByte() != amlVersion) return stream.fail("%s", otherVersion);
    const uint32_t meshCount = uint32_t(stream.readInt());
    // An empty mesh takes a hundred times the memory that it has in the file, and a caller who goes on needs
    // some.
    if (!stream.name && meshCount > mostMeshes)
        return stream.fail("claims %u meshes, more than the show could draw", meshCount);
    std::vector<Mesh> meshes;
    for (uint32_t i = 0; i < meshCount && stream.good(); i++) {
        Mesh& mesh = meshes.emplace_back();
        readCounts(mesh, stream);
        readAttribTable(mesh, stream);
        mesh.gvertices = readArray<float>(stream, 3 * size_t(mesh.gvertexCount));
        mesh.vertices = readArray<float>(stream, size_t(mesh.vertexCount) * size_t(mesh.vsize));
        mesh.faces = readArray<uint16_t>(stream, 3 * size_t(mesh.faceCount));
        if (!stream.good()) return;
        mesh.rebuildAttribs();
        checkIndices(mesh, stream);
    }
    fill(set, meshes);
}

void dumpMesh(Mesh& mesh, int index, CheckedStream& stream) {
    readCounts(mesh, stream);
    for (int slot = 0; slot < mesh.attribCount; slot++) {
        mesh.attribSize[slot] = stream.readByte();
        mesh.vsize += mesh.attribSize[slot];
        printf("[%d] = %d\n", slot, mesh.attribSize[slot]);
    }
    printf("Reading Mesh %d:\n", index);
    printf("  gvertex_count = %d\n", mesh.gvertexCount);
    printf("  vertex_count = %d\n", mesh.vertexCount);
    printf("  face_count = %d\n", mesh.faceCount);
    printf("  attrib_count = %d\n", mesh.attribCount);
    printf("  vsize = %d\n", mesh.vsize);
    if (mesh.vertexCount > 0 && mesh.vsize < dumpedWords)
        stream.fail("vertices of %d words, where %d are printed", mesh.vsize, dumpedWords);

    mesh.gvertices = readArray<float>(stream, 3 * size_t(mesh.gvertexCount));
    for (int i = 0; i < mesh.gvertexCount; i++) {
        const float* g = &mesh.gvertices[3 * i];
        printf("gvertex %d: %f, %f, %f\n", i, g[0], g[1], g[2]);
    }
    mesh.vertices = readArray<float>(stream, size_t(mesh.vertexCount) * size_t(mesh.vsize));
    for (int i = 0; i < mesh.vertexCount; i++) {
        const float* v = &mesh.vertices[size_t(i) * mesh.vsize];
        printf("vertex %d: %d: %f, %f, %f      %f, %f, %f\n", i, std::bit_cast<int32_t>(v[0]), v[1], v[2],
               v[3], v[4], v[5], v[6]);
    }
    mesh.faces = readArray<uint16_t>(stream, 3 * size_t(mesh.faceCount));
    for (int i = 0; i < mesh.faceCount; i++) {
        const uint16_t* corners = mesh.face(i);
        printf("face %d: %d, %d, %d\n", i, corners[0], corners[1], corners[2]);
    }

    mesh.attribType[0] = gvertexAttrib;
    mesh.attribType[1] = normalAttrib;
    mesh.attribType[2] = texCoordAttrib;
    mesh.rebuildAttribs();
}

}  // namespace

void loadAml(MeshSet& set, ResDesc& source, const char* name) {
    CheckedStream stream(source, name);
    readMeshes(set, stream);
}

std::optional<MeshSet> readAml(std::string_view bytes, std::string* problem) {
    ResDescBytes source(bytes);
    CheckedStream stream(source, nullptr);
    MeshSet set;
    readMeshes(set, stream);
    if (stream.good()) return set;
    *problem = stream.problem;
    return std::nullopt;
}

int dumpAml(MeshSet& set, ResDesc& source, const char* name) {
    CheckedStream stream(source, name);
    const uint32_t meshCount = uint32_t(stream.readInt());
    printf("Mesh count = %d\n", int(meshCount));
    std::vector<Mesh> meshes;
    for (uint32_t i = 0; i < meshCount; i++) dumpMesh(meshes.emplace_back(), int(i), stream);
    fill(set, meshes);
    return set.count - 1;
}
