// `aml`: models of several formats to mesh files and back, and what it says of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "geometry/aml_writer.h"
#include "script/resources.h"
#include "tests/geometry/aml_bytes.h"
#include "tests/process.h"
#include "tests/scratch.h"
#include "tools/aml/info.h"
#include "tools/aml/model.h"

namespace {

constexpr char otherPeoplesModels[] = "/usr/share/assimp/models/";

using Corner = std::array<float, 8>;  // position, normal, coordinates
using Triangle = std::array<Corner, 3>;

std::vector<Triangle> trianglesOf(const std::string& path) {
    MeshSet set = meshesIn(contentOf(path));
    std::vector<Triangle> triangles;
    for (Mesh& mesh : set) {
        mesh.expandPositions(path.c_str());
        EXPECT_EQ(mesh.vsize, 8);
        for (int i = 0; i < mesh.faceCount; i++) {
            Triangle& triangle = triangles.emplace_back();
            for (int k = 0; k < 3; k++)
                std::copy_n(&mesh.vertices[8 * mesh.face(i)[k]], 8, triangle[k].begin());
        }
    }
    return triangles;
}

float apart(const std::vector<Triangle>& a, const std::vector<Triangle>& b, size_t begin, size_t end) {
    float most = 0;
    for (size_t i = 0; i < std::min(a.size(), b.size()); i++)
        for (int k = 0; k < 3; k++)
            for (size_t word = begin; word < end; word++)
                most = std::max(most, std::fabs(a[i][k][word] - b[i][k][word]));
    return most;
}

Result aml(const std::string& words, const std::string& before = "") {
    return shell(before + AML_PROGRAM " " + words);
}

TEST(AmlTool, ModelsOfManyFormatsComeBackAsTheyWere) {
    const struct {
        const char* format;
        float tolerance;
        bool hasCoordinates = true;
    } formats[] = {{"obj", 1e-4f}, {"gltf", 1e-5f}, {"glb", 1e-5f},       {"fbx", 1e-4f},
                   {"ply", 1e-4f}, {"dae", 1e-4f},  {"stl", 1e-3f, false}};
    for (const std::string file : {"ship", "huone_detail"}) {
        const std::string original = "data/" + file + ".AML";
        const std::vector<Triangle> before = trianglesOf(original);
        for (const auto& row : formats) {
            SCOPED_TRACE(file + "." + row.format);
            const ScratchDirectory scratch;
            const std::string model = scratch.file(std::string("a model.") + row.format),
                              back = scratch.file("back.AML");
            ASSERT_EQ(aml("export " + original + " '" + model + "'").status, 0);
            const Result run = aml("import '" + model + "' " + back);
            ASSERT_EQ(run.status, 0) << run.output;
            const std::vector<Triangle> after = trianglesOf(back);
            ASSERT_EQ(before.size(), after.size());
            EXPECT_LT(apart(before, after, 0, 3), 10 * row.tolerance);
            if (row.hasCoordinates) {
                EXPECT_LT(apart(before, after, 3, 6), row.tolerance);
                EXPECT_LT(apart(before, after, 6, 8), row.tolerance);
                // As many vertices as before: what corners share they share again.
                EXPECT_NEAR(double(std::filesystem::file_size(back)) / std::filesystem::file_size(original),
                            1, 0.03);
            }
        }
    }
}

// Models that other people made and Debian ships: how many triangles each has, and the room it takes.
TEST(AmlTool, ImportsOtherPeoplesModels) {
    struct Row {
        const char* file;
        size_t triangles;
        std::array<float, 3> least, most;
    };
    const Row rows[] = {
        {"STL/Spider_binary.stl", 1368, {-3.115f, -4, -1.649f}, {3.115f, 4, 1.649f}},
        {"FBX/huesitos.fbx", 120, {-105.84f, 0.35f, -528.87f}, {429.93f, 544.19f, -207.33f}},
        {"Collada/duck.dae", 4212, {-0.693f, 0.099f, -0.613f}, {0.962f, 1.640f, 0.539f}},
        {"glTF/CesiumMilkTruck/CesiumMilkTruck.gltf",
         3624,
         {-2.431f, -0.258f, -1.396f},
         {2.438f, 2.584f, 1.396f}},
        {"glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb",
         121496,
         {-371.692f, -180.972f, -140},
         {371.692f, 92.042f, 128}},
        {"3DS/fels.3ds", 768, {-2.222f, -2.565f, -0.121f}, {1.283f, 2.117f, 3.084f}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.file);
        const ScratchDirectory scratch;
        const std::string made = scratch.file("made.AML");
        const Result run = aml(std::string("import ") + otherPeoplesModels + row.file + " " + made);
        ASSERT_EQ(run.status, 0) << run.output;
        const std::vector<Triangle> triangles = trianglesOf(made);
        EXPECT_EQ(triangles.size(), row.triangles);
        std::array<float, 3> least = {1e9f, 1e9f, 1e9f}, most = {-1e9f, -1e9f, -1e9f};
        for (const Triangle& triangle : triangles) {
            for (const Corner& corner : triangle) {
                for (int axis = 0; axis < 3; axis++) {
                    least[axis] = std::min(least[axis], corner[axis]);
                    most[axis] = std::max(most[axis], corner[axis]);
                }
                EXPECT_NEAR(std::hypot(corner[3], corner[4], corner[5]), 1, 1e-3f);
            }
        }
        for (int axis = 0; axis < 3; axis++) {
            EXPECT_NEAR(least[axis], row.least[axis], 0.01f) << axis;
            EXPECT_NEAR(most[axis], row.most[axis], 0.01f) << axis;
        }
    }
}

// A quad above the ground seen from above, in a file as modellers write it.
constexpr char quad[] =
    "v 0 1 0\nv 2 1 0\nv 2 1 -2\nv 0 1 -2\n"
    "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\nf 1/1 2/2 3/3 4/4\n";

TEST(AmlTool, CutsPolygonsAndMakesNormalsAndTurnsPicturesUpright) {
    const ScratchDirectory scratch;
    const ImportedModel model = importModel(scratch.write("quad.obj", quad), {});
    ASSERT_EQ(model.problem, "");
    ASSERT_EQ(model.meshes.size(), 1u);
    const AmlMeshData& mesh = model.meshes[0];
    ASSERT_EQ(mesh.faces.size(), 2u);
    ASSERT_EQ(mesh.positions.size(), 4u);
    ASSERT_EQ(mesh.vertices.size(), 4u);
    for (const AmlVertex& vertex : mesh.vertices) {
        EXPECT_EQ(vertex.normal, (std::array<float, 3>{0, 1, 0}));
        const auto& p = mesh.positions[vertex.position];
        EXPECT_EQ(vertex.coordinates, (std::array<float, 2>{p[0] / 2, 1 + p[2] / 2}));
    }
    EXPECT_EQ(model.notes, std::vector<std::string>{"Without normals in the model: made"});
}

// A cube whose faces share their corners, and a lid on it that is nearly flat.
TEST(AmlTool, MakesNormalsThatKeepSharpEdges) {
    const ScratchDirectory scratch;
    const std::string path = scratch.write(
        "cube.ply",
        "ply\nformat ascii 1.0\nelement vertex 9\nproperty float x\nproperty float y\nproperty float z\n"
        "element face 9\nproperty list uchar int vertex_indices\nend_header\n"
        "0 0 0\n1 0 0\n1 1 0\n0 1 0\n0 0 1\n1 0 1\n1 1 1\n0 1 1\n0.5 0.5 1.1\n"
        "4 0 3 2 1\n4 0 1 5 4\n4 1 2 6 5\n4 2 3 7 6\n4 3 0 4 7\n3 4 5 8\n3 5 6 8\n3 6 7 8\n3 7 4 8\n");
    const ImportedModel model = importModel(path, {});
    ASSERT_EQ(model.problem, "");
    ASSERT_EQ(model.meshes.size(), 1u);
    // Five sides of four corners; the lid's four and its tip are smooth.
    EXPECT_EQ(model.meshes[0].vertices.size(), 25u);
}

TEST(AmlTool, ScalesFirstAndTurnsOneAfterTheOther) {
    const ScratchDirectory scratch;
    scratch.write("quad.obj", quad);
    const std::string back = scratch.file("quad.AML");
    ASSERT_EQ(
        aml("import " + scratch.file("quad.obj") + " " + back + " --scale 3 --turn x:90 --turn z:90").status,
        0);
    // (x, y, z) is (x, -z, y) after the first turn and (z, x, y) after the second.
    for (const Triangle& triangle : trianglesOf(back)) {
        for (const Corner& corner : triangle) {
            EXPECT_TRUE(std::fabs(corner[0]) < 1e-5f || std::fabs(corner[0] + 6) < 1e-5f) << corner[0];
            EXPECT_NEAR(corner[2], 3, 1e-5f);
            EXPECT_NEAR(corner[5], 1, 1e-5f);
        }
    }
    // A mirror image has its fronts in front.
    ASSERT_EQ(aml("import " + scratch.file("quad.obj") + " " + back + " --scale -1").status, 0);
    const Triangle first = trianglesOf(back).at(0);
    const auto side = [&](int k, int axis) { return first[k][axis] - first[0][axis]; };
    const float up = side(1, 2) * side(2, 0) - side(1, 0) * side(2, 2);
    EXPECT_GT(up * first[0][4], 0);
}

TEST(AmlTool, ContinuesWhatOutgrowsAMeshInFurtherOnes) {
    const ScratchDirectory scratch;
    constexpr int side = 300;  // 90,601 points
    std::string text;
    for (int i = 0; i <= side; i++)
        for (int k = 0; k <= side; k++) text += "v " + std::to_string(i) + " 0 " + std::to_string(k) + "\n";
    for (int i = 0; i < side; i++) {
        for (int k = 1; k <= side; k++) {
            const int at = i * (side + 1) + k;
            text += "f " + std::to_string(at) + " " + std::to_string(at + 1) + " " +
                    std::to_string(at + side + 2) + " " + std::to_string(at + side + 1) + "\n";
        }
    }
    const std::string back = scratch.file("grid.AML");
    ASSERT_EQ(aml("import " + scratch.write("grid.obj", text) + " " + back).status, 0);
    MeshSet set = meshesIn(contentOf(back));
    EXPECT_GE(set.count, 3);
    EXPECT_EQ(trianglesOf(back).size(), 2u * side * side);
}

// A small file may show its one mesh any number of times.
TEST(AmlTool, SaysWhatOutgrowsTheMemory) {
    const ScratchDirectory scratch;
    constexpr int triangles = 20000, times = 250;
    std::vector<float> positions;
    for (int i = 0; i < triangles; i++)
        for (const float word : {0, 0, 0, 1, 0, 0, 0, 1, 0}) positions.push_back(word + float(i));
    const std::string bytes(reinterpret_cast<const char*>(positions.data()),
                            positions.size() * sizeof(float));
    const std::string size = std::to_string(bytes.size()), count = std::to_string(3 * triangles);
    std::string nodes = "{\"mesh\":0}", list = "0";
    for (int i = 1; i < times; i++) {
        nodes += ",{\"mesh\":0}";
        list += ',' + std::to_string(i);
    }
    scratch.write("many.bin", bytes);
    const std::string model = scratch.write(
        "many.gltf",
        "{\"asset\":{\"version\":\"2.0\"},\"scene\":0,\"scenes\":[{\"nodes\":[" + list + "]}],\"nodes\":[" +
            nodes + "],\"meshes\":[{\"primitives\":[{\"attributes\":{\"POSITION\":0}}]}],\"buffers\":[{" +
            "\"byteLength\":" + size +
            ",\"uri\":\"many.bin\"}],\"bufferViews\":[{\"buffer\":0,\"byteLength\":" + size +
            "}],\"accessors\":[{\"bufferView\":0,\"componentType\":5126,\"count\":" + count +
            ",\"type\":\"VEC3\"}]}");
    const Result run = aml("import " + model + " " + scratch.file("many.AML"), "ulimit -v 400000; ");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, model + ": wants more memory than 4 GB\n");
    EXPECT_FALSE(std::filesystem::exists(scratch.file("many.AML")));
}

