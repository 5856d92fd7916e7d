#pragma once

#include "samples/Vector.h"

namespace tavrin::samples {

/// A repeatable random number in [0, 1) for a cell of a grid.
double cellNoise(int x, int y, int z);
/// Smooth noise in [0, 1] with features of size 1.
double valueNoise(const Vector& position);
/// The sum of `octaves` of smooth noise, each of half the size and half the weight; in [0, 1].
double fractalNoise(const Vector& position, int octaves);
/// 0 below `from`, 1 above `to`, smooth between.
double smoothStep(double from, double to, double value);

}  // namespace tavrin::samples
