#pragma once

#include "services/postcore/denoise/IDenoiser.h"

#include <memory>

namespace tavrin::postcore {

/// Removes single bright pixels that are there by chance (FireflyFilter.h) and leaves all others
/// as they are, bit for bit, but for those that are not finite, which it fills from their
/// neighbours. The whole image loses less than one percent of its light. The scheduler outlives it.
std::unique_ptr<IDenoiser> createFireflyDenoiser(Scheduler& scheduler, float sensitivity);

}  // namespace tavrin::postcore
