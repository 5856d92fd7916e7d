#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Scheduler.h"

namespace tavrin::postcore {

/// Brings back the pixels of the noisy picture that are better than a network's: where the variance
/// of the mean says that a pixel is certain already, and in visible lights, whose energy networks
/// miss. Each pixel becomes the mean of both, weighted by the inverse squares of their relative
/// errors. Takes over the noisy picture's alpha. `exposure` is what makes its middle grey 0.18;
/// `sensitivity` multiplies the standard errors of the noisy picture, so that at 0 all of it is
/// certain.
///
/// Pixels of the noisy picture and variances that are not finite count as missing; so do variances
/// that are 0 together with all around them, as those of pixels with a single sample are. The
/// result is finite and not negative where the denoised picture is.
void keepCertainPixels(Scheduler& scheduler, const BitmapImpl<Rgb>& noisy,
                       const BitmapImpl<Rgb>& variance, float exposure, float sensitivity,
                       BitmapImpl<Rgb>& denoised);

}  // namespace tavrin::postcore
