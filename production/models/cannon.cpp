// The cannon below the ball.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeCannon(const char* path) {
    const Outline profile = {{64, 0},  {66, 4},  {58, 8}, {30, 10}, {20, 16},
                             {14, 26}, {10, 28}, {8, 26}, {8, 14},  {0, 14}};
    writeAml(path, {mappedBox(lathe(profile, 40), 64)});
}
