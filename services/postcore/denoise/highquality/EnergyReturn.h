#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "services/postcore/denoise/DenoisingRun.h"
#include "services/postcore/denoise/PlaneImage.h"

namespace tavrin::postcore {

/// Denoising tends to darken: bright outliers stand alone, and what is taken from them is missing.
/// Gives each neighbourhood of `denoised` the light back that it has lost against
/// `noisy` (colours in planes 0 to 2, variances in 3 to 5): shared out by how uncertain the
/// filtered pixels still are, which is the least likely to be wrong (weighed least squares with a
/// given sum). What is still missing after that, or too much, is shared out over the whole image in
/// the same way, but for a part below one percent. Each time no pixel changes by more than half,
/// and certain ones do not change. Throws std::bad_alloc.
void returnEnergy(const PlaneImage& noisy, BitmapImpl<Rgb>& denoised, DenoisingRun& run);

}  // namespace tavrin::postcore
