#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Flags.h"
#include "services/postcore/sharpening/ImageOperators.h"

#include <vector>

namespace tavrin::postcore {

/// Replaces the colours of a bitmap by n + amount (n - w), n and w being two blurs of it.
struct BitmapFilter {
    /// The weights of the two blurs for pixels at distances 0, 1, 2, ..., along rows and columns
    /// alike. None in `narrow`: n is the colour itself; none in `wide`: the result is n.
    std::vector<float> narrow;
    std::vector<float> wide;
    float amount = 0.0f;
    /// The left and the right edge of the bitmap are neighbours.
    bool sidesMeet = false;

    /// How many pixels around a pixel the filter looks at; 0 when it does nothing.
    int getReach() const;

    /// Filters in place. Throws std::bad_alloc, with the bitmap filtered only in part.
    void apply(Flags<ImageOperatorsFlag> flags, BitmapImpl<Rgb>& bitmap) const;
};

}  // namespace tavrin::postcore
