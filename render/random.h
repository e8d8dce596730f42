// The show's random numbers: those of a rand() that was never seeded, and that nobody else draws from.
// Drivers draw from the process's own while they fill their shader cache, and the heap would turn other boxes
// then.
#pragma once

// 0 to RAND_MAX, the next of the one sequence.
int randomNumber();

// From its beginning again; with a seed, as srand() would.
void restartRandomNumbers(unsigned seed = 1);
