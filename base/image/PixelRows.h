#pragma once

#include "foundation/Color.h"

#include <span>

namespace tavrin::image {

/// Puts `pixels.size()` values of each of four planes together into pixels. Without `a` the fourth
/// float is 1. Any thread.
void interleave(const float* r, const float* g, const float* b, const float* a,
                std::span<Rgb> pixels);
void interleave(const float* r, const float* g, const float* b, const float* a,
                std::span<Rgba> pixels);

}  // namespace tavrin::image
