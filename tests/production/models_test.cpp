// What the program, the scenes and the beams rely on in the models: that they load, what room they take,
// which way they face, that nothing leaks, and that copies lie where the drawn ones do. Made anew by the
// generator.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "geometry/aml.h"
#include "geometry/matrix4.h"
#include "geometry/trace.h"
#include "production/models/models.h"
#include "production/models/spots.h"
#include "production/models/viewer.h"
#include "script/resources.h"
#include "tests/scratch.h"

namespace {

struct Corner {
    Vec3 point, normal;
    float s, t;
};

struct Triangle {
    Corner corners[3];

    // Its length is twice the area.
    Vec3 area() const {
        return cross(corners[1].point - corners[0].point, corners[2].point - corners[0].point);
    }
    Vec3 centre() const { return (corners[0].point + corners[1].point + corners[2].point) * (1 / 3.0f); }
};

const Product& productOf(const std::string& file) {
    for (const Product& product : modelProducts)
        if (product.file == file) return product;
    throw std::out_of_range(file);
}

// A model as the program has it after loading, with the triangles laid out.
struct Model {
    MeshSet set;
    std::vector<Triangle> triangles;

    explicit Model(const std::string& file) {
        const ScratchDirectory scratch;
        const std::string path = scratch.file(file);
        productOf(file).make(path.c_str());
        ResDescFile stream(path.c_str());
        loadAml(set, stream, path.c_str());
        for (Mesh& mesh : set) {
            mesh.expandPositions(path.c_str());
            for (int i = 0; i < mesh.faceCount; i++) addTriangle(mesh, mesh.face(i));
        }
    }

