// Beams: how a path is drawn, and the paths that the laser effects send out.
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
        addSolidTexture("spot", {255, 255, 255, 255});
        addTextures({"shiptex", "cubetex", "envmap", "envmap4", "pinkLaser"});
    }

    static BeamPath pathOf(std::initializer_list<BeamPoint> points) {
        BeamPath path(4);
        for (const BeamPoint& point : points) path.append(point);
        return path;
    }

    static Feedback drawPath(const BeamPath& path, const BeamStyle& style) {
        return feedbackOf([&] { drawBeamPath(path, style, demo->texture("spot")); });
    }
};

// A unit vector from one point of a path to the next.
Vec3 heading(const BeamPath& path, int from) {
    Vec3 direction = path[from + 1].point - path[from].point;
    direction.normalize();
    return direction;
}

TEST_F(Beams, GlowFromTheirMiddleAndFadeToTheirEnd) {
    struct {
        const char* name;
        BeamStyle style;
        float middle[3], edge[3];  // the light 0 and 3 pixels off the line, at its source
    } const cases[] = {
        {"room", huoneBeam, {1.8f, 0.72f, 1.44f}, {0.2f, 0.04f, 0.16f}},
        {"tunnel", laserTunnelBeam, {1.8f, 0.72f, 1.44f}, {0.2f, 0.04f, 0.16f}},
        {"laser", laserBeam, {1.4f, 0.4f, 1.12f}, {0, 0, 0}},
    };
    const BeamPath line = pathOf({{0, {-300, 0.5f, 0}, {0, 0, 0}}, {600, {300, 0.5f, 0}, {0, 0, 0}}});
    for (const auto& [name, style, middle, edge] : cases) {
        glClear(GL_COLOR_BUFFER_BIT);
        drawBeamPath(line, style, demo->texture("spot"));
        for (int x : {-290, -100, 0, 150, 290}) {
            SCOPED_TRACE(testing::Message() << name << " at " << x);
            const float left = (300 - float(x)) / 600;
            const auto expectLight = [&](const Pixel& pixel, const float* light) {
                EXPECT_NEAR(pixel.r, 255 * std::min(1.f, left * light[0]), 6);
                EXPECT_NEAR(pixel.g, 255 * std::min(1.f, left * light[1]), 6);
                EXPECT_NEAR(pixel.b, 255 * std::min(1.f, left * light[2]), 6);
            };
            expectLight(readPixel(400 + x, 300), middle);
            expectLight(readPixel(400 + x, 303), edge);
            expectLight(readPixel(400 + x, 297), edge);
        }
        EXPECT_EQ(readPixel(400, 306), (Pixel{0, 0, 0, 0})) << "nothing beyond the widest pass";
    }
}

