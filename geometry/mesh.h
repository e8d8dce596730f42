// One indexed triangle list with interleaved vertices described by up to 16 typed attributes, and the list of
// meshes that one file holds. Drawn from vertex buffer objects.
#pragma once

#include <GL/glew.h>

#include <cstddef>
#include <cstdint>
#include <memory>

#include "geometry/growable_array.h"
#include "geometry/mesh_attrib.h"

struct Mesh {
    struct ScratchRecord {
        uint32_t words[4];
    };

    // GL names; all bits set until the mesh is uploaded.
    GLuint indexBuffer = ~GLuint{0};
    GLuint vertexBuffer = ~GLuint{0};
    // Not used, but releaseBuffers reads on into them.
    GLuint reserved[2] = {0, 0};
    GrowableArray<ScratchRecord> scratch{16};
    int32_t gvertexCount = 0;
    int32_t vertexCount = 0;
    int32_t faceCount = 0;
    int32_t attribCount = 0;
    int32_t attribSize[maxAttribs];      // by slot, in 32-bit words
    int32_t attribType[maxAttribs];      // by slot; -1 is none
    std::unique_ptr<float[]> gvertices;  // shared positions, x, y, z each
    std::unique_ptr<float[]> vertices;   // vertexCount * vsize; a gvertexAttrib's word is an integer
    std::unique_ptr<uint16_t[]> faces;   // three vertices each
    int32_t slotOfType[maxAttribs];      // by type; -1 is absent
    int32_t vsize = 0;                   // words per vertex

    Mesh();
    Mesh(Mesh&&) noexcept = default;
    Mesh& operator=(Mesh&&) noexcept = default;
    // Leaves the GL buffers alone: they live as long as the process.
    virtual ~Mesh() = default;

    // Recomputes vsize and slotOfType after attribSize or attribType changed. Of types that are no longer
    // used the old slot stays known, so that a remapped texture coordinate serves both units. A used slot
    // without a type ends the process with status 1.
    void rebuildAttribs();

    bool hasAttrib(int type) const { return slotOfType[type] != -1; }
    // Words before the attribute in a vertex.
    int attribOffset(int type) const;
    float* vertexAttrib(int vertex, int type);
    const float* vertexAttrib(int vertex, int type) const;
    // Only before expandPositions: which shared position a vertex has, and its three floats.
    uint32_t gvertexOf(int vertex) const;
    const float* gvertexPosition(int vertex) const;

    uint16_t* face(int index) { return &faces[3 * index]; }
    const uint16_t* face(int index) const { return &faces[3 * index]; }
    // The first vertex of the face that is neither `a` nor `b`; 65535 if there is none.
    uint16_t otherVertexOfFace(int faceIndex, uint16_t a, uint16_t b) const;

    // Widens every vertex by `size` words without values; does nothing if the mesh has the type.
    void addAttrib(int type, int size);
    // Unit normals of the faces, from plain positions; vertices shared by faces get the last face's. They go
    // to normalAttrib (`smooth`) or faceNormalAttrib.
    void makeFaceNormals(bool smooth);
    // Whether its first attribute is the index of a shared position.
    bool canExpandPositions() const {
        return attribType[0] == gvertexAttrib && slotOfType[gvertexAttrib] == 0;
    }
    // Replaces the index of a shared position by the position itself, and drops the shared ones. A mesh of
    // another layout ends the process with status 1 and a line that names `file`.
    void expandPositions(const char* file);

    // GL, in a context with vertex buffer objects. A mesh must be uploaded before it is bound or drawn.
    void upload();
    void releaseBuffers();
    // Leaves the arrays of the mesh's attributes enabled and its buffers bound, until unbindArrays.
    void bindArrays() const;
    static void unbindArrays();
    void draw() const;

private:
    size_t wordCount() const { return size_t(vertexCount) * vsize; }
};

// Owns its meshes.
struct MeshSet {
    int32_t count = 0;
    std::unique_ptr<Mesh[]> meshes;

    // Destroys the meshes held and makes `newCount` empty ones.
    void reset(int newCount);

    Mesh* begin() { return meshes.get(); }
    Mesh* end() { return meshes.get() + count; }
    const Mesh* begin() const { return meshes.get(); }
    const Mesh* end() const { return meshes.get() + count; }
};
