#pragma once

#include "services/postcore/denoise/IDenoiser.h"

#include <memory>

namespace tavrin::postcore {

/// The denoiser of DenoisingMode::IntelAi: a trained network that runs in oneDNN. It uses the
/// features VisibleDiffuse and VisibleNormals where the data have them. Null when its weights or
/// its module are missing, which is reported as an error.
///
/// The sensitivity says how far the variance of a pixel is believed to speak against it; what the
/// network takes for a firefly it removes whatever the sensitivity for fireflies.
///
/// The processor is the only back end that is built in, and thereby the best one; the graphics card
/// that was asked for is replaced by it with a warning.
std::unique_ptr<IDenoiser> createNeuralDenoiser(Scheduler& scheduler, ILogger& logger,
                                                DenoisingData data, OidnBackend backend);

/// Whether the weights of its networks have been installed.
bool areNeuralWeightsInstalled();

}  // namespace tavrin::postcore
