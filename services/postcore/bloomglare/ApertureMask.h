#pragma once

#include "foundation/Bitmap.h"
#include "services/postcore/bloomglare/ApertureParams.h"

namespace tavrin::postcore {

/// The largest side of a mask.
inline constexpr int kLargestMaskSize = 8192;

/// Draws the part of the light's amplitude that each point of an aperture lets through, 0 to 1, as
/// a square of `size` × `size` pixels (1 to kLargestMaskSize), anti-aliased. The circle around the
/// aperture touches the sides of the square. The same for the same parameters on any number of
/// threads; numbers out of range count as the nearest that is in it, those that are not numbers as
/// the default. What isCustom says makes no difference here. Uses the default scheduler. Throws
/// std::bad_alloc. Any thread.
BitmapImpl<float> drawApertureMask(const ApertureParams& params, int size);

/// The same for a clean aperture that throws at least `count` streaks (1 to 16): a regular polygon
/// with an edge to the right, of as many edges, but not fewer than four for one or two streaks.
BitmapImpl<float> drawStreakMask(int count, int size);

}  // namespace tavrin::postcore
