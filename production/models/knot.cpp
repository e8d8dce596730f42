// The hollow knot that is cut to stripes.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeKnot(const char* path) {
    Sweep how;
    how.closedPath = true;
    for (int i = 0; i < 160; i++) {
        const double a = 2 * pi * i / 160, r = 24 + 10 * std::cos(3 * a);
        how.path.push_back({r * std::cos(2 * a), r * std::sin(2 * a), 14 * std::sin(3 * a)});
    }
    writeAml(path, {mappedBox(sweep(polygon(20, 8), how), 48)});
}
