#include "tools/aml/model.h"

#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <stdlib.h>

#include <assimp/DefaultIOStream.h>
#include <assimp/DefaultIOSystem.h>
#include <algorithm>
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <map>
#include <numbers>

#include "tools/whole_file.h"

namespace fs = std::filesystem;

namespace {

constexpr float smoothing = 40;      // degrees; the generator's models have the same
constexpr float nearlyUnit = 1e-4f;  // how far a normal's length may be from 1 to be kept as it is
constexpr char outOfMemory[] = "wants more memory than 4 GB";
constexpr float degree = std::numbers::pi_v<float> / 180;

std::string oneLine(std::string text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.pop_back();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

bool isFinite(const aiVector3D& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// Without minus zeros, so that equal corners are the same.
std::array<float, 3> words(const aiVector3D& v) {
    return {v.x + 0.0f, v.y + 0.0f, v.z + 0.0f};
}

aiMatrix4x4 matrixOf(const Placing& placing) {
    aiMatrix4x4 matrix;
    aiMatrix4x4::Scaling(aiVector3D(placing.scale), matrix);
    for (const Turn& turn : placing.turns) {
        aiMatrix4x4 rotation;
        const float angle = turn.degrees * degree;
        if (turn.axis == 0) aiMatrix4x4::RotationX(angle, rotation);
        if (turn.axis == 1) aiMatrix4x4::RotationY(angle, rotation);
        if (turn.axis == 2) aiMatrix4x4::RotationZ(angle, rotation);
        matrix = rotation * matrix;
    }
    return matrix;
}

class Collector {
public:
    explicit Collector(const aiScene& scene) : scene(scene) {}

    AmlBuilder builder;
    size_t withoutNormals = 0, withoutCoordinates = 0, withMoreCoordinates = 0, brokenFaces = 0;

    void addNode(const aiNode& node, const aiMatrix4x4& above) {
        const aiMatrix4x4 matrix = above * node.mTransformation;
        for (unsigned i = 0; i < node.mNumMeshes; i++) addMesh(*scene.mMeshes[node.mMeshes[i]], matrix);
        for (unsigned i = 0; i < node.mNumChildren; i++) addNode(*node.mChildren[i], matrix);
    }

private:
    void addMesh(const aiMesh& mesh, const aiMatrix4x4& matrix) {
        if (!(mesh.mPrimitiveTypes & aiPrimitiveType_TRIANGLE)) return;
        const bool identity = matrix.IsIdentity();
        const aiMatrix3x3 linear(matrix);
        const bool mirrored = linear.Determinant() < 0;
        aiMatrix3x3 normalMatrix = linear;
        normalMatrix.Inverse().Transpose();

        withoutCoordinates += !mesh.HasTextureCoords(0);
        withMoreCoordinates += mesh.HasTextureCoords(1);
        builder.beginMesh();
        pointAt.clear();
        for (unsigned f = 0; f < mesh.mNumFaces; f++) {
            const aiFace& face = mesh.mFaces[f];
            if (face.mNumIndices != 3) continue;
            std::array<AmlCorner, 3> corners;
            aiVector3D at[3], normals[3];
            bool sound = true;
            for (int i = 0; i < 3; i++) {
                const unsigned vertex = face.mIndices[mirrored ? 2 - i : i];
                at[i] = identity ? mesh.mVertices[vertex] : matrix * mesh.mVertices[vertex];
                normals[i] = mesh.HasNormals() ? mesh.mNormals[vertex] : aiVector3D(0);
                if (!identity) normals[i] = normalMatrix * normals[i];
                aiVector3D uv = mesh.HasTextureCoords(0) ? mesh.mTextureCoords[0][vertex] : aiVector3D(0);
                if (!isFinite(uv)) uv = aiVector3D(0);
                corners[i].coordinates = {uv.x + 0.0f, uv.y + 0.0f};
                sound = sound && isFinite(at[i]);
            }
            if (!sound) {
                brokenFaces++;
                continue;
            }
            const aiVector3D area = (at[1] - at[0]) ^ (at[2] - at[0]);
            for (int i = 0; i < 3; i++) {
                corners[i].position = words(at[i]);
                corners[i].normal = words(unitNormal(normals[i], area));
                corners[i].point =
                    pointAt.try_emplace(corners[i].position, uint32_t(pointAt.size())).first->second;
            }
            builder.addFace(corners);
        }
        if (builder.meshes.back().faces.empty()) builder.meshes.pop_back();
    }

    // The corner's own, if it is one; else the face's.
    static aiVector3D unitNormal(const aiVector3D& normal, const aiVector3D& area) {
        for (const aiVector3D& candidate : {normal, area}) {
            const float length = candidate.Length();
            if (!std::isfinite(length) || length < 1e-20f) continue;
            return std::fabs(length - 1) < nearlyUnit ? candidate : candidate / length;
        }
        return {0, 1, 0};
    }

    const aiScene& scene;
    std::map<std::array<float, 3>, uint32_t> pointAt;  // of the mesh
};

void describe(ImportedModel& model, const Collector& collector) {
    if (collector.withoutNormals > 0) model.notes.push_back("Without normals in the model: made");
    if (collector.withoutCoordinates > 0) model.notes.push_back("No texture coordinates: all of them are 0");
    if (collector.withMoreCoordinates > 0)
        model.notes.push_back("Several sets of texture coordinates: the first is taken");
    if (collector.brokenFaces > 0)
        model.notes.push_back(std::to_string(collector.brokenFaces) + " faces at no finite place: left out");
}

// What a mesh of a file holds, as a mesh of a scene.
aiMesh* sceneMesh(const Mesh& mesh) {
    auto* out = new aiMesh;
    out->mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    out->mNumVertices = unsigned(mesh.vertexCount);
    out->mVertices = new aiVector3D[mesh.vertexCount];
    const bool hasNormals = mesh.hasAttrib(normalAttrib), hasCoordinates = mesh.hasAttrib(texCoordAttrib);
    if (hasNormals) out->mNormals = new aiVector3D[mesh.vertexCount];
    if (hasCoordinates) {
        out->mTextureCoords[0] = new aiVector3D[mesh.vertexCount];
        out->mNumUVComponents[0] = 2;
    }
    for (int i = 0; i < mesh.vertexCount; i++) {
        const float* p =
            mesh.hasAttrib(gvertexAttrib) ? mesh.gvertexPosition(i) : mesh.vertexAttrib(i, positionAttrib);
        out->mVertices[i] = {p[0], p[1], p[2]};
        if (hasNormals) {
            const float* n = mesh.vertexAttrib(i, normalAttrib);
            out->mNormals[i] = {n[0], n[1], n[2]};
        }
        if (hasCoordinates) {
            const float* uv = mesh.vertexAttrib(i, texCoordAttrib);
            const bool both = mesh.attribSize[mesh.slotOfType[texCoordAttrib]] > 1;
            out->mTextureCoords[0][i] = {uv[0], both ? 1 - uv[1] : 1, 0};
        }
    }
    out->mNumFaces = unsigned(mesh.faceCount);
    out->mFaces = new aiFace[mesh.faceCount];
    for (int i = 0; i < mesh.faceCount; i++) {
        out->mFaces[i].mNumIndices = 3;
        out->mFaces[i].mIndices = new unsigned[3];
        std::copy_n(mesh.face(i), 3, out->mFaces[i].mIndices);
    }
    return out;
}

void fill(aiScene& scene, const std::vector<const Mesh*>& meshes, const std::string& name) {
    scene.mNumMaterials = 1;
    scene.mMaterials = new aiMaterial* [1] { new aiMaterial };
    scene.mMetaData = new aiMetadata;
    scene.mNumMeshes = unsigned(meshes.size());
    scene.mMeshes = new aiMesh*[meshes.size()];
    scene.mRootNode = new aiNode("root");
    auto* node = new aiNode(name);
    scene.mRootNode->addChildren(1, &node);
    node->mNumMeshes = unsigned(meshes.size());
    node->mMeshes = new unsigned[meshes.size()];
    for (size_t i = 0; i < meshes.size(); i++) {
        scene.mMeshes[i] = sceneMesh(*meshes[i]);
        scene.mMeshes[i]->mName = name + std::to_string(i);
        node->mMeshes[i] = unsigned(i);
    }
}

std::string formatOf(const Assimp::Exporter& exporter, std::string ending) {
    ending = ending.substr(std::min<size_t>(1, ending.size()));
    for (char& c : ending) c = char(std::tolower(static_cast<unsigned char>(c)));
    // As text, since binary files of this writer aren't always read again, by itself either.
    if (ending == "fbx") return "fbxa";
    // Its normals come back mirrored.
    if (ending == "x") return {};
    for (size_t i = 0; i < exporter.GetExportFormatCount(); i++) {
        const aiExportFormatDesc* format = exporter.GetExportFormatDescription(i);
        if (ending == format->fileExtension) return format->id;
    }
    return {};
}

// Assimp 6 names the texture coordinates in a PLY after colours, of which there are none here.
bool nameCoordinates(const std::string& path) {
    std::string text = contentOf(path);
    constexpr std::string_view wrong =
        "property uchar red\nproperty uchar green\nproperty uchar blue\nproperty uchar alpha\n";
    const size_t place = text.find(wrong);
    if (place == text.npos) return true;
    text.replace(place, wrong.size(), "property float s\nproperty float t\n");
    return writeWholeFile(path, text);
}

// Files of whose writing a failure is kept, which most of the library's formats pass over.
struct CheckedFiles : Assimp::DefaultIOSystem {
    struct Stream : Assimp::DefaultIOStream {
        FILE* file;
        int* error;

        Stream(FILE* file, const char* path, int* error)
            : DefaultIOStream(file, path), file(file), error(error) {}
        ~Stream() override { Flush(); }
        size_t Write(const void* bytes, size_t size, size_t count) override {
            const size_t written = fwrite(bytes, size, count, file);
            if (written < count && !*error) *error = errno;
            return written;
        }
        void Flush() override {
            if (fflush(file) != 0 && !*error) *error = errno;
        }
    };
    int* error;  // errno of the first one

    explicit CheckedFiles(int* error) : error(error) {}
    Assimp::IOStream* Open(const char* path, const char* mode) override {
        FILE* file = fopen(path, mode);
        return file ? new Stream(file, path, error) : nullptr;
    }
};

// A model may be several files that name each other: all are written in a folder beside their place and moved
// there when they are whole.
std::string writeModel(Assimp::Exporter& exporter, const aiScene& scene, const std::string& format,
                       const fs::path& path) {
    std::string folder = (path.parent_path() / ".unfinishedXXXXXX").string();
    if (!mkdtemp(folder.data())) return "can't write beside it";
    std::error_code error;
    std::string problem;
    const fs::path unfinished = fs::path(folder) / path.filename();
    int unwritten = 0;
    exporter.SetIOHandler(new CheckedFiles(&unwritten));  // who deletes it
    if (exporter.Export(&scene, format, unfinished.string()) != aiReturn_SUCCESS) {
        problem = oneLine(exporter.GetErrorString());
        if (problem.empty()) problem = "can't be written";
    }
    if (problem.empty() && unwritten) problem = strerror(unwritten);
    if (problem.empty() && !fs::exists(unfinished, error)) problem = "can't be written";
    if (problem.empty() && format == "ply" && !nameCoordinates(unfinished.string()))
        problem = strerror(errno);
    if (problem.empty())
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
            if (!error) fs::rename(entry.path(), path.parent_path() / entry.path().filename(), error);
    if (problem.empty() && error) problem = error.message();
    fs::remove_all(folder, error);
    return problem;
}

template <typename Value>
void giveEachCornerItsOwn(Value*& values, const std::vector<unsigned>& vertexOfCorner) {
    if (!values) return;
    auto* ofCorners = new Value[vertexOfCorner.size()];
    for (size_t i = 0; i < vertexOfCorner.size(); i++) ofCorners[i] = values[vertexOfCorner[i]];
    delete[] values;
    values = ofCorners;
}

// The library finds sharp edges only between vertices that no faces share.
void unshareVertices(aiMesh& mesh) {
    std::vector<unsigned> vertexOfCorner;
    for (unsigned i = 0; i < mesh.mNumFaces; i++) {
        for (unsigned k = 0; k < mesh.mFaces[i].mNumIndices; k++) {
            unsigned& index = mesh.mFaces[i].mIndices[k];
            vertexOfCorner.push_back(index);
            index = unsigned(vertexOfCorner.size()) - 1;
        }
    }
    giveEachCornerItsOwn(mesh.mVertices, vertexOfCorner);
    for (aiVector3D*& coordinates : mesh.mTextureCoords) giveEachCornerItsOwn(coordinates, vertexOfCorner);
    for (aiColor4D*& colours : mesh.mColors) giveEachCornerItsOwn(colours, vertexOfCorner);
    mesh.mNumVertices = unsigned(vertexOfCorner.size());
    // Bones and other shapes would go on naming the vertices that were; nothing here asks for them.
    for (unsigned i = 0; i < mesh.mNumBones; i++) delete mesh.mBones[i];
    delete[] mesh.mBones;
    mesh.mBones = nullptr;
    mesh.mNumBones = 0;
    for (unsigned i = 0; i < mesh.mNumAnimMeshes; i++) delete mesh.mAnimMeshes[i];
    delete[] mesh.mAnimMeshes;
    mesh.mAnimMeshes = nullptr;
    mesh.mNumAnimMeshes = 0;
}

ImportedModel importScene(Assimp::Importer& importer, const std::string& path, const Placing& placing) {
    ImportedModel model;
    importer.SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, smoothing);
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    const aiScene* scene = importer.ReadFile(path, aiProcess_ValidateDataStructure);
    size_t withoutNormals = 0;
    if (scene) {
        for (unsigned i = 0; i < scene->mNumMeshes; i++) {
            if (scene->mMeshes[i]->HasNormals()) continue;
            withoutNormals++;
            unshareVertices(*scene->mMeshes[i]);
        }
        scene = importer.ApplyPostProcessing(aiProcess_Triangulate | aiProcess_SortByPType |
                                             aiProcess_GenSmoothNormals | aiProcess_FlipUVs);
    }
    if (!scene || !scene->mRootNode) {
        model.problem = oneLine(importer.GetErrorString());
        if (model.problem == "std::bad_alloc") model.problem = outOfMemory;
        if (model.problem.empty()) model.problem = "can't be read";
        return model;
    }
    Collector collector(*scene);
    collector.withoutNormals = withoutNormals;
    collector.addNode(*scene->mRootNode, matrixOf(placing));
    model.meshes = std::move(collector.builder.meshes);
    if (model.meshes.empty())
        model.problem = "no triangles in it";
    else
        describe(model, collector);
    return model;
}

}  // namespace

ImportedModel importModel(const std::string& path, const Placing& placing) {
    Assimp::Importer importer;
    return importModel(importer, path, placing);
}

ImportedModel importModel(Assimp::Importer& importer, const std::string& path, const Placing& placing) {
    try {
        return importScene(importer, path, placing);
    } catch (const std::bad_alloc&) {
        return {{}, {}, outOfMemory};
    }
}

std::string exportModel(const MeshSet& set, const std::string& path) {
    Assimp::Exporter exporter;
    const std::string format = formatOf(exporter, fs::path(path).extension().string());
    if (format.empty()) return "no format that can be written has this ending";
    std::vector<const Mesh*> meshes;
    for (const Mesh& mesh : set) {
        if (mesh.vertexCount == 0 || mesh.faceCount == 0) continue;
        if (!mesh.hasAttrib(gvertexAttrib) && !mesh.hasAttrib(positionAttrib))
            return "a mesh has no positions";
        meshes.push_back(&mesh);
    }
    if (meshes.empty()) return "there are no faces to write";
    aiScene scene;
    fill(scene, meshes, fs::path(path).stem().string());
    const fs::path target = fs::absolute(path);
    return writeModel(exporter, scene, format, target);
}
