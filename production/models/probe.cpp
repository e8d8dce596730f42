// The satellite of the smoke scene, drawn at 0.3 of its size.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeProbe(const char* path) {
    const Shape core = moved(lathe({{0, -14}, {10, -10}, {14, 0}, {10, 10}, {0, 14}}, 12), {});
    const Shape arm = moved(box({20, 12, 2}, 0.8), {24, 0, 0});
    writeAml(path, {mappedBox(joined({core, withMirror(arm, Axis::x)}), 32)});
}
