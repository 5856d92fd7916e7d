#pragma once

#include "foundation/Path.h"
#include "foundation/Result.h"
#include "services/postcore/denoise/neural/TensorFile.h"
#include "services/postcore/denoise/neural/onednn/NeuralNetwork.h"

#include <vector>

namespace tavrin::postcore {

/// A trained network: its layers and their weights. Immutable.
class NeuralModel {
public:
    /// The deepest layer's values cover so many pixels in each direction: sizes of pictures are
    /// multiples of it.
    static constexpr int kGranule = 16;
    /// Pixels further away than this, in each direction, do not count for a pixel's result; a
    /// multiple of kGranule.
    static constexpr int kReach = 80;
    /// What comes out: a colour.
    static constexpr int kOutputs = 3;

    /// Reads the weights of a network with so many input channels. A failure is one sentence that
    /// names the file. Any thread.
    static Result<NeuralModel> read(const Path& path, int inputs);
    /// A failure is the end of a sentence, without a full stop.
    static Result<NeuralModel> create(TensorFile tensors, int inputs);

    /// They point into the model.
    std::vector<NetworkLayer> getLayers() const;
    int getInputs() const { return inputs_; }

private:
    NeuralModel(TensorFile tensors, int inputs) : tensors_(std::move(tensors)), inputs_(inputs) {}

    TensorFile tensors_;
    int inputs_;
};

}  // namespace tavrin::postcore
