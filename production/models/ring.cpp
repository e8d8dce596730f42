// The ring that rides at the height of the light disc.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeRing(const char* path) {
    writeAml(path, {mappedCylinder(lathe({{100, -3}, {110, -3}, {112, 0}, {110, 3}, {100, 3}, {100, -3}}, 96),
                                   Axis::y, 24, 32)});
}
