// Models on their way to and from the show's files. What assimp makes of a modeller's file is its own affair,
// and so are the faults of its readers: here a loader of ours gives it the scene that an input describes,
// with all that scenes may hold, and the rest goes its usual way.
#include <assimp/BaseImporter.h>
#include <assimp/importerdesc.h>
#include <assimp/scene.h>

#include <assimp/Importer.hpp>
#include <cmath>
#include <limits>

#include "geometry/aml.h"
#include "geometry/aml_format.h"
#include "tests/fuzz/target.h"
#include "tests/scratch.h"
#include "tools/aml/model.h"

namespace {

// The bytes of an input, one after the other, and zeros behind them.
struct Bytes {
    std::string_view left;

    unsigned next() {
        if (left.empty()) return 0;
        const unsigned byte = uint8_t(left[0]);
        left.remove_prefix(1);
        return byte;
    }
    // From -7.9 to 7.9, and the numbers that are trouble.
    float number() {
        using Limits = std::numeric_limits<float>;
        constexpr float odd[] = {Limits::quiet_NaN(),
                                 Limits::infinity(),
                                 -Limits::infinity(),
                                 Limits::max(),
                                 Limits::lowest(),
                                 Limits::min(),
                                 Limits::denorm_min(),
                                 -0.0f,
                                 1e19f,
                                 1e-19f};
        const int byte = int8_t(next());
        return byte >= -128 + int(std::size(odd)) ? float(byte) / 16 : odd[byte + 128];
    }
    aiVector3D vector() {
        const float x = number(), y = number();
        return {x, y, number()};
    }
};

enum MeshFlag { hasNormals = 1, hasCoordinates = 2, hasMoreCoordinates = 4, hasColours = 8, isShaped = 16 };
template <typename Value>
Value* filled(unsigned count, auto next) {
    auto* values = new Value[count];
    for (unsigned i = 0; i < count; i++) values[i] = next();
    return values;
}

// Indices may be off by one: such scenes are refused.
aiMesh* makeMesh(Bytes& bytes) {
    auto* mesh = new aiMesh;
    const unsigned flags = bytes.next();
    const unsigned vertices = bytes.next() % 48 + 1, faces = bytes.next() % 48 + 1;
    const auto vector = [&] { return bytes.vector(); };
    mesh->mNumVertices = vertices;
    mesh->mVertices = filled<aiVector3D>(vertices, vector);
    if (flags & hasNormals) mesh->mNormals = filled<aiVector3D>(vertices, vector);
    for (unsigned set = 0; set < 2; set++) {
        if (!(flags & (hasCoordinates << set))) continue;
        mesh->mTextureCoords[set] = filled<aiVector3D>(vertices, vector);
        mesh->mNumUVComponents[set] = 2;
    }
    if (flags & hasColours)
        mesh->mColors[0] = filled<aiColor4D>(vertices, [&] { return aiColor4D(bytes.number()); });
    if (flags & isShaped) {
        auto* bone = new aiBone;
        bone->mName = "root";
        bone->mNumWeights = 1;
        bone->mWeights = new aiVertexWeight[1]{aiVertexWeight(bytes.next() % vertices, 1)};
        mesh->mBones = new aiBone* [1] { bone };
        mesh->mNumBones = 1;
        mesh->mAnimMeshes = new aiAnimMesh* [1] { new aiAnimMesh };
        mesh->mAnimMeshes[0]->mNumVertices = mesh->mNumVertices;
        mesh->mAnimMeshes[0]->mVertices = filled<aiVector3D>(vertices, vector);
        mesh->mNumAnimMeshes = 1;
    }
    mesh->mNumFaces = faces;
    mesh->mFaces = new aiFace[mesh->mNumFaces];
    for (unsigned f = 0; f < mesh->mNumFaces; f++) {
        aiFace& face = mesh->mFaces[f];
        face.mNumIndices = bytes.next() % 6;
        face.mIndices = face.mNumIndices > 0 ? new unsigned[face.mNumIndices] : nullptr;
        for (unsigned i = 0; i < face.mNumIndices; i++) face.mIndices[i] = bytes.next() % (vertices + 1);
    }
    return mesh;
}

aiMatrix4x4 makeMatrix(Bytes& bytes) {
    aiMatrix4x4 matrix;
    const unsigned kind = bytes.next();
    if (kind & 1) matrix.a1 = -1;
    if (kind & 2) matrix.b2 = bytes.number();
    if (kind & 4) matrix.a4 = bytes.number();
    if (kind & 8) matrix.c1 = bytes.number();
    return matrix;
}

void makeScene(Bytes bytes, aiScene& scene) {
    scene.mNumMaterials = 1;
    scene.mMaterials = new aiMaterial* [1] { new aiMaterial };
    const unsigned nodes = bytes.next() % 6;
    const unsigned meshes = bytes.next() % 4;
    scene.mMeshes = new aiMesh* [meshes + 1] {};
    for (; scene.mNumMeshes < meshes; scene.mNumMeshes++) scene.mMeshes[scene.mNumMeshes] = makeMesh(bytes);
    std::vector<aiNode*> made;
    for (unsigned i = 0; i <= nodes; i++) {
        auto* node = new aiNode(i == 0 ? "root" : std::to_string(i));
        if (i > 0) made[bytes.next() % i]->addChildren(1, &node);
        made.push_back(node);
        if (i == 0) scene.mRootNode = node;
        node->mTransformation = makeMatrix(bytes);
        node->mNumMeshes = bytes.next() % 3;
        node->mMeshes = node->mNumMeshes > 0 ? new unsigned[node->mNumMeshes] : nullptr;
        for (unsigned m = 0; m < node->mNumMeshes; m++) node->mMeshes[m] = bytes.next() % (meshes + 1);
    }
}

constexpr char ending[] = "described";

struct Loader : Assimp::BaseImporter {
    Bytes bytes;

