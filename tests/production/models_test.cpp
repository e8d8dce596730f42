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
#include "script/resources.h"
#include "script/room_view.h"
#include "script/show_times.h"
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

float y(const Vec3& p) {
    return p.y;
}
// Height of what a turning storey could strike its neighbours with: they are hollow for the trunk.
float besidesTrunk(const Vec3& p) {
    return std::hypot(p.x, p.z) > 33.01f ? p.y : 0;
}
// Where the corridor is looked at from.
const Vec3 corridorStops[] = {
    {-112, 90, -100}, {200, -100, -500}, {112, 150, 190}, {-200, -100, 350}, {16, 122, 140}};

float fromZ(const Vec3& p) {
    return std::hypot(p.x, p.y);
}  // axis
float fromY(const Vec3& p) {
    return std::hypot(p.x, p.z);
}  // axis
// The hall's small mirrors, which steer beams, hang free in it, two-sided, and only in its copy.
bool amongTheHallsMirrors(const Vec3& p) {
    return fromY(p) < 250 && p.y > 10 && p.y < 250;
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

using Edge = std::pair<Vec3, Vec3>;

// The edges that are not walked as often one way as the other: no neighbour of the same side shares them.
// `leaks` counts only those that no neighbour shares at all, since beams bounce off both sides.
std::vector<Edge> openEdges(const Model& model, bool leaks = false) {
    std::map<std::pair<PointKey, PointKey>, std::pair<int, Edge>> edges;
    for (const Triangle& triangle : model.triangles) {
        for (int i = 0; i < 3; i++) {
            const Vec3 a = triangle.corners[i].point, b = triangle.corners[(i + 1) % 3].point;
            const bool forth = keyOf(a) < keyOf(b);
            auto& [walks, edge] = edges[std::minmax(keyOf(a), keyOf(b))];
            walks += leaks || forth ? 1 : -1;
            edge = {a, b};
        }
    }
    std::vector<Edge> open;
    for (const auto& [key, walked] : edges)
        if (leaks ? walked.first % 2 != 0 : walked.first != 0) open.push_back(walked.second);
    return open;
}

Vec3 randomDirection(std::mt19937& random) {
    std::normal_distribution<float> normal;
    Vec3 direction = {normal(random), normal(random), normal(random)};
    direction.normalize();
    return direction;
}

// No corner is lit from behind its face, but where all shading is paint: sea, tunnel, firebird and houses are
// lit as if all their surfaces faced one way.
TEST(Models, AreAllThereAndFaceTheirLight) {
    EXPECT_EQ(std::size(modelProducts), meshRows().size());
    for (const Product& product : modelProducts) {
        int turned = 0;
        for (const Triangle& triangle : Model(product.file).triangles)
            for (const Corner& corner : triangle.corners)
                turned += !(dot(corner.normal, triangle.area()) > 0);
        const std::string file = product.file;
        EXPECT_EQ(turned > 0, file == "haromalli.AML" || file == "tunneli.AML" || file == "ship.AML" ||
                                  file == "laatikko.AML")
            << file;
    }
}

// Between two beats and on one, the room's camera never comes through anything that stands in the hall.
TEST(Models, HallLeavesTheCameraItsPath) {
    const Model stage("tykki.AML"), room("huone_detail.AML");
    TraceScene scene;
    scene.addInstance(&stage.set);
    scene.addInstance(&room.set);
    constexpr float step = 0.1f, clear = 8;  // seconds; units round the eye, beyond the near plane
    for (const float pulse : {0.0f, 1.0f}) {
        for (float time = showtime::crossFade; time < showtime::end; time += step) {
            const auto eyeAt = [&](float t) {
                const RoomView view = roomView(t, pulse);
                return Vec3{view.eye[0], view.eye[1], view.eye[2]};
            };
            const Vec3 eye = eyeAt(time), ahead = eyeAt(time + step) - eye;
            for (Vec3 direction :
                 {ahead, Vec3{0, 1, 0}, Vec3{0, -1, 0}, Vec3{eye.x, 0, eye.z}, Vec3{-eye.x, 0, -eye.z}}) {
                direction.normalize();
                TraceHit hit;
                ASSERT_TRUE(!scene.intersectRay(eye, direction, &hit) ||
                            hit.distance > std::max(clear, ahead.length()))
                    << time;
            }
        }
    }
}

// What `v` was before a turn by `degrees` about `axis`.
Vec3 turnedBack(const Vec3& v, const Vec3& axis, float degrees) {
    const float angle = -degrees * float(M_PI) / 180;
    return v * std::cos(angle) + cross(axis, v) * std::sin(angle) +
           axis * (dot(axis, v) * (1 - std::cos(angle)));
}

// It is closed for whoever stands in it, and along the way of the stripes' far viewer nothing swims so close
// that it hides the rest; the near one sees nothing but what he travels in.
TEST(Models, SeaSurroundsItsViewer) {
    const Model sea("haromalli.AML");
    TraceScene scene;
    scene.addInstance(&sea.set);
    std::mt19937 random(1);
    const float half = std::sqrt(0.5f);
    for (float t = showtime::stripes.seconds(); t < showtime::tornTunnel.seconds(); t += 0.07f) {
        const auto eyeAt = [&](float angle, float radius, float distance) {
            const Vec3 from = Vec3{0, 0, distance} - Vec3{std::cos(angle), std::sin(angle), 0} * radius;
            return turnedBack(turnedBack(from, {0, 1, 0}, std::sin(t * 0.3f) * 180), {0, half, half},
                              std::cos(t * 0.2f) * 290);
        };
        const Vec3 eye = eyeAt(t, 100, 200);
        TraceHit hit;
        for (int i = 0; i < 4; i++) {
            ASSERT_TRUE(scene.intersectRay(eyeAt(0.4f * t, 40, 5), randomDirection(random), &hit)) << t;
            ASSERT_LT(hit.distance, 15) << t;
        }
        for (int i = 0; i < 4; i++) ASSERT_TRUE(scene.intersectRay(eye, randomDirection(random), &hit)) << t;
        for (const Triangle& triangle : sea.triangles)
            for (const Corner& corner : triangle.corners) ASSERT_GT((corner.point - eye).length(), 30) << t;
    }
}

// The casing stands round the robot's feet, and is scaled away round them.
TEST(Models, CasingStandsClearOfTheRobotsFeet) {
    const Model casing("block.AML");
    const float inside = casing.nearest(fromY), high = casing.farthest(y);
    EXPECT_NEAR(casing.nearest(y), 0, 0.01f);
    EXPECT_GT(high, 15);
    EXPECT_LE(high, 94);  // the program scales a height of 94
    for (const char* file : {"robo_body.AML", "robo_arms.AML", "robo_screen.AML"}) {
        float widest = 0;
        for (const Triangle& triangle : Model(file).triangles)
            for (const Corner& corner : triangle.corners)
                if (corner.point.y < high) widest = std::max(widest, fromY(corner.point));
        EXPECT_LT(widest, inside) << file;
    }
}

// They lie 20 units over each other, turn, and swell by a half towards who is 173 from their axis at least.
TEST(Models, HousesOfTheHeapStandOnTheirStoreysAndClearTheEye) {
    const Model box("laatikko.AML");
    EXPECT_GT(box.nearest(besidesTrunk), -24.5f);  // braces hang beside the storey below
    EXPECT_LT(box.farthest([](const Vec3& p) { return std::hypot(1.5f * p.x, p.z); }), 173 - 30);
    // What rises beside the storeys above has room between two that jut out to its sides.
    const auto besides = [](const Vec3& p) { return p.y > 11 ? std::abs(p.z) / p.x : 0; };
    EXPECT_LT(box.farthest(besides), 1.01f);
    EXPECT_GE(box.nearest(besides), 0);
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
    EXPECT_GT(shown, 50);
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
    for (const auto& [a, b] : openEdges(tunnel, true)) {
        ASSERT_FLOAT_EQ(std::fabs(a.z), 150);
        ASSERT_FLOAT_EQ(b.z, a.z);
    }
}

// The next segment stands 300 units further towards -z and is turned by 0.8 radian more.
TEST(Models, TunnelRunsOnInItsNextSegment) {
    const Model tunnel("tunneli.AML");
    std::vector<Vec3> nearEnd, farEnd;
    for (const auto& [a, b] : openEdges(tunnel, true)) {
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
        EXPECT_LT(path[1].distance, 307);
        away += std::fabs(path[2].point.z - height) > 20;
    }
    EXPECT_GT(away, 50);
}

// Six beams leave the axis at each of two places, and where they meet they would glare: from wherever it is
// seen and however it has rolled, the firebird is before that.
TEST(Models, FirebirdHidesWhereItsBeamsMeet) {
    const Model bird("ship.AML");
    TraceScene scene;
    scene.addInstance(&bird.set);
    for (const Vec3& eye : corridorStops)
        for (const float z : {-52.0f, 52.0f})
            for (int i = 0; i < 24; i++) {
                const float angle = 0.2617994f * i, out = fromZ(eye);
                const Vec3 from = {out * std::cos(angle), out * std::sin(angle), eye.z};
                Vec3 direction = Vec3{0.3f, 0.2f, z} - from;  // no edge of its symmetry, which is no hit
                const float distance = direction.length();
                direction.normalize();
                TraceHit hit;
                ASSERT_TRUE(scene.intersectRay(from, direction, &hit));
                EXPECT_LT(hit.distance, distance - 8) << eye.z << ", " << z << ", " << i;
            }
}

// However the ship has turned about its axis, no viewer of the corridor has a part of it at his eye.
TEST(Models, ShipKeepsClearOfItsViewers) {
    const Model ship("ship.AML");
    for (const Vec3& eye : corridorStops) {
        float closest = 1e9f;
        for (const Triangle& triangle : ship.triangles)
            for (const auto& corner : triangle.corners)
                closest =
                    std::min(closest, std::hypot(fromZ(corner.point) - fromZ(eye), corner.point.z - eye.z));
        EXPECT_GT(closest, 50) << eye.z;
    }
}

// Where a beam's spot is drawn, there is something that is drawn under it: on the dome just there; wall and
// floor have no hole, and may be hidden by what stands before them.
TEST(Models, DomeLiesAtItsCopyAndWallAndFloorNotBehindIt) {
    std::mt19937 random(1);
    const Model dome("huone_detail.AML"), stage("tykki.AML"), roomCopy("huone_simple.AML");
    TraceScene drawnDome, drawn, traced;
    drawnDome.addInstance(&dome.set);
    drawn.addInstance(&stage.set);
    traced.addInstance(&roomCopy.set);
    for (int i = 0; i < 300; i++) {
        const Vec3 direction = randomDirection(random), eye = Vec3{0, 120, 0} + direction * 80;
        TraceHit onDrawn, onTraced;
        ASSERT_TRUE(traced.intersectRay(eye, direction, &onTraced));
        if (amongTheHallsMirrors(onTraced.point)) continue;
        const bool onDome = onTraced.point.y > 600;
        ASSERT_TRUE((onDome ? drawnDome : drawn).intersectRay(eye, direction, &onDrawn));
        EXPECT_LT(onDrawn.distance, onTraced.distance + 6);
        if (onDome) {
            EXPECT_GT(onDrawn.distance, onTraced.distance - 6);
        }
    }
}

// Niches and stone are the stage's first two meshes; the ship, the colossus and its glass, the tower with its
// windows and the planet are its fourth to eighth.
TEST(Models, FiguresOfTheHallStandWithinItsArcade) {
    Model stage("tykki.AML");
    ASSERT_EQ(stage.set.count, 10);
    MeshSet arcade;
    arcade.reset(2);
    for (int i = 0; i < 2; i++) arcade.meshes[i] = std::move(stage.set.meshes[i]);
    TraceScene walls;
    walls.addInstance(&arcade);
    for (int i = 3; i <= 7; i++) {
        const Mesh& figure = stage.set.meshes[i];
        float farthestOver = -1e9f;  // behind what is there of the arcade
        for (int vertex = 0; vertex < figure.vertexCount; vertex++) {
            const float* p = figure.vertexAttrib(vertex, positionAttrib);
            if (p[1] < 1 || p[1] > 590) continue;  // let into the floor, or a cable from the dome
            // Beside the axis, from where some would meet edges of the arcade, which are no hits.
            const Vec3 eye = {0.3f, p[1] + 0.1f, 0.2f};
            Vec3 direction = Vec3{p[0], p[1], p[2]} - eye;
            const float out = direction.length();
            direction.normalize();
            TraceHit hit;
            ASSERT_TRUE(walls.intersectRay(eye, direction, &hit)) << i;
            farthestOver = std::max(farthestOver, out - hit.distance);
        }
        EXPECT_LT(farthestOver, 20) << i;  // a back that leans on a column sinks into it, unseen
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

// Lettering reads the right way round where a picture covers a wall.
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
}

}  // namespace