TEST(AmlTool, HasNothingAgainstTheShowsFiles) {
    for (const MeshRow& row : meshRows()) {
        MeshSet set = meshesIn(contentOf(row.path));
        EXPECT_EQ(objections(set, row.path), std::vector<std::string>{}) << row.path;
        EXPECT_NE(aml(std::string("info ") + row.path).output.find(std::string("\"") + row.key + "\""),
                  std::string::npos);
    }
}

TEST(AmlTool, SaysWhatTheShowWouldObjectTo) {
    MeshSet set = meshesIn(contentOf("data/pallo.AML"));
    const std::vector<std::string> large = objections(set, "elsewhere/palikka.AML");
    ASSERT_EQ(large.size(), 1u);
    EXPECT_NE(large[0].find("where its scenes leave room for 52"), std::string::npos);
    MeshSet detailed = meshesIn(contentOf("data/ship.AML"));
    EXPECT_EQ(objections(detailed, "tunneli.AML").size(), 1u);
    EXPECT_EQ(objections(detailed, "mine.AML").size(), 0u);

    std::swap(set.meshes[0].attribType[0], set.meshes[0].attribType[1]);
    set.meshes[0].attribSize[0] = 3;
    set.meshes[0].attribSize[1] = 1;
    set.meshes[0].rebuildAttribs();
    set.meshes[0].vertexCount = set.meshes[0].faceCount = 0;
    const std::vector<std::string> turned = objections(set, "mine.AML");
    ASSERT_EQ(turned.size(), 2u);
    EXPECT_NE(turned[1].find("does not start with it"), std::string::npos);
}

