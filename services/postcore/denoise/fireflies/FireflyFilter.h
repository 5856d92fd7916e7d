#pragma once

#include "services/postcore/denoise/DenoisingRun.h"
#include "services/postcore/denoise/PlaneImage.h"

namespace tavrin::postcore {

/// Removes fireflies from an image of six planes, colours and their variances, which are finite:
/// pixels much brighter than all that touch them, although they are uncertain enough for that to be
/// chance. How uncertain a pixel is says its own variance or, because the samples of a firefly
/// may not know that they are one, the relative variance of the pixels around it. A firefly gets
/// the mean of those pixels. `level` is the radiance below which differences hardly matter.
/// Sensitivity 1 is the usual, 0 removes nothing. Throws std::bad_alloc.
void removeFireflies(PlaneImage& image, float level, float sensitivity, DenoisingRun& run);

/// A radiance that belongs to the dark parts of the image, from the geometric mean of its colours
/// (the first three planes); positive.
float measureLevel(const PlaneImage& image);

}  // namespace tavrin::postcore