    explicit Loader(Bytes bytes) : bytes(bytes) {}
    bool CanRead(const std::string& path, Assimp::IOSystem*, bool) const override {
        return path.ends_with(ending);
    }
    const aiImporterDesc* GetInfo() const override {
        static const aiImporterDesc description = {"fuzzer", "", "", "", 0, 0, 0, 0, 0, ending};
        return &description;
    }
    void InternReadFile(const std::string&, aiScene* scene, Assimp::IOSystem*) override {
        makeScene(bytes, *scene);
    }
};

void demandAmlLimits(const std::vector<AmlMeshData>& meshes) {
    for (const AmlMeshData& mesh : meshes) {
        demand(!mesh.faces.empty() && mesh.faces.size() <= amlMostRecords);
        demand(mesh.vertices.size() <= amlMostRecords && mesh.positions.size() <= amlMostRecords);
        for (const auto& position : mesh.positions)
            for (const float word : position) demand(std::isfinite(word));
        for (const AmlVertex& vertex : mesh.vertices) {
            const auto& [x, y, z] = vertex.normal;
            demand(vertex.position < mesh.positions.size() && std::fabs(std::hypot(x, y, z) - 1) < 1e-3f);
            for (const float word : vertex.coordinates) demand(std::isfinite(word));
        }
        for (const auto& face : mesh.faces)
            for (const uint16_t vertex : face) demand(vertex < mesh.vertices.size());
    }
}

size_t facesOf(const std::vector<AmlMeshData>& meshes) {
    size_t faces = 0;
    for (const AmlMeshData& mesh : meshes) faces += mesh.faces.size();
    return faces;
}

}  // namespace

void tryInput(std::string_view input) {
    static const ScratchDirectory folder;
    static const std::string path = folder.write(std::string("model.") + ending, "");
    Bytes bytes{input};
    constexpr const char* endings[] = {nullptr, "obj", "ply", "stl", "fbx", "X", "none", "glb"};
    const unsigned format = bytes.next();
    const char* exported = format < std::size(endings) ? endings[format] : nullptr;
    Placing placing;
    placing.scale = bytes.number();
    for (unsigned turns = bytes.next() % 4; turns > 0; turns--) {
        const int axis = int(bytes.next() % 3);
        placing.turns.push_back({axis, bytes.number() * 60});
    }

    Assimp::Importer importer;
    importer.RegisterLoader(new Loader(bytes));
    const ImportedModel model = importModel(importer, path, placing);
    demand(model.problem.empty() != model.meshes.empty());
    demand(model.problem.find('\n') == std::string::npos);
    if (model.meshes.empty()) return;
    demandAmlLimits(model.meshes);

    const MemoryFile file;
    demand(writeAmlFile(file.path(), model.meshes));
    MeshSet set;
    ResDescFile stream(file.path());
    loadAml(set, stream, file.path());
    demand(size_t(set.count) == model.meshes.size());
    if (!exported) return;
    const std::string written = folder.file(std::string("model.") + exported);
    if (!exportModel(set, written).empty()) return;
    const ImportedModel again = importModel(written, Placing());
    demandAmlLimits(again.meshes);
    demand(facesOf(again.meshes) == facesOf(model.meshes));
}
