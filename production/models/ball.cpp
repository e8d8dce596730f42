// The mirror ball and the copy that beams are traced against.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr double radius = 34;

}  // namespace

void makeBallCollision(const char* path) {
    writeAml(path, {smoothed(icosphere(radius, 2), hard)});
}

void makeBall(const char* path) {
    writeAml(path, {mappedBox(panelled(smoothed(icosphere(radius, 2), hard), {0.4, 0.4, 0, soft}), 24)});
}
