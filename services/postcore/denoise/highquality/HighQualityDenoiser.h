#pragma once

#include "services/postcore/denoise/IDenoiser.h"

#include <memory>

namespace tavrin::postcore {

/// Removes noise with what the render itself knows: how uncertain its pixels are, and elements
/// without much noise that show the same edges. Fireflies go first; the feature elements are freed
/// of their own noise; then each pixel is estimated from the pixels of its window that are alike
/// (LocalRegression.h), and once more with the first estimate as the guide. The result does not
/// depend on the number of threads. The scheduler outlives it.
std::unique_ptr<IDenoiser> createHighQualityDenoiser(Scheduler& scheduler, DenoisingData data);

}  // namespace tavrin::postcore