TEST_F(Beams, TouchSurfacesWithSpots) {
    const BeamPath bounces = pathOf({{0, {0, 0, 0}, {0, 0, 0}},
                                     {1, {50, 0, 0}, {0, 0, 1}},
                                     {1, {100, 50, 0}, {0, -1, 0}},
                                     {1, {0, 100, 0}, {-0.6f, 0, 0.8f}},
                                     {1, {0, 150, 0}, {0, 0.6f, 0.8f}},
                                     {1, {50, 150, 0}, {0, 0.5f, 0.5f}},
                                     {1, {0, 0, 0}, {0, 0, 1}}});
    const Feedback picture = drawPath(bounces, laserTunnelBeam);
    EXPECT_EQ(picture.lines.size(), 3u * 6);
    ASSERT_EQ(picture.polygons.size(), 2u * 6) << "two triangles a spot, none at the last point";
    const auto expectQuad = [&](int spot, std::vector<std::array<float, 2>> corners, float alpha) {
        SCOPED_TRACE(spot);
        auto vertices = picture.polygons[2 * spot];
        const auto& other = picture.polygons[2 * spot + 1];
        vertices.insert(vertices.end(), other.begin(), other.end());
        const float s[] = {0, 1, 1, 0}, t[] = {0, 0, 1, 1};
        for (const auto& vertex : vertices) {
            const int corner = vertex.t == 0 ? vertex.s == 1 : vertex.s == 1 ? 2 : 3;
            EXPECT_EQ(vertex.s, s[corner]);
            EXPECT_EQ(vertex.t, t[corner]);
            EXPECT_NEAR(vertex.x - 400, corners[corner][0], 1e-3f) << "corner " << corner;
            EXPECT_NEAR(vertex.y - 300, corners[corner][1], 1e-3f) << "corner " << corner;
            EXPECT_NEAR(vertex.a, alpha, 1e-5f);
        }
    };
    // Along (0, 0, 1), U is -x and V is -y, ten units each.
    expectQuad(0, {{0, 0}, {0, 0}, {0, 0}, {0, 0}}, 1);
    expectQuad(1, {{60, 10}, {40, 10}, {40, -10}, {60, -10}}, 1);
    // Seen edge on: along (0, -1, 0), U is +z and V is -x.
    expectQuad(2, {{110, 50}, {110, 50}, {90, 50}, {90, 50}}, 1);
    // Tilted about y: U is (-0.8, 0, -0.6) and V is -y.
    expectQuad(3, {{8, 110}, {-8, 110}, {-8, 90}, {8, 90}}, 1);
    // Steep, but not so steep that x is taken for the reference: U is -x and V tilted away.
    expectQuad(4, {{8, 156.4f}, {-8, 156.4f}, {-8, 143.6f}, {8, 143.6f}}, 2.f / 3);
    // As steep as that takes: U is tilted away and V is -x.
    expectQuad(5, {{55, 145}, {55, 155}, {45, 155}, {45, 145}}, 1.f / 3);
}

TEST_F(Beams, OfTheLaserBounceOffWhatIsAdded) {
    Laser laser(demo, "spot");
    laser.draw();
    ASSERT_EQ(laser.caster.path.count, 2) << "nothing to bounce off";
    EXPECT_NEAR(laser.caster.path[1].distance, 1000, 0.1f);

    addBox("wall", 100, 100, 100);
    const Matrix4 aside = translation({20, 0, 0});
    laser.addMesh("wall", nullptr);
    laser.setMeshMatrix(0, aside.m);
    const Feedback picture = feedbackOf([&] { laser.draw(); });
    EXPECT_EQ(picture.lines.size(), 12u * 2 * 5);
    // The last one: 300 degrees from y towards x, and mirrored at the wall x = -80.
    ASSERT_EQ(laser.caster.path.count, 6);
    EXPECT_EQ(laser.caster.path[0].point.z, -52);
    EXPECT_NEAR(laser.caster.path[1].point.x, -80, 1e-3f);
    EXPECT_NEAR(laser.caster.path[1].point.y, 80 / std::sqrt(3.f), 1e-3f);
    EXPECT_NEAR(heading(laser.caster.path, 1).x, -heading(laser.caster.path, 0).x, 1e-4f);
    EXPECT_NEAR(heading(laser.caster.path, 1).y, heading(laser.caster.path, 0).y, 1e-4f);

    goTo(60);
    const Feedback later = feedbackOf([&] { laser.draw(); });
    for (size_t i = 0; i < picture.lines.size(); i++) EXPECT_EQ(later.lines[i][1].x, picture.lines[i][1].x);
}

