#pragma once

#include "services/postcore/denoise/DenoisingRun.h"
#include "services/postcore/denoise/PlaneImage.h"

namespace tavrin::postcore {

/// Takes the noise out of a feature (a guide of six planes), so that it does not come back through
/// the colours that it guides; its variances become those of the result. Left unfinished when the
/// run is aborted. Throws std::bad_alloc.
void filterFeature(PlaneImage& feature, const PlaneImage& valid, DenoisingRun& run);

/// Replaces the plane by its means over squares of (2 radius + 1)² pixels; radius is at most
/// PlaneImage::kMargin. Its borders are extended before and after.
void blurPlane(PlaneImage& image, int plane, int radius, DenoisingRun& run);

}  // namespace tavrin::postcore
