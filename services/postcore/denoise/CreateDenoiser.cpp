#include "services/postcore/denoise/IDenoiser.h"
#include "services/postcore/denoise/fireflies/FireflyDenoiser.h"
#include "services/postcore/denoise/highquality/HighQualityDenoiser.h"
#include "services/postcore/denoise/neural/NeuralDenoiser.h"

#include <utility>

namespace tavrin::postcore {

bool isDenoiserInstalled(DenoisingMode mode) {
    switch (mode) {
        case DenoisingMode::FirefliesOnly:
        case DenoisingMode::HighQuality:
            return true;
        case DenoisingMode::IntelAi:
            return areNeuralWeightsInstalled();
        case DenoisingMode::NvidiaGpuAi:
        case DenoisingMode::None:
            break;
    }
    return false;
}

std::unique_ptr<IDenoiser> createDenoiser(DenoisingMode mode, Scheduler& scheduler, ILogger& logger,
                                          DenoisingData data, OidnBackend backend) {
    switch (mode) {
        case DenoisingMode::FirefliesOnly:
            return createFireflyDenoiser(scheduler, data.fireflySensitivity);
        case DenoisingMode::HighQuality:
            return createHighQualityDenoiser(scheduler, std::move(data));
        case DenoisingMode::NvidiaGpuAi:
            logger.error("The NVIDIA denoiser is not installed on this system.");
            return nullptr;
        case DenoisingMode::IntelAi:
            return createNeuralDenoiser(scheduler, logger, std::move(data), backend);
        case DenoisingMode::None:
            break;
    }
    logger.error("No denoising mode is selected.");
    return nullptr;
}

}  // namespace tavrin::postcore
