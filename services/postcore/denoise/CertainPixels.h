#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Scheduler.h"

namespace tavrin::postcore {

// Where a noisy picture is better than what a filter has made of it: where the variance of the mean
// says that a pixel is certain already, and in visible lights, whose energy filters miss.

/// How much of each pixel to take from the noisy picture, 0 to 1, by the inverse squares of the
/// relative errors of both. `exposure` is what makes its middle grey 0.18; `sensitivity` multiplies
/// the standard errors of the noisy picture, so that at 0 all of it is certain.
///
/// Pixels of the noisy picture and variances that are not finite count as missing; so do variances
/// that are 0 together with all around them, as those of pixels with a single sample are.
BitmapImpl<float> findCertainPixels(Scheduler& scheduler, const BitmapImpl<Rgb>& noisy,
                                    const BitmapImpl<Rgb>& variance, float exposure,
                                    float sensitivity, const BitmapImpl<Rgb>& denoised);

/// Takes so much of each noisy pixel, which counts as 0 where it is negative, and its alpha.
void keepCertainPixels(Scheduler& scheduler, const BitmapImpl<Rgb>& noisy,
                       const BitmapImpl<float>& shares, BitmapImpl<Rgb>& denoised);

}  // namespace tavrin::postcore
