#pragma once

#include "foundation/Bitmap.h"

#include <vector>

namespace tavrin::postcore {

/// Resamples a square with odd sides to `size` × `size` pixels, `size` being odd too, whose middles
/// coincide. A pixel is the mean of the square, linearly interpolated between its values, over the
/// pixel's area: nothing is lost or doubled when the square shrinks, and nothing is jagged when it
/// grows. What is beyond the square counts as 0. The outermost values lie in the outermost pixels'
/// middles. Answers the pixels
/// row by row. Uses the default scheduler. Throws std::bad_alloc.
std::vector<float> resampleAreas(const BitmapImpl<float>& square, int size);

}  // namespace tavrin::postcore
