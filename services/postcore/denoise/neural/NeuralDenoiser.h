#pragma once

#include "services/postcore/denoise/IDenoiser.h"

#include <memory>

namespace tavrin::postcore {

/// The denoiser of DenoisingMode::IntelAi: a trained network that runs in oneDNN. It uses the
/// features VisibleDiffuse and VisibleNormals where the data have them. Null when its weights or
/// its module are missing, which is reported as an error.
///
/// The network runs on the processor whatever the back end: nothing else is built in. What is best
/// then is the processor, which needs no warning.
std::unique_ptr<IDenoiser> createNeuralDenoiser(Scheduler& scheduler, ILogger& logger,
                                                DenoisingData data, OidnBackend backend);

}  // namespace tavrin::postcore
