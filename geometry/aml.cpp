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

[[noreturn, gnu::format(printf, 2, 3)]] void fail(const char* name, const char* reason, ...) {
    fprintf(stderr, "AML file %s: ", name);
    va_list arguments;
    va_start(arguments, reason);
    vfprintf(stderr, reason, arguments);
    va_end(arguments);
    fputc('\n', stderr);
    std::exit(1);
}

// Puts a check behind every read of another stream: one that comes back short ends the process.
struct CheckedStream : ResDesc {
    ResDesc& source;
    const char* name;

    CheckedStream(ResDesc& source, const char* name) : source(source), name(name) {}
    void seek(long offset, int origin) override { source.seek(offset, origin); }
    int read(void* buffer, size_t size) override {
        if (size > 0 && source.read(buffer, size) != 1) fail(name, "the file ends too early");
        return 1;
    }
};

template <typename T>
std::unique_ptr<T[]> allocate(size_t count, const char* name) {
    std::unique_ptr<T[]> array(new (std::nothrow) T[count]);
    if (!array) fail(name, "not enough memory");
    return array;
}

void readCounts(Mesh& mesh, CheckedStream& stream) {
    mesh.gvertexCount = stream.readShort();
    mesh.vertexCount = stream.readShort();
    mesh.faceCount = stream.readShort();
    mesh.attribCount = stream.readByte();
    if (mesh.attribCount > maxAttribs)
        fail(stream.name, "%d attributes, where a mesh holds at most %d", mesh.attribCount, maxAttribs);
}

void readAttribTable(Mesh& mesh, CheckedStream& stream) {
    for (int slot = 0; slot < mesh.attribCount; slot++) {
        const int type = stream.readByte();
        const int size = stream.readByte();
        if (type >= maxAttribs)
            fail(stream.name, "attribute type %d, where the last is %d", type, maxAttribs - 1);
        if (size < amlAttribSizes[type].least || size > amlAttribSizes[type].most)
            fail(stream.name, "attribute type %d can't have a size of %d", type, size);
        mesh.attribType[slot] = type;
        mesh.attribSize[slot] = size;
        mesh.vsize += size;
    }
}

void readGvertices(Mesh& mesh, CheckedStream& stream) {
    const size_t count = 3 * size_t(mesh.gvertexCount);
    mesh.gvertices = allocate<float>(count, stream.name);
    stream.read(mesh.gvertices.get(), count * sizeof(float));
}

void readVertices(Mesh& mesh, CheckedStream& stream) {
    const size_t vsize = mesh.vsize;
    mesh.vertices = allocate<float>(mesh.vertexCount * vsize, stream.name);
    stream.read(mesh.vertices.get(), mesh.vertexCount * vsize * sizeof(float));
}

void readFaces(Mesh& mesh, CheckedStream& stream) {
    const size_t count = 3 * size_t(mesh.faceCount);
    mesh.faces = allocate<uint16_t>(count, stream.name);
    stream.read(mesh.faces.get(), count * sizeof(uint16_t));
}

// Nothing that draws, expands or traces a mesh looks at its indices again.
void checkIndices(const Mesh& mesh, const char* name) {
    int highest = -1;
    for (int i = 0; i < 3 * mesh.faceCount; i++) highest = std::max<int>(highest, mesh.faces[i]);
    if (highest >= mesh.vertexCount) fail(name, "a face uses vertex %d of %d", highest, mesh.vertexCount);
    if (!mesh.hasAttrib(gvertexAttrib)) return;
    const float* word = mesh.vertices.get() + mesh.attribOffset(gvertexAttrib);
    uint32_t highestPosition = 0;
    for (int vertex = 0; vertex < mesh.vertexCount; vertex++, word += mesh.vsize)
        highestPosition = std::max(highestPosition, std::bit_cast<uint32_t>(*word));
    if (mesh.vertexCount > 0 && highestPosition >= uint32_t(mesh.gvertexCount))
        fail(name, "a vertex uses position %u of %d", highestPosition, mesh.gvertexCount);
}

void readHeader(CheckedStream& stream) {
    for (const char magic : amlMagic) {
        if (stream.readByte() != magic) {
            fprintf(stderr, "File is not AML file (or is format version 0).\n");
            std::exit(1);
        }
    }
    if (stream.readByte() != amlVersion) {
        fprintf(stderr, "AML format version != 2\n");
        std::exit(1);
    }
}

// The set takes the meshes only when all are read: a count is not believed before the file has held as many.
void fill(MeshSet& set, std::vector<Mesh>& meshes) {
    set.reset(int(meshes.size()));
    std::move(meshes.begin(), meshes.end(), set.begin());
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
        fail(stream.name, "vertices of %d words, where %d are printed", mesh.vsize, dumpedWords);

    readGvertices(mesh, stream);
    for (int i = 0; i < mesh.gvertexCount; i++) {
        const float* g = &mesh.gvertices[3 * i];
        printf("gvertex %d: %f, %f, %f\n", i, g[0], g[1], g[2]);
    }
    readVertices(mesh, stream);
    for (int i = 0; i < mesh.vertexCount; i++) {
        const float* v = &mesh.vertices[size_t(i) * mesh.vsize];
        printf("vertex %d: %d: %f, %f, %f      %f, %f, %f\n", i, std::bit_cast<int32_t>(v[0]), v[1], v[2],
               v[3], v[4], v[5], v[6]);
    }
    readFaces(mesh, stream);
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
    readHeader(stream);
    const uint32_t meshCount = uint32_t(stream.readInt());
    std::vector<Mesh> meshes;
    for (uint32_t i = 0; i < meshCount; i++) {
        Mesh& mesh = meshes.emplace_back();
        readCounts(mesh, stream);
        readAttribTable(mesh, stream);
        readGvertices(mesh, stream);
        readVertices(mesh, stream);
        readFaces(mesh, stream);
        mesh.rebuildAttribs();
        checkIndices(mesh, name);
    }
    fill(set, meshes);
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
