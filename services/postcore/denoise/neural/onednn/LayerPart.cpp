#include "services/postcore/denoise/neural/onednn/LayerPart.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace tavrin::postcore {
namespace {

/// Calls body(weights, position) for the 3 × 3 weights of each pair of channels and the number of
/// the pair among the padded ones.
template <class Body>
void forEachPair(const LayerPart& part, int paddedInputs, const Body& body) {
    for (int o = 0; o < part.layer.outputs; ++o) {
        for (int i = 0; i < part.inputs; ++i) {
            const int pair = o * part.layer.inputs + part.firstInput + i;
            body(part.layer.weights.subspan(static_cast<std::size_t>(pair) * 9, 9),
                 static_cast<std::size_t>(o) * static_cast<std::size_t>(paddedInputs) +
                     static_cast<std::size_t>(i));
        }
    }
}

std::vector<float> makeZeros(int inputs, int outputs, std::size_t window) {
    return std::vector<float>(static_cast<std::size_t>(inputs) * static_cast<std::size_t>(outputs) *
                              window);
}

}  // namespace

std::vector<float> padWeights(const LayerPart& part, int paddedInputs, int paddedOutputs) {
    std::vector<float> result = makeZeros(paddedInputs, paddedOutputs, 9);
    forEachPair(part, paddedInputs, [&](std::span<const float> weights, std::size_t position) {
        std::ranges::copy(weights, result.begin() + static_cast<std::ptrdiff_t>(position * 9));
    });
    return result;
}

std::vector<float> padUpsampledWeights(const LayerPart& part, int paddedInputs, int paddedOutputs) {
    // In one direction, a small value is seen by four large ones: through the layer's last weight
    // by the one before its two, through the last two by its first, through the first two by its
    // second, through the first by the one after them.
    static constexpr int kFirst[] = {2, 1, 0, 0};
    static constexpr int kLast[] = {2, 2, 1, 0};
    std::vector<float> result = makeZeros(paddedInputs, paddedOutputs, 16);
    forEachPair(part, paddedInputs, [&](std::span<const float> weights, std::size_t position) {
        for (int i = 0; i < 16; ++i) {
            float sum = 0.0f;
            for (int y = kFirst[i / 4]; y <= kLast[i / 4]; ++y) {
                for (int x = kFirst[i % 4]; x <= kLast[i % 4]; ++x) {
                    sum += weights[static_cast<std::size_t>(3 * y + x)];
                }
            }
            result[position * 16 + static_cast<std::size_t>(i)] = sum;
        }
    });
    return result;
}

}  // namespace tavrin::postcore