TEST(AmlTool, BadInputEndsWithOneLineAndLosesNothing) {
    const ScratchDirectory scratch;
    const std::string root = scratch.path.string() + "/", kept = scratch.write("kept.AML", "kept");
    scratch.write("text.obj", "this is no model\n");
    scratch.write("points.obj", "v 0 0 0\nv 1 0 0\n");
    scratch.write("cut.glb", "glTF\2");
    std::filesystem::copy("data/ship.AML", root + "cut.AML");
    std::filesystem::resize_file(root + "cut.AML", 1000);
    const auto damaged = [&](const char* file) {
        return std::string("import ") + otherPeoplesModels + file + " " + kept;
    };
    const std::vector<std::string> commands = {"import " + root + "text.obj " + kept,
                                               "import " + root + "points.obj " + kept,
                                               "import " + root + "cut.glb " + kept,
                                               "import " + root + "none.fbx " + kept,
                                               damaged("invalid/OutOfMemory.off"),  // claims ten GB
                                               damaged("OBJ/point_cloud.obj"),
                                               damaged("glTF2/wrongTypes/badArray.gltf"),
                                               damaged("glTF2/RecursiveNodes/RecursiveNodes.gltf"),
                                               "info " + root + "none.AML",
                                               "info " + root + "cut.AML",
                                               "info " + kept,
                                               "export " + root + "cut.AML " + root + "a.obj",
                                               std::string("export data/ship.AML ") + root + "a.nothing",
                                               std::string("export data/ship.AML ") + root,
                                               "export data/ship.AML " + root + "none/a.obj",
                                               "import " + root + "text.obj",
                                               std::string("turn a b"),
                                               "import a b --scale 0",
                                               "import a b --turn w:1",
                                               "import a b --turn",
                                               "info a --wide"};
    for (const std::string& words : commands) {
        const Result run = aml(words);
        EXPECT_EQ(run.status, 1) << words;
        EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 1) << words << ": " << run.output;
    }
    // Where there is no room for all of it.
    for (const char* ending : {"obj", "gltf", "glb", "fbx", "ply", "stl", "dae"}) {
        const std::string model = scratch.write(std::string("kept.") + ending, "kept");
        const Result run = aml("export data/ship.AML " + model, "trap '' XFSZ; ulimit -f 200; ");
        EXPECT_EQ(run.status, 1);
        EXPECT_TRUE(run.output.starts_with(model + ": ") && run.output.ends_with("\n")) << run.output;
        EXPECT_EQ(contentOf(model), "kept");
        std::filesystem::remove(model);
    }
    EXPECT_EQ(std::filesystem::file_size(kept), 4u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.path), {}), 5);
}

}  // namespace
