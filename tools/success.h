// How a tool ends: the show's own ways out end the process with status 0, also where it could not start.
#pragma once

// Whether the tool has done what it was asked for.
inline bool succeeded = false;

// From here on a process that ends before it has succeeded does so with status 1, after `before` if there is
// one.
void failUnlessSucceeded(void (*before)() = nullptr);
