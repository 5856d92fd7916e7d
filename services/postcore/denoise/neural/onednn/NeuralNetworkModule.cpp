// The module's one exported function.

#include "services/postcore/denoise/neural/onednn/OneDnnNetwork.h"

#include <exception>

namespace tavrin::postcore {

extern "C" __attribute__((visibility("default"))) INeuralNetwork* tavrinCreateNeuralNetwork1(
    std::span<const NetworkLayer> layers, int width, int height, int threads,
    std::string& reason) noexcept {
    try {
        return new OneDnnNetwork(layers, width, height, threads);
    } catch (const std::exception& exception) {
        reason = exception.what();
        return nullptr;
    }
}

}  // namespace tavrin::postcore
