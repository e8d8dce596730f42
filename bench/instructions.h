// What is counted, as the process that runs under callgrind draws it.
#pragma once

#include <string>

// The segments that `part` chooses, one after the other, a dump of callgrind's for each.
void drawCounted(const std::string& part);
