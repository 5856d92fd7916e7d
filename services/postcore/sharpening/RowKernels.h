#pragma once

#include "foundation/Color.h"

#include <cstddef>
#include <span>

namespace tavrin::postcore {

// The loops over pixels of the sharpening filter, for the processor's own instruction set. What
// becomes of a pixel does not depend on its place in the row.

/// Rows of prepared pixels are a whole number of these pixels long: the most that one step of
/// sumRows takes.
inline constexpr std::size_t kRowGranule = 16;
inline constexpr std::size_t kPixelFloats = 4;

/// Makes pixels ready to be summed up: colours and, in place of alpha, a weight, both scaled down
/// so far that sums of the largest floats stay finite. A pixel with a component that is not finite
/// becomes 0 with weight 0.
void prepareRow(std::span<const Rgb> pixels, float* prepared);

/// sum = weights[0] middle[0] + Σ weights[k] (middle[-k] + middle[k]) over rows of `pixelCount`
/// prepared pixels, a multiple of kRowGranule.
void sumRows(const float* const* middle, std::span<const float> weights, std::size_t pixelCount,
             float* sum);

/// Replaces colours by n + amount (n - w), where n and w are the sums in `narrow` and `wide`
/// divided by their weights. Without `narrow` (null) n is the colour itself, without `wide` the
/// result is n. Sharpening takes no component below 0, nor a negative one further down. Alpha
/// stays, and so do pixels with a component that is not finite.
void combineRow(const float* narrow, const float* wide, float amount, std::span<Rgb> pixels);

}  // namespace tavrin::postcore
