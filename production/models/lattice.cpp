// The figure that is cut to stripes: a dodecahedron of thick tubes whose twelve windows open on its hollow
// heart. The skin is one closed surface, so that each gap between stripes shows the coloured inside of the
// tubes.
#include <algorithm>

#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/kit/model_paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

// Of the corners that the skin is drawn from; subdivision rounds them down to about nine tenths.
constexpr double outerRadius = 48, innerRadius = 36;
constexpr double window = 0.82;  // of a pentagon's size
constexpr double swell = 1.03;   // of a window's rim over the pentagon it lies in

// The dodecahedron's pentagon about a corner of the icosahedron, counter-clockwise seen from outside.
std::vector<Vec> pentagonAbout(const Shape& icosahedron, int corner) {
    std::vector<Vec> ring;
    for (const Face& face : icosahedron.faces) {
        if (std::find(face.points.begin(), face.points.end(), corner) != face.points.end())
            ring.push_back(normalized(faceCentre(icosahedron, face)));
    }
    const Vec axis = icosahedron.points[corner];
    const Vec right = normalized(ring[0] - axis * dot(ring[0], axis)), up = cross(axis, right);
    std::sort(ring.begin(), ring.end(), [&](Vec a, Vec b) {
        return std::atan2(dot(a, up), dot(a, right)) < std::atan2(dot(b, up), dot(b, right));
    });
    return ring;
}

// One window: from the pentagon's border in to the window's rim, through the skin, and out to the border
// again on the inner side.
Shape windowedSide(const std::vector<Vec>& pentagon) {
    Vec centre;
    for (Vec corner : pentagon) centre += corner * (1.0 / pentagon.size());
    return grid(static_cast<int>(pentagon.size()), 4, true, false, [&](int c, int r) {
        const Vec rim = mix(centre, pentagon[c], window);
        const Vec places[] = {pentagon[c] * outerRadius, rim * (outerRadius * swell), rim * innerRadius,
                              pentagon[c] * innerRadius};
        return places[r];
    });
}

}  // namespace

void makeLattice(const char* path) {
    const Shape icosahedron = icosphere(1, 0);
    std::vector<Shape> sides;
    for (size_t corner = 0; corner < icosahedron.points.size(); corner++)
        sides.push_back(windowedSide(pentagonAbout(icosahedron, static_cast<int>(corner))));
    const Shape skin = subdivided(subdivided(subdivided(welded(joined(sides), 1e-4))));
    // Out of line with the axes, so that no two turns of its tumble look the same.
    writeAml(path, {painted(turned(turned(skin, Axis::x, 0.3), Axis::z, 0.5), hull::coolLamp)});
}