TEST_F(Beams, OfTheShipSeeTheSegmentAroundItWhereItIsDrawn) {
    addBox("tunnel", 200, 200, 150, true);
    addBox("ship", 20, 20, 60);
    LaserTunnel effect(demo, "spot");
    struct {
        float beats;
        size_t segments;  // of the twelve beams' paths
    } const cases[] = {
        {0, 6 * 5 + 6},   // the segment ends at the origin: the front beams escape
        {20.5f, 12 * 5},  // its middle is at the origin
        {33.1f, 6 * 5 + 6},
    };
    for (const auto& [beats, segments] : cases) {
        SCOPED_TRACE(beats);
        goTo(beats / 2.1f);
        drawn.clear();
        const Feedback picture = feedbackOf([&] { effect.draw(); });
        ASSERT_EQ(drawn.size(), 11u);
        expectMatrixNear(effect.caster.scene.instances[0].objectToWorld, drawn[1 + 4].modelView, 1e-3f);
        // Filled faces of the meshes are polygons as well, so that only lines tell the beams.
        EXPECT_EQ(picture.lines.size(), 3 * segments);
        const double angle = 5 * 1.0471975511965976 + 1.5707963267948966 + demo->clock.time();
        EXPECT_NEAR(heading(effect.caster.path, 0).x, std::cos(angle), 1e-4f) << "turns with the ship";
        EXPECT_NEAR(drawn[0].modelView.m[0], std::cos(demo->clock.time()), 1e-4f);
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
        drawn.clear();
        const Feedback picture = feedbackOf([&] { effect.draw(); });
        ASSERT_EQ(drawn.size(), 3u);
        EXPECT_EQ(drawn[1].key, "pallero2");
        expectMatrixNear(effect.caster.scene.instances[1].objectToWorld, drawn[1].modelView, 1e-3f);
        EXPECT_EQ(picture.lines.size(), 15u * 3 * 5) << "nothing leaves a closed room";
        // The last beam: from the fifth source to a spread beside the ball's centre, off the ball first.
        EXPECT_NEAR(effect.caster.path[0].point.x, 120 * std::cos(8 * 3.14159265f / 5), 1e-3f);
        EXPECT_EQ(effect.caster.path[0].point.y, 140);
        Vec3 aim = Vec3{2.06059f, 70 + 4.34699f, 0} - effect.caster.path[0].point;
        EXPECT_LT(effect.caster.path[1].distance, aim.length());
        aim.normalize();
        const Vec3 direction = heading(effect.caster.path, 0);
        EXPECT_NEAR(direction.x, aim.x, 1e-4f);
        EXPECT_NEAR(direction.y, aim.y, 1e-4f);
        EXPECT_NEAR(direction.z, aim.z, 1e-4f);
    }
    EXPECT_TRUE(drawn[1].units[1].on);
    EXPECT_EQ(drawn[1].units[1].generated, 2);
    EXPECT_FALSE(drawn[2].units[1].on) << "no reflection in the room itself";
    EXPECT_EQ(drawn[2].units[1].texture, GLint(demo->texture("envmap4")));

    effect.beamsOn = false;
    EXPECT_EQ(feedbackOf([&] { effect.draw(); }).lines.size(), 0u);
    EXPECT_FALSE(glIsEnabled(GL_CULL_FACE));
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
}

TEST_F(Beams, OfTheTestBenchAreTextureStripsWithoutTheirLastPoint) {
    addBox("wall", 100, 100, 100, true);
    SampleLaser bench(demo, "wall", 0);
    demo->controls[0] = 0.1f;
    demo->controls[1] = 0.37f;
    EXPECT_EQ(bench.scene.instances.count, 0);
    feedbackOf([&] { bench.draw(); });
    const Feedback picture = feedbackOf([&] { bench.draw(); });
    EXPECT_EQ(bench.scene.instances.count, 1)
        << "the mesh stands in its scene once, however often it is drawn";
    ASSERT_EQ(bench.path.count, 6);
    const Vec3 towards = heading(bench.path, 0);
    EXPECT_NEAR(towards.x / towards.y, std::tan(0.2 * 3.14159265), 1e-4f);
    EXPECT_NEAR(towards.z / towards.x, 0.91775463 / 0.58778525, 1e-4f);
    ASSERT_EQ(picture.lines.size(), 4u);
    for (int i = 0; i < 4; i++) {
        EXPECT_NEAR(picture.lines[i][0].x, 400 + bench.path[i].point.x, 1e-2f);
        EXPECT_FLOAT_EQ(picture.lines[i][0].s, float(i) / 6);
        EXPECT_FLOAT_EQ(picture.lines[i][1].t, float(i + 2) / 6);
    }
}

}  // namespace
