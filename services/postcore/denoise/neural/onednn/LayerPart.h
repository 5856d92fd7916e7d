#pragma once

#include "services/postcore/denoise/neural/onednn/NeuralNetwork.h"

#include <vector>

namespace tavrin::postcore {

/// The part of a layer's convolution that has to do with some of its inputs.
struct LayerPart {
    const NetworkLayer& layer;
    int firstInput = 0;
    int inputs = 0;
};

/// Weights [outputs][inputs][3][3] with zeros for the channels that fill up blocks.
std::vector<float> padWeights(const LayerPart& part, int paddedInputs, int paddedOutputs);

/// Weights [outputs][inputs][4][4] of the transposed convolution with stride 2 and margin 1 whose
/// results are those of the layer for a picture that was upsampled to 2 × 2 times every value.
std::vector<float> padUpsampledWeights(const LayerPart& part, int paddedInputs, int paddedOutputs);

}  // namespace tavrin::postcore
