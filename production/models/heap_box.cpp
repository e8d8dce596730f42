// The box of the heap: a long module, one storey high.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeHeapBox(const char* path) {
    writeAml(path, {mappedBox(panelled(box({108, 17, 43}, 2.5), {2, 1, 0.8, soft}), 64)});
}
