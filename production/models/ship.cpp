// The ship of the laser corridor: nose towards -z, as the tunnel streams to +z, six-fold emitters at z = +-52.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeShip(const char* path) {
    const Outline hull = {{0, -88},  {16, -84}, {22, -70}, {17, -58}, {26, -54},
                          {26, -50}, {18, -46}, {24, -10}, {22, 30},  {15, 46},
                          {24, 50},  {24, 54},  {13, 58},  {6, 80},   {0, 90}};
    const Shape fin = moved(turned(box({60, 3, 46}, 1.2), Axis::x, 0), {30, 0, 40});
    const Shape body = turned(lathe(hull, 24), Axis::x, -pi / 2);
    writeAml(path, {mappedBox(joined({body, around(fin, 3, Axis::z)}), 64)});
}
