#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Scheduler.h"

namespace tavrin::postcore {

/// Scales a network's picture, all channels alike, so that the noisy one keeps its light but for
/// less than a hundredth, when its pixels are taken by these shares. Changes nothing where that is
/// so, and never by more than a few hundredths: light that is missing beyond that was noise.
void keepLight(Scheduler& scheduler, const BitmapImpl<Rgb>& noisy, const BitmapImpl<float>& shares,
               BitmapImpl<Rgb>& denoised);

}  // namespace tavrin::postcore
