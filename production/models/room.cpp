// The hall round the ball: the copy that beams are traced against, and what is drawn over it.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

Shape hall() {
    const Outline profile = {{0, 300},   {200, 280}, {318, 244}, {330, 200},
                             {322, 120}, {330, 40},  {312, 0},   {0, -2}};
    return smoothed(mappedCylinder(lathe(profile, 20), Axis::y, 20, 100), 0.3);
}

}  // namespace

void makeRoomCollision(const char* path) {
    writeAml(path, {hall()});
}

void makeRoom(const char* path) {
    writeAml(path, {hall()});
}
