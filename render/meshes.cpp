#include "geometry/aml.h"
#include "geometry/mesh.h"
#include "geometry/res_desc.h"
#include "render/demo.h"

int Demo::loadMesh(const char* path, const char* key, int flags) {
    auto* set = new MeshSet;
    ResDescFile file(path);
    loadAml(*set, file, path);
    if (flags & 1) {
        for (Mesh& mesh : *set) {
            mesh.expandPositions(path);
            mesh.upload();
        }
    }
    // A set that had the key before stays alive: nothing of what was loaded is ever released.
    meshes[key] = set;
    meshSetCount++;
    return 0;
}

void Demo::remapTexCoords(const char* key, int from, int to) {
    MeshSet* set = meshes[key];
    if (!set) return;
    for (Mesh& mesh : *set) {
        if (!mesh.hasAttrib(texCoordAttrib + from)) continue;
        mesh.releaseBuffers();
        mesh.attribType[mesh.slotOfType[texCoordAttrib + from]] = texCoordAttrib + to;
        mesh.rebuildAttribs();
        mesh.upload();
    }
}

void Demo::drawMesh(const char* key) {
    const MeshSet* set = meshes[key];
    if (!set) return;
    for (const Mesh& mesh : *set) mesh.draw();
}

void Demo::replaceMesh(const char* key, MeshSet* set) {
    MeshSet*& current = meshes[key];
    if (current) {
        for (const Mesh& mesh : *current) {
            glDeleteBuffersARB(1, &mesh.vertexBuffer);
            glDeleteBuffersARB(1, &mesh.indexBuffer);
        }
    }
    delete current;
    current = set;
}
