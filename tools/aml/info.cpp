#include "tools/aml/info.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "geometry/vec3.h"
#include "tools/formatted.h"

namespace fs = std::filesystem;

namespace {

constexpr int mostTracedFaces = 1000;  // twice what the room's copy has
constexpr float unitWithin = 1e-2f;    // of a normal's length
constexpr float sliver = 1e-3f;        // twice the area of a face, in square units, below which it is none

std::string typeName(int type) {
    static constexpr const char* names[] = {"position",    "position index", "normal",
                                            "face normal", "colour",         "secondary colour"};
    return type < texCoordAttrib ? names[type] : formatted("coordinates of unit %d", type - texCoordAttrib);
}

// nullptr if it has none.
const float* positionOf(const Mesh& mesh, int vertex) {
    if (mesh.hasAttrib(gvertexAttrib)) return mesh.gvertexPosition(vertex);
    return mesh.hasAttrib(positionAttrib) ? mesh.vertexAttrib(vertex, positionAttrib) : nullptr;
}

Vec3 pointOf(const Mesh& mesh, int vertex) {
    const float* p = positionOf(mesh, vertex);
    return p ? Vec3{p[0], p[1], p[2]} : Vec3{0, 0, 0};
}

// Of what is drawn, so of the vertices.
std::string boundsOf(const Mesh& mesh) {
    if (mesh.vertexCount == 0 || !positionOf(mesh, 0)) return "  no positions\n";
    Vec3 least = pointOf(mesh, 0), most = least;
    for (int i = 1; i < mesh.vertexCount; i++) {
        const Vec3 p = pointOf(mesh, i);
        least = {std::min(least.x, p.x), std::min(least.y, p.y), std::min(least.z, p.z)};
        most = {std::max(most.x, p.x), std::max(most.y, p.y), std::max(most.z, p.z)};
    }
    return formatted("  x %g to %g, y %g to %g, z %g to %g\n", least.x, most.x, least.y, most.y, least.z,
                     most.z);
}

struct Faults {
    int order = 0, unlit = 0, unmapped = 0, bentNormals = 0, slivers = 0, faces = 0;
    float reach = 0;
    bool finite = true;
};

void findFaults(const Mesh& mesh, Faults& faults) {
    faults.faces += mesh.faceCount;
    faults.order += !mesh.canExpandPositions();
    faults.unlit += !mesh.hasAttrib(normalAttrib);
    faults.unmapped += !mesh.hasAttrib(texCoordAttrib);
    for (int i = 0; i < mesh.vertexCount; i++) {
        const float away = pointOf(mesh, i).length();
        faults.finite = faults.finite && std::isfinite(away);
        faults.reach = std::max(faults.reach, away);
        if (!mesh.hasAttrib(normalAttrib)) continue;
        const float* n = mesh.vertexAttrib(i, normalAttrib);
        faults.bentNormals += !(std::fabs(Vec3{n[0], n[1], n[2]}.length() - 1) < unitWithin);
    }
    for (int i = 0; i < mesh.faceCount; i++) {
        const uint16_t* corners = mesh.face(i);
        const Vec3 p = pointOf(mesh, corners[0]);
        const Vec3 area = cross(pointOf(mesh, corners[1]) - p, pointOf(mesh, corners[2]) - p);
        faults.slivers += !(area.length() > sliver);
    }
}

}  // namespace

const MeshRow* rowOf(const std::string& path) {
    const std::string name = fs::path(path).filename();
    for (const MeshRow& row : meshRows())
        if (name == fs::path(row.path).filename()) return &row;
    return nullptr;
}

std::string describeMeshes(const MeshSet& set) {
    std::string out;
    int index = 0;
    for (const Mesh& mesh : set) {
        out += formatted("mesh %d: %d positions, %d vertices, %d faces\n ", index++, mesh.gvertexCount,
                         mesh.vertexCount, mesh.faceCount);
        for (int slot = 0; slot < mesh.attribCount; slot++)
            out += formatted("%s type %d (%s) of %d", slot ? "," : "", mesh.attribType[slot],
                             typeName(mesh.attribType[slot]).c_str(), mesh.attribSize[slot]);
        out += '\n';
        out += boundsOf(mesh);
    }
    return out;
}

std::vector<std::string> objections(const MeshSet& set, const std::string& path) {
    Faults faults;
    for (const Mesh& mesh : set) findFaults(mesh, faults);
    std::vector<std::string> lines;
    if (faults.faces == 0) lines.push_back("there is nothing to draw");
    if (faults.order > 0)
        lines.push_back("the first attribute of a mesh is not type 1: the show does not start with it");
    if (faults.unlit > 0) lines.push_back("a mesh has no normals (type 2): light can't fall on it");
    if (faults.unmapped > 0)
        lines.push_back("a mesh has no coordinates (type 6): its surface has one colour");
    if (!faults.finite) lines.push_back("a position is no finite number");
    if (faults.bentNormals > 0)
        lines.push_back(formatted("%d normals are not of length 1", faults.bentNormals));
    if (faults.slivers > 0) lines.push_back(formatted("%d faces have no area", faults.slivers));

    const MeshRow* row = rowOf(path);
    if (!row) return lines;
    if (faults.reach > row->reach)
        lines.push_back(formatted("it reaches %g units from the origin, where its scenes leave room for %g",
                                  faults.reach, row->reach));
    if (row->traced && faults.faces > mostTracedFaces)
        lines.push_back(formatted("%d faces for beams to bounce off, where %d are quick enough", faults.faces,
                                  mostTracedFaces));
    return lines;
}
