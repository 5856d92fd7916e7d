#pragma once

#include "services/postcore/denoise/DenoisingRun.h"
#include "services/postcore/denoise/PlaneImage.h"
#include "services/postcore/denoise/highquality/WindowWeights.h"

#include <array>
#include <cstdint>

namespace tavrin::postcore {

/// So that bands of tiles do not touch the pixels of the next but one.
inline constexpr int kLargestWindowRadius = DenoisingTile::kHeight / 2;

/// What the regression works on; all images have one size, their borders are extended.
struct RegressionInput {
    const PlaneImage& color;  ///< its first three planes
    WindowGuides guides;
    std::array<const PlaneImage*, 2> regressors;  ///< guides of six planes; may be null
    int radius;                                   ///< of the windows, at most kLargestWindowRadius
};

/// Estimates the colours without noise in four ways, whose errors differ, and writes their
/// geometric mean into the three planes of `result`: the mean of the pixels that are alike, and
/// first-order regression on the regressors over them (after Bitterli et al. 2016, "Nonlinearly
/// weighted first-order regression"), each for pixels that are alike by all guides and for those
/// that are alike by colour alone.
/// Left unfinished when the run is aborted. Throws std::bad_alloc.
void regressColors(const RegressionInput& input, PlaneImage& result, DenoisingRun& run);

/// The steps that regressColors() takes of the run.
std::int64_t countRegressionSteps(int width, int height, int radius);

}  // namespace tavrin::postcore
