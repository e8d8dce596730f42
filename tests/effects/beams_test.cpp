// Beams where they go: their lines and spots along a path, and what they bounce off in each effect.
#include "effects/beams.h"

#include "effects/huone.h"
#include "effects/laser.h"
#include "effects/laser_tunnel.h"
#include "effects/sample_laser.h"
#include "tests/effects/effect_window.h"

namespace {

class Beams : public PixelWindow {
public:
    void SetUp() override {
        PixelWindow::SetUp();
        addTextures({"spot", "shiptex", "cubetex", "envmap", "envmap4", "pinkLaser"});
    }

    // Draws the effect; the model-view matrix of the mesh that it drew as number `index`.
    Matrix4 matrixOf(EffectBase& effect, size_t index) {
        drawn.clear();
        picture = feedbackOf([&] { effect.draw(); });
        EXPECT_GT(drawn.size(), index);
        return drawn.at(index);
    }

    Feedback picture;
};

// A unit vector from one point of a path to the next.
Vec3 heading(const BeamPath& path, int from) {
    Vec3 direction = path[from + 1].point - path[from].point;
    direction.normalize();
    return direction;
}

TEST_F(Beams, FadeAlongTheirWayAndTouchSurfacesWithSpots) {
    BeamPath path(4);
    for (const BeamPoint& point : {BeamPoint{0, {0, 0, 0}, {0, 0, 0}},
                                   {1, {50, 0, 0}, {0, 0, 1}},
                                   {1, {100, 50, 0}, {0, -1, 0}},
                                   {1, {0, 100, 0}, {-0.6f, 0, 0.8f}},
                                   {1, {0, 150, 0}, {0, 0.6f, 0.8f}},
                                   {1, {50, 150, 0}, {0, 0.5f, 0.5f}},
                                   {1, {0, 0, 0}, {0, 0, 1}}})
        path.append(point);
    picture = feedbackOf([&] { drawBeamPath(path, laserTunnelBeam, demo->texture("spot")); });
    ASSERT_EQ(picture.lines.size(), 3u * 6);
    for (int i = 0; i < 18; i++)
        EXPECT_NEAR(picture.lines[i][1].a, laserTunnelBeam.strokes[i / 6].alpha * float(5 - i % 6) / 6,
                    1e-5f);

    ASSERT_EQ(picture.polygons.size(), 2u * 6) << "two triangles a spot, none at the last point";
    const struct {
        float corners[4][2];
        float alpha;
    } spots[] = {
        {{{0, 0}, {0, 0}, {0, 0}, {0, 0}}, 1},
        // Along (0, 0, 1), U is -x and V is -y, ten units each.
        {{{60, 10}, {40, 10}, {40, -10}, {60, -10}}, 1},
        // Seen edge on: along (0, -1, 0), U is +z and V is -x.
        {{{110, 50}, {110, 50}, {90, 50}, {90, 50}}, 1},
        // Tilted about y: U is (-0.8, 0, -0.6) and V is -y.
        {{{8, 110}, {-8, 110}, {-8, 90}, {8, 90}}, 1},
        // Steep, but not so steep that x is taken for the reference: U is -x and V tilted away.
        {{{8, 156.4f}, {-8, 156.4f}, {-8, 143.6f}, {8, 143.6f}}, 2.f / 3},
        // As steep as that takes: U is tilted away and V is -x.
        {{{55, 145}, {55, 155}, {45, 155}, {45, 145}}, 1.f / 3},
    };
    for (size_t i = 0; i < picture.polygons.size(); i++) {
        SCOPED_TRACE(i / 2);
        for (const FeedbackVertex& vertex : picture.polygons[i]) {
            const int corner = vertex.t == 0 ? vertex.s == 1 : vertex.s == 1 ? 2 : 3;
            EXPECT_NEAR(vertex.x - 400, spots[i / 2].corners[corner][0], 1e-3f) << "corner " << corner;
            EXPECT_NEAR(vertex.y - 300, spots[i / 2].corners[corner][1], 1e-3f) << "corner " << corner;
            EXPECT_NEAR(vertex.a, spots[i / 2].alpha, 1e-5f);
        }
    }
}

TEST_F(Beams, OfTheShipSeeTheSegmentAroundItWhereItIsDrawn) {
    addBox("tunnel", 200, 200, 150, true);
    addBox("ship", 20, 20, 60);
    LaserTunnel effect(demo, "spot");
    const struct {
        float beats;
        size_t segments;  // of the twelve beams' paths
    } cases[] = {
        {0, 6 * 5 + 6},   // the segment ends at the origin: the front beams escape
        {20.5f, 12 * 5},  // its middle is at the origin
        {33.1f, 6 * 5 + 6},
    };
    for (const auto& [beats, segments] : cases) {
        SCOPED_TRACE(beats);
        goTo(beats / 2.1f);
        const Matrix4 segment = matrixOf(effect, 1 + 4);  // after the ship and the four segments behind it
        expectMatrixNear(effect.caster.scene.instances[0].objectToWorld, segment, 1e-3f);
        EXPECT_EQ(picture.lines.size(), 3 * segments);
    }
    effect.beamsOn = false;
    EXPECT_EQ(feedbackOf([&] { effect.draw(); }).lines.size(), 0u);
}

TEST_F(Beams, OfTheRoomSeeTheBallWhereItIsDrawn) {
    addBox("huone", 380, 280, 380, true);
    addBox("huone2", 380, 280, 380, true);
    addBox("pallero", 30, 30, 30);
    addBox("pallero2", 30, 30, 30);
    addBox("tykki", 30, 10, 30);
    Huone effect(demo, "spot");
    for (float seconds : {0.f, 140.f, 163.2f}) {
        SCOPED_TRACE(seconds);
        goTo(seconds);
        const Matrix4 ball = matrixOf(effect, 1);
        expectMatrixNear(effect.caster.scene.instances[1].objectToWorld, ball, 1e-3f);
        EXPECT_EQ(picture.lines.size(), 15u * 3 * 5) << "nothing leaves a closed room";
        const BeamPath& last = effect.caster.path;
        EXPECT_LT(last[1].distance, (Vec3{0, 70, 0} - last[0].point).length()) << "off the ball first";
    }
    effect.beamsOn = false;
    EXPECT_EQ(feedbackOf([&] { effect.draw(); }).lines.size(), 0u);
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
}

TEST_F(Beams, OfTheLaserStandStillAndBounceOffWhatIsAdded) {
    Laser laser(demo, "spot");
    laser.draw();
    ASSERT_EQ(laser.caster.path.count, 2) << "nothing to bounce off";
    EXPECT_NEAR(laser.caster.path[1].distance, 1000, 0.1f);

    addBox("wall", 100, 100, 100);
    laser.addMesh("wall", nullptr);
    laser.setMeshMatrix(0, translation({20, 0, 0}).m);
    goTo(60);
    EXPECT_EQ(feedbackOf([&] { laser.draw(); }).lines.size(), 12u * 2 * 5);
    // The last one: 300 degrees from y towards x, and mirrored at the wall x = -80.
    const BeamPath& last = laser.caster.path;
    EXPECT_EQ(last[0].point.z, -52);
    EXPECT_NEAR(last[1].point.x, -80, 1e-3f);
    EXPECT_NEAR(last[1].point.y, 80 / std::sqrt(3.f), 1e-3f);
    EXPECT_NEAR(heading(last, 1).x, -heading(last, 0).x, 1e-4f);
    EXPECT_NEAR(heading(last, 1).y, heading(last, 0).y, 1e-4f);
}

TEST_F(Beams, OfTheTestBenchAreTextureStripsWithoutTheirLastPoint) {
    addBox("wall", 100, 100, 100, true);
    SampleLaser bench(demo, "wall", 0);
    demo->controls[0] = 0.1f;
    demo->controls[1] = 0.37f;
    bench.draw();
    picture = feedbackOf([&] { bench.draw(); });
    EXPECT_EQ(bench.scene.instances.count, 1) << "once, however often it is drawn";
    ASSERT_EQ(bench.path.count, 6);
    const Vec3 towards = heading(bench.path, 0);
    EXPECT_NEAR(towards.x / towards.y, std::tan(0.2 * 3.14159265), 1e-4f);
    EXPECT_NEAR(towards.z / towards.x, 0.91775463 / 0.58778525, 1e-4f);
    ASSERT_EQ(picture.lines.size(), 4u);
    EXPECT_FLOAT_EQ(picture.lines[3][0].s, 3.f / 6);
    EXPECT_FLOAT_EQ(picture.lines[3][1].t, 5.f / 6);
}

}  // namespace
