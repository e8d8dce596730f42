// Seeded noise for pictures. Every lattice repeats after a whole number of cells, so that what is made of it
// repeats without a seam; the same arguments give the same value on every run.
#pragma once

#include <cstdint>

namespace picture {

// Uniform in 0..1 for a whole place.
float randomAt(int x, int y, uint32_t seed);

// Gradient noise (Perlin, "Improving noise", 2002), about -1..1, of lattice spacing 1; repeats every `period`
// cells both ways.
float gradientNoise(float x, float y, int period, uint32_t seed);

// Octaves of gradient noise, each of twice the frequency and half the strength, about -1..1.
float fractalNoise(float x, float y, int period, int octaves, uint32_t seed);

// The same in space, which repeats nowhere: for what is wrapped round a ball.
float gradientNoise(float x, float y, float z, uint32_t seed);
float fractalNoise(float x, float y, float z, int octaves, uint32_t seed);

// Octaves of the noise's creases: thin bright veins on dark, 0..1.
float ridgedNoise(float x, float y, int period, int octaves, uint32_t seed);

}  // namespace picture
