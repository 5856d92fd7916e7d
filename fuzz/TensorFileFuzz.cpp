// Archives of weights: any bytes are read or refused, and what was read makes a network that fits
// together or none.

#include "foundation/FatalError.h"
#include "services/postcore/denoise/neural/NeuralModel.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    using namespace tavrin::postcore;
    Result<TensorFile> file = TensorFile::parse(std::as_bytes(std::span(data, size)));
    if (!file) {
        return 0;
    }
    const Result<NeuralModel> model = NeuralModel::create(std::move(*file), 3);
    if (!model) {
        return 0;
    }
    for (const NetworkLayer& layer : model->getLayers()) {
        const auto outputs = static_cast<std::size_t>(layer.outputs);
        const auto inputs = static_cast<std::size_t>(layer.inputs);
        if (layer.bias.size() != outputs || layer.weights.size() != 9 * outputs * inputs) {
            fatalError("A layer has another number of weights than its shape says.");
        }
    }
    return 0;
}