    float farthest(float (*measure)(const Vec3&)) const {
        float most = -1e9f;
        for (const Triangle& triangle : triangles)
            for (const Corner& corner : triangle.corners) most = std::max(most, measure(corner.point));
        return most;
    }
    float nearest(float (*measure)(const Vec3&)) const {
        float least = 1e9f;
        for (const Triangle& triangle : triangles)
            for (const Corner& corner : triangle.corners) least = std::min(least, measure(corner.point));
        return least;
    }

private:
    void addTriangle(const Mesh& mesh, const uint16_t* face) {
        Triangle triangle;
        for (int i = 0; i < 3; i++) {
            const float* p = mesh.vertexAttrib(face[i], positionAttrib);
            const float* n = mesh.vertexAttrib(face[i], normalAttrib);
            const float* uv = mesh.vertexAttrib(face[i], texCoordAttrib);
            triangle.corners[i] = {{p[0], p[1], p[2]}, {n[0], n[1], n[2]}, uv[0], uv[1]};
        }
        triangles.push_back(triangle);
    }
};

float x(const Vec3& p) {
    return p.x;
}
float y(const Vec3& p) {
    return p.y;
}
float z(const Vec3& p) {
    return p.z;
}
// Height of what a turning storey could strike its neighbours with: they are hollow for the trunk.
float besidesTrunk(const Vec3& p) {
    return std::hypot(p.x, p.z) > 13.01f ? p.y : 0;
}
float fromZ(const Vec3& p) {
    return std::hypot(p.x, p.y);
}  // axis
float fromY(const Vec3& p) {
    return std::hypot(p.x, p.z);
}  // axis
float fromOrigin(const Vec3& p) {
    return p.length();
}

// The hall's small mirrors, which steer beams, hang free in it, two-sided, and only in its copy.
bool amongTheHallsMirrors(const Vec3& p) {
    return fromY(p) < 250 && p.y > 10 && p.y < 250;
}

// What the stage's model shows of the mirror ball.
std::vector<Triangle> ballMirrors(const Model& stage) {
    std::vector<Triangle> mirrors;
    for (const Triangle& triangle : stage.triangles)
        if (triangle.centre().y > 24 && (triangle.centre() - Vec3{0, 70, 0}).length() < 46)
            mirrors.push_back(triangle);
    return mirrors;
}

using PointKey = std::tuple<long, long, long>;
PointKey keyOf(const Vec3& p) {
    return {std::lround(p.x * 100), std::lround(p.y * 100), std::lround(p.z * 100)};
}

// What of the tunnel faces outwards is a mirror for beams that nobody inside sees.
bool isHiddenMirror(const Triangle& triangle) {
    const Vec3 centre = triangle.centre();
    return dot(triangle.area(), {centre.x, centre.y, 0}) > 0;
}

// The edges that no neighbour shares, each as its two points. Beams bounce off both sides, so that it doesn't
// matter which way the neighbour faces.
std::vector<std::pair<Vec3, Vec3>> leaks(const Model& model) {
    std::map<std::pair<PointKey, PointKey>, std::pair<int, std::pair<Vec3, Vec3>>> edges;
    for (const Triangle& triangle : model.triangles) {
        for (int i = 0; i < 3; i++) {
            const Vec3 a = triangle.corners[i].point, b = triangle.corners[(i + 1) % 3].point;
            edges[std::minmax(keyOf(a), keyOf(b))].first++;
            edges[std::minmax(keyOf(a), keyOf(b))].second = {a, b};
        }
    }
    std::vector<std::pair<Vec3, Vec3>> open;
    for (const auto& [key, edge] : edges)
        if (edge.first % 2 != 0) open.push_back(edge.second);
    return open;
}

// The edges that no neighbour of the same side shares.
std::vector<std::pair<Vec3, Vec3>> openEdges(const Model& model) {
    std::map<std::pair<PointKey, PointKey>, std::pair<int, std::pair<Vec3, Vec3>>> edges;
    for (const Triangle& triangle : model.triangles) {
        for (int i = 0; i < 3; i++) {
            const Vec3 a = triangle.corners[i].point, b = triangle.corners[(i + 1) % 3].point;
            edges[{keyOf(a), keyOf(b)}].first++;
            edges[{keyOf(a), keyOf(b)}].second = {a, b};
        }
    }
    std::vector<std::pair<Vec3, Vec3>> open;
    for (const auto& [key, edge] : edges) {
        const auto back = edges.find({key.second, key.first});
        if (back == edges.end() || back->second.first != edge.first) open.push_back(edge.second);
    }
    return open;
}

Vec3 randomDirection(std::mt19937& random) {
    std::normal_distribution<float> normal;
    Vec3 direction = {normal(random), normal(random), normal(random)};
    direction.normalize();
    return direction;
}

TEST(Models, AreAllThereAndSound) {
    EXPECT_EQ(std::size(modelProducts), size_t(resourceCounts().meshes));
    for (const Product& product : modelProducts) {
        SCOPED_TRACE(product.file);
        const Model model(product.file);
        ASSERT_GT(model.set.count, 0);
        for (const Mesh& mesh : model.set) {
            ASSERT_GT(mesh.faceCount, 0);
            ASSERT_EQ(mesh.vsize, 8);
            ASSERT_LT(*std::max_element(&mesh.faces[0], &mesh.faces[3 * mesh.faceCount]), mesh.vertexCount);
        }
        int slivers = 0, bentNormals = 0, turnedNormals = 0, wildCoordinates = 0;
        for (const Triangle& triangle : model.triangles) {
            const Vec3 area = triangle.area();
            slivers += !(area.length() > 1e-3f);
            for (const Corner& corner : triangle.corners) {
                bentNormals += !(std::fabs(corner.normal.length() - 1) < 1e-3f);
                turnedNormals += !(dot(corner.normal, area) > 0);
                wildCoordinates += !(std::fabs(corner.s) < 100 && std::fabs(corner.t) < 100);
            }
        }
        EXPECT_EQ(slivers, 0);
        EXPECT_EQ(bentNormals, 0);
        EXPECT_EQ(turnedNormals, 0);
        EXPECT_EQ(wildCoordinates, 0);
    }
}

TEST(Models, ComeOutTheSameEveryTime) {
    const ScratchDirectory scratch;
    const auto content = [&](const Product& product, const char* name) {
        product.make(scratch.file(name).c_str());
        return contentOf(scratch.file(name));
    };
    for (const Product& product : modelProducts)
        EXPECT_TRUE(content(product, "first") == content(product, "second")) << product.file;
}

TEST(Models, TakeTheRoomTheirScenesLeaveThem) {
    const struct {
        const char* file;
        float (*measure)(const Vec3&);
        float leastFrom, leastTo, mostFrom, mostTo;  // where the least and the greatest value must lie
    } rows[] = {
        {"laatikko.AML", x, -56, -54, 54, 56},
        {"laatikko.AML", besidesTrunk, -9.5f, -9, 9, 9.5f},
        {"laatikko.AML", y, -160, -110, 40, 75},  // down out of the picture, and into it at the top
        {"laatikko.AML", z, -23, -22, 22, 23},
        {"ship.AML", z, -95, -85, 85, 95},
        {"ship.AML", fromZ, 0, 20, 40, 60},
        {"tunneli.AML", z, -150.01f, -149.99f, 149.99f, 150.01f},
        {"tunneli.AML", fromZ, 260, 270, 280, 300},
        {"robo_body.AML", fromY, 0, 1, 35, 45},
        {"robo_body.AML", y, -32, -18, 160, 195},
        {"robo_arms.AML", fromY, 0, 45, 35, 46},
        {"robo_arms.AML", y, -32, -28, 165, 195},
        {"ring.AML", fromY, 97, 101, 108, 114},
        {"ring.AML", y, -12, -3, 3, 12},
        {"haromalli.AML", fromOrigin, 5, 55, 90, 105},
        {"pallo.AML", fromOrigin, 1500, 4000, 1500, 4000},
        {"palikka.AML", fromOrigin, 0, 20, 30, 52},
        {"huone_simple.AML", fromY, 0, 1, 300, 510},
        {"huone_simple.AML", y, -1, 1, 240, 810},
        {"huone_detail.AML", fromY, 0, 1, 300, 510},
        {"tykki.AML", fromY, 0, 1, 290, 510},
        {"pallero.AML", fromOrigin, 30, 42, 30, 42.01f},
        {"pallero_detail.AML", fromOrigin, 28, 42, 30, 44},
        {"block.AML", y, -0.01f, 0.01f, 93.99f, 94.01f},
        {"block.AML", fromY, 45, 50, 50, 60},
    };
    for (const auto& row : rows) {
        const Model model(row.file);
        const float least = model.nearest(row.measure), most = model.farthest(row.measure);
        EXPECT_TRUE(row.leastFrom <= least && least <= row.leastTo) << row.file << " from " << least;
        EXPECT_TRUE(row.mostFrom <= most && most <= row.mostTo) << row.file << " to " << most;
    }
}

// In the hall the camera circles 229 to 270 units from the axis, 60 to 140 above the floor, and leaves what
// is there some 20 units more.
TEST(Models, HallLeavesTheCameraItsPath) {
    for (const char* file : {"tykki.AML", "huone_detail.AML"}) {
        int inTheWay = 0;
        for (const Triangle& triangle : Model(file).triangles) {
            const auto& [a, b, c] = triangle.corners;
            for (const Vec3& p : {a.point, b.point, c.point, triangle.centre()})
                inTheWay += p.y > 45 && p.y < 155 && fromY(p) > 210 && fromY(p) < 290;
        }
        EXPECT_EQ(inTheWay, 0) << file;
    }
}

// The casing hides the robot's lower part, and is scaled away round it.
TEST(Models, CasingEnclosesTheRobotsLowerPart) {
    const float inside = Model("block.AML").nearest(fromY);
    for (const char* file : {"robo_body.AML", "robo_arms.AML"}) {
        float widest = 0;
        for (const Triangle& triangle : Model(file).triangles)
            for (const Corner& corner : triangle.corners)
                if (corner.point.y < 94) widest = std::max(widest, fromY(corner.point));
        EXPECT_LT(widest, inside) << file;
    }
}

// Culling is on for these: a face that looks away from every viewer would be a hole.
TEST(Models, WallsFaceWhoeverIsInside) {
    // The camera of the heap stands up to 282.1 units from the axis, where it must not meet the back of a
    // mirror.
    int shown = 0;
    for (const Triangle& triangle : Model("tunneli.AML").triangles) {
        shown += !isHiddenMirror(triangle);
        for (int i = 0; i < 3 && isHiddenMirror(triangle); i++) {
            const Vec3 a = triangle.corners[i].point, b = triangle.corners[(i + 1) % 3].point;
            ASSERT_GT(fromZ((a + b) * 0.5f), 282.5f);
        }
    }
    EXPECT_GT(shown, 200);
    for (const Triangle& triangle : Model("huone_simple.AML").triangles) {
        const Vec3 centre = triangle.centre();
        ASSERT_TRUE(amongTheHallsMirrors(centre) || dot(triangle.area(), centre - Vec3{0, 100, 0}) < 0);
    }
    for (const Triangle& triangle : Model("pallo.AML").triangles)
        ASSERT_LT(dot(triangle.area(), triangle.centre()), 0);
    for (const Triangle& triangle : Model("pallero.AML").triangles)
        ASSERT_GT(dot(triangle.area(), triangle.centre()), 0);
}

TEST(Models, TracedOnesAreFewFacesAndLetNoBeamOut) {
    for (const auto& [file, mostFaces] : {std::pair{"huone_simple.AML", 700}, {"pallero.AML", 320}}) {
        const Model model(file);
        EXPECT_LE(int(model.triangles.size()), mostFaces) << file;
        EXPECT_TRUE(openEdges(model).empty()) << file;
    }
    const Model tunnel("tunneli.AML");
    EXPECT_LE(tunnel.triangles.size(), 700u);
    for (const auto& [a, b] : leaks(tunnel)) {
        ASSERT_FLOAT_EQ(std::fabs(a.z), 150);
        ASSERT_FLOAT_EQ(b.z, a.z);
    }
}

// The next segment stands 300 units further towards -z and is turned by 0.8 radian more.
TEST(Models, TunnelRunsOnInItsNextSegment) {
    const Model tunnel("tunneli.AML");
    std::vector<Vec3> nearEnd, farEnd;
    for (const auto& [a, b] : leaks(tunnel)) {
        std::vector<Vec3>& points = a.z > 0 ? nearEnd : farEnd;
        points.push_back(a), points.push_back(b);
    }
    ASSERT_GE(farEnd.size(), 20u);
    ASSERT_EQ(nearEnd.size(), farEnd.size());
    for (const Vec3& p : farEnd) {
        EXPECT_NEAR(fromZ(p), fromZ(farEnd[0]), 0.01f);
        float closest = 1e9f;
        for (const Vec3& q : nearEnd) {
            const Vec3 next = {q.x * std::cos(0.8f) - q.y * std::sin(0.8f),
                               q.x * std::sin(0.8f) + q.y * std::cos(0.8f), q.z - 300};
            closest = std::min(closest, (next - p).length());
        }
        EXPECT_LT(closest, 0.01f);
    }
}

// Beams that all stayed in the plane they start in would be a star and not a web.
TEST(Models, TunnelThrowsBeamsOutOfTheirPlane) {
    const Model tunnel("tunneli.AML");
    TraceScene scene;
    scene.addInstance(&tunnel.set);
    int away = 0;
    for (int i = 0; i < 100; i++) {
        const float angle = 0.0628f * i, height = -120 + 2.4f * i;
        BeamPath path;
        traceBeam(scene, {0, 0, height}, {std::cos(angle), std::sin(angle), 0}, 2, path);
        ASSERT_GE(path.count, 3);
        EXPECT_GT(path[1].distance, 255);
        EXPECT_LT(path[1].distance, 300);
        away += std::fabs(path[2].point.z - height) > 20;
    }
    EXPECT_GT(away, 50);
}

// Six beams leave the axis at z = 52 and -52, at 30, 90, 150 ... degrees: a nozzle stands round each, and
// none half-way between two.
TEST(Models, ShipHasANozzleAtEachBeam) {
    const Model ship("ship.AML");
    const auto reachAt = [&](float height, float angle) {
        const Vec3 direction = {std::cos(angle), std::sin(angle), 0};
        float reach = 0;
        for (const Triangle& triangle : ship.triangles) {
            const Vec3 p = triangle.centre() - Vec3{0, 0, height};
            // Short of the blades.
            if (std::fabs(p.z) < 3 && fromZ(p) < 34 && dot(p, direction) > 0.985f * fromZ(p))
                reach = std::max(reach, fromZ(p));
        }
        return reach;
    };
    for (const auto& [height, mouth] : {std::pair{-52.0f, 19.0f}, {52.0f, 31.0f}}) {
        for (int i = 0; i < 6; i++) EXPECT_GT(reachAt(height, 0.523599f + 1.047198f * i), mouth) << i;
        // The blades stand between every second pair.
        for (int i = 0; i < 3; i++) EXPECT_LT(reachAt(height, 1.047198f + 2.094395f * i), mouth) << i;
    }
}

// Where a beam's spot is drawn, there is something that is drawn under it.
TEST(Models, CopiesLieWithinAFewUnitsOfWhatIsDrawn) {
    std::mt19937 random(1);
    const Model room("huone_detail.AML"), roomCopy("huone_simple.AML");
    TraceScene drawnRoom, tracedRoom;
    drawnRoom.addInstance(&room.set);
    tracedRoom.addInstance(&roomCopy.set);
    for (int i = 0; i < 300; i++) {
        const Vec3 eye = {0, 70, 0}, direction = randomDirection(random);
        TraceHit onDrawn, onTraced;
        ASSERT_TRUE(drawnRoom.intersectRay(eye, direction, &onDrawn));
        ASSERT_TRUE(tracedRoom.intersectRay(eye, direction, &onTraced));
        if (amongTheHallsMirrors(onTraced.point)) continue;
        EXPECT_NEAR(onDrawn.distance, onTraced.distance, 6);
    }
}

// The ball's mirrors hang still in the hall while its copy turns: beams from their projectors end on a
// mirror, or in a joint between two, not within it or far before it.
TEST(Models, BeamsEndOnTheBall) {
    const Model stage("tykki.AML"), copy("pallero.AML");
    TraceScene drawn, traced;
    drawn.addInstance(&stage.set);
    traced.addInstance(&copy.set);
    int onMirrors = 0;
    for (int i = 0; i < 200; i++) {
        const float time = 139 + 0.27f * i, angle = 1.2566371f * (i % 5);
        traced.setInstanceMatrix(
            0, affineProduct(translation({0, 70, 0}),
                             affineProduct(rotationY(0.21 * time), rotationX(0.28 * time))));
        // From before the projector's mouth.
        const Vec3 from = {90 * std::cos(angle), 70 + 90 * 70 / 120.0f, 90 * std::sin(angle)};
        Vec3 direction = Vec3{0, 70, 0} - from;
        direction.normalize();
        TraceHit onDrawn, onTraced;
        ASSERT_TRUE(traced.intersectRay(from, direction, &onTraced));
        if (!drawn.intersectRay(from, direction, &onDrawn) || onDrawn.distance > 75) continue;
        onMirrors++;
        EXPECT_GT(onDrawn.distance, onTraced.distance - 0.2f) << time;
        EXPECT_LT(onDrawn.distance, onTraced.distance + 2.5f) << time;
    }
    EXPECT_GT(onMirrors, 100);
}

// The screen shows a square view a third too broad.
TEST(Models, BallLooksRound) {
    const Model stage("tykki.AML");
    float breadth = 0, height = 0;
    for (const Triangle& triangle : ballMirrors(stage)) {
        for (const Corner& corner : triangle.corners) {
            breadth = std::max(breadth, fromY(corner.point));
            height = std::max(height, std::fabs(corner.point.y - 70));
        }
    }
    EXPECT_NEAR(breadth * 4 / 3, height, 2);
    EXPECT_GT(breadth, Model("pallero_detail.AML").farthest(fromOrigin));  // what turns is hidden within
}

// In each half second some mirror throws the comet to the viewer, and a third of those that he sees the glow.
TEST(Models, BallGlittersAllTheTime) {
    const std::vector<Triangle> mirrors = ballMirrors(Model("tykki.AML"));
    const auto vec = [](const Vec3& p) { return model::Vec{p.x, p.y, p.z}; };
    int most = 0;
    for (double time = 139; time < 184; time += 0.5) {
        int alight = 0;
        for (int i = 0; i < 10; i++) {
            const viewer::View view = viewer::at(time + 0.05 * i);
            int flashing = 0, glowing = 0, seen = 0;
            for (const Triangle& triangle : mirrors) {
                const Vec3 place = triangle.centre();
                if (dot(vec(triangle.area()), view.eye - vec(place)) < 0) continue;
                seen++;
                const model::Vec shown = viewer::shown(view, vec(place), vec(triangle.corners[0].normal));
                flashing += viewer::cometLight(shown) > 0.4;
                glowing += shown.z < -0.7;
            }
            alight = std::max(alight, flashing);
            most = std::max(most, flashing);
            EXPECT_GT(glowing * 3, seen) << time;
        }
        EXPECT_GT(alight, 0) << time;
    }
    EXPECT_LT(most, int(mirrors.size()) / 20);  // a few, not a flood
}

// What the ball throws on the stage before the viewer: some of it in each second, and never all at once.
TEST(Models, SpotsWanderOverTheStage) {
    const model::Shape spots = spots::onStage();
    for (double time = 142; time < 184; time += 1) {
        int alight = 0, most = 0;
        for (int i = 0; i < 10; i++) {
            const viewer::View view = viewer::at(time + 0.1 * i);
            int now = 0;
            for (const model::Face& face : spots.faces) {
                const model::Vec place = faceCentre(spots, face);
                if (dot(place - view.eye, view.back) > 0) continue;  // behind him
                now += viewer::cometLight(
                           viewer::shown(view, place, normalized(face.normals[0] + face.normals[2]))) > 0.4;
            }
            alight += now > 0;
            most = std::max(most, now);
        }
        EXPECT_GT(alight, 5) << time;
        EXPECT_LT(most, int(spots.faces.size()) / 10) << time;
    }
}

// The camera's two last orbits of the robot scene lead through the gap between hips and chest.
TEST(Models, RobotLetsTheCameraThrough) {
    const Model body("robo_body.AML"), arms("robo_arms.AML"), screen("robo_screen.AML");
    for (double t = 109; t < 139; t += 0.02) {
        const bool last = t > 116.204;
        const Vec3 eye = {float(last ? 80 * sin(0.82 * t + M_PI) : 70 * sin(0.82 * t)),
                          float(last ? 15 * sin(0.5 * t) + 70 : 10 * sin(0.5 * t) + 15),
                          float(last ? 60 * cos(0.51 * t + M_PI) : 60 * cos(0.88 * t))};
        if (fromY(eye) > 50) continue;
        float clear = 1e9f;
        for (const Model* part : {&body, &arms, &screen})
            for (const Triangle& triangle : part->triangles)
                clear = std::min(clear, (triangle.centre() - eye).length());
        EXPECT_GT(clear, 2.5f) << t;
    }
}

// Lettering reads the right way round where a picture covers a wall, and upright on the robot's face.
TEST(Models, PicturesAreNotMirrored) {
    for (const char* file : {"tunneli.AML", "huone_simple.AML", "pallo.AML"}) {
        int mirrored = 0;
        for (const Triangle& triangle : Model(file).triangles) {
            const auto& [a, b, c] = triangle.corners;
            // T runs down the picture, so that an upright picture turns the other way round than its face.
            mirrored += (b.s - a.s) * (c.t - a.t) - (c.s - a.s) * (b.t - a.t) > 1e-6f;
        }
        EXPECT_EQ(mirrored, 0) << file;
    }
    // The face fills the upper left of its picture.
    Model screen("robo_screen.AML");
    const Mesh& face = screen.set.meshes[0];
    for (int i = 0; i < face.vertexCount; i++) {
        const float *p = face.vertexAttrib(i, positionAttrib), *uv = face.vertexAttrib(i, texCoordAttrib);
        EXPECT_NEAR(uv[0], p[0] > 0 ? 0.47f : 0.16f, 0.17f);
        EXPECT_NEAR(uv[1], p[1] > 148 ? 0.125f : 0.375f, 0.19f);
        EXPECT_GT(p[2], 10);
    }
}

}  // namespace
