// Every file of this kind, with the function that makes it.
#include "production/forge.h"

const std::vector<Product> shaderProducts = {};
