#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Scheduler.h"

namespace tavrin::postcore {

/// What to multiply a picture by so that the logarithmic mean of the luminances of its parts, of
/// some 16 × 16 pixels each, becomes middle grey, 0.18 (after Reinhard et al. 2002, eq. 1 and 2).
/// Black parts do not count; a black picture gets 1. What is not finite or negative counts as 0.
/// Always a normal float above 0.
float computeAutoExposure(Scheduler& scheduler, const BitmapImpl<Rgb>& color);

}  // namespace tavrin::postcore
