#pragma once

#include "services/postcore/denoise/DenoisingRun.h"
#include "services/postcore/denoise/PlaneImage.h"

namespace tavrin::postcore {

struct FireflyLimits {
    float level;        ///< the radiance below which differences hardly matter
    float sensitivity;  ///< 1 is the usual, 0 removes nothing
    float largestLoss;  ///< the part of the image's light that may be taken away
};

/// Removes fireflies from an image of six planes, colours and their variances, which are finite:
/// pixels much brighter than all that touch them, although they are uncertain enough for that to be
/// chance. How uncertain a pixel is says its own variance or, because the samples of a firefly
/// may not know that they are one, the relative variance of the pixels around it. A firefly gets
/// the colour and the variance of the brightest pixel that touches it.
///
/// Where all fireflies together hold more light than may be lost, those go that disturb most for
/// their light: the logarithm of their contrast divided by the light they have too much. So the
/// dark parts of an image are cleaned first. The last one is removed in part. Throws
/// std::bad_alloc.
void removeFireflies(PlaneImage& image, const FireflyLimits& limits, DenoisingRun& run);

/// A radiance that belongs to the dark parts of the image, from the geometric mean of its colours
/// (the first three planes); positive.
float measureLevel(const PlaneImage& image);

}  // namespace tavrin::postcore
