#include "effects/beams.h"

#include <cmath>

namespace {

// 1 at the beam's source, 0 at its end.
float fade(int point, int pointCount) {
    return 1 - point / (pointCount - 1.0f);
}

void drawLine(const BeamPath& path, const GlowStroke& stroke) {
    glLineWidth(stroke.width);
    glBegin(GL_LINE_STRIP);
    for (int i = 0; i < path.count; i++) {
        glColor4f(stroke.red, stroke.green, stroke.blue, stroke.alpha * fade(i, path.count));
        glVertex3fv(&path[i].point.x);
    }
    glEnd();
}

// A square flat on the surface. Where the normal is zero, at the beam's source, it is nothing but its middle.
void emitSpot(const Vec3& middle, const Vec3& normal, float size) {
    static const Vec3 xAxis = {1, 0, 0};
    static const Vec3 yAxis = {0, 1, 0};
    const Vec3 n = {std::fabs(normal.x), std::fabs(normal.y), std::fabs(normal.z)};
    Vec3 u = cross(normal, n.y >= n.x && n.y >= n.z ? xAxis : yAxis);
    Vec3 v = cross(normal, u);
    u = size * u;
    v = size * v;
    const Vec3 corners[] = {middle - u - v, middle + u - v, middle + u + v, middle - u + v};
    const float texCoords[][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (int i = 0; i < 4; i++) {
        glTexCoord2fv(texCoords[i]);
        glVertex3fv(&corners[i].x);
    }
}

}  // namespace

void drawBeamPath(const BeamPath& path, const BeamStyle& style, GLuint spotTexture) {
    glDisable(GL_LIGHTING);
    beginGlowingLines();
    for (const GlowStroke& stroke : style.strokes) drawLine(path, stroke);

    glColor3f(1, 1, 1);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, spotTexture);
    glPolygonOffset(-1, 1);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glBegin(GL_QUADS);
    for (int i = 0; i < path.count - 1; i++) {
        glColor4f(1, 1, 1, 2 * fade(i, path.count));
        emitSpot(path[i].point, path[i].normal, style.spotSize);
    }
    glEnd();
    glDisable(GL_POLYGON_OFFSET_FILL);
    endGlowingLines();
}

void BeamCaster::draw(Demo& demo, const Vec3& origin, const Vec3& direction) {
    traceBeam(scene, origin, direction, beamBounces, path);
    drawBeamPath(path, style, demo.texture(spotTexture));
}
