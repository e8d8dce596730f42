// The figure that is cut to stripes: an eclipse, a dark core in a dark shell on one axle. The glow that the
// scene makes of it lies behind it and shines past its rim and through the cuts.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

// The tumble that the scene gives the figure keeps this axis within 60 degrees of the picture's upright.
constexpr Vec upInTumble = {0.117, 0.746, 0.656};

// The near view's eye circles within the shell, 40 units from the middle.
constexpr double coreRadius = 19, shellRadius = 58;
const double opening = degrees(34);  // from the axis: at both ends the core is seen whole

// Round, so that the cuts stay clean however it tumbles.
Shape shell() {
    constexpr int rows = 16, sides = 56;
    Outline profile;
    for (int row = 0; row <= rows; row++) {
        const double away = mix(pi - opening, opening, double(row) / rows);
        profile.push_back({shellRadius * std::sin(away), shellRadius * std::cos(away)});
    }
    return smoothed(lathe(profile, sides), pi);
}

// Out of the core at either end. Its glow is a faint jet.
Shape axle() {
    constexpr double root = coreRadius - 2, tip = 100;
    return withMirror(lathe({{2.6, root}, {1.6, 70}, {0, tip}}, 8), Axis::y);
}

// The scene's light, left by the ship's last view, comes from far below: what is to catch it faces down by
// `share` more than it does.
Shape litFromBelow(const Shape& shape, double share) {
    return shaded(placed(shape, {}, upInTumble),
                  [&](Vec, Vec normal) { return normal - upInTumble * share; });
}

}  // namespace

void makeEclipse(const char* path) {
    writeAml(path, {painted(litFromBelow(shell(), 0.6), hull::ember),
                    painted(icosphere(coreRadius, 2), hull::flame),
                    painted(litFromBelow(axle(), 1.5), hull::flame)});
}
