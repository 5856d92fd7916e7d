#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "services/postcore/denoise/DenoisingRun.h"
#include "services/postcore/denoise/PlaneImage.h"

namespace tavrin::postcore {

/// What values are brought to.
struct GuideLimits {
    float smallest;
    float largest;
    float largestVariance;
};

/// Colours that may be squared twice.
inline constexpr GuideLimits kColorLimits{-1e9f, 1e9f, 1e18f};

/// The six planes of an element and of its variances, within the limits, with the borders
/// extended. Pixels that are not finite are filled with the mean of the nearest finite ones, or
/// with 0 when those are far away, and are as uncertain as a value can be; a variance that is not
/// finite counts as missing in the same way. Without variances (null) nothing is uncertain. Throws
/// std::bad_alloc.
PlaneImage makeGuide(const BitmapImpl<Rgb>& element, const BitmapImpl<Rgb>* variance,
                     const GuideLimits& limits, DenoisingRun& run);

}  // namespace tavrin::postcore
