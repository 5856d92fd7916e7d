#pragma once

#include "foundation/Color.h"

#include <span>

namespace tavrin::postcore {

// How linear colours become the numbers that the networks were trained on: the perceptually uniform
// curve of Aydın, Mantiuk and Seidel (2008), as a line, a power and a logarithm that meet, divided
// by its value for the largest light. Any thread; the fourth float of a pixel is not defined
// afterwards. Source and destination may be the same.

/// The largest light that the curve takes, that of a half-precision float.
inline constexpr float kLargestLight = 65504.0f;

/// From colours, multiplied by `exposure`, to 0 ... 1. What is not finite or negative counts as 0,
/// light beyond kLargestLight as that.
void encodeColors(std::span<const Rgb> colors, float exposure, std::span<Rgb> encoded);

/// The inverse; what is not finite counts as 0. The result is finite and not negative, whatever
/// comes in.
void decodeColors(std::span<const Rgb> encoded, float exposure, std::span<Rgb> colors);

}  // namespace tavrin::postcore
