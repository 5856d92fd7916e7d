#include "services/postcore/denoise/neural/NeuralModel.h"

#include <string>
#include <utility>

namespace tavrin::postcore {
namespace {

struct LayerDeclaration {
    const char* name;
    LayerEnd end = LayerEnd::Plain;
    int skip = kNoSkip;
};

/// A U-Net (Ronneberger, Fischer and Brox 2015): down to a sixteenth of the size and up again, with
/// the results of each size on the way down joined to those on the way up.
constexpr LayerDeclaration kLayers[] = {
    {"enc_conv0"},
    {"enc_conv1", LayerEnd::Pool},
    {"enc_conv2", LayerEnd::Pool},
    {"enc_conv3", LayerEnd::Pool},
    {"enc_conv4", LayerEnd::Pool},
    {"enc_conv5a"},
    {"enc_conv5b", LayerEnd::Upsample},
    {"dec_conv4a", LayerEnd::Plain, 3},
    {"dec_conv4b", LayerEnd::Upsample},
    {"dec_conv3a", LayerEnd::Plain, 2},
    {"dec_conv3b", LayerEnd::Upsample},
    {"dec_conv2a", LayerEnd::Plain, 1},
    {"dec_conv2b", LayerEnd::Upsample},
    {"dec_conv1a", LayerEnd::Plain, 0},
    {"dec_conv1b"},
    {"dec_conv0"},
};

constexpr std::uint32_t kMostChannels = 1024;

/// Whether these are the weights of a convolution of 3 × 3 values, and its biases.
bool isConvolution(const Tensor* weights, const Tensor* bias) {
    return weights != nullptr && bias != nullptr && weights->shape.size() == 4 &&
           weights->shape[0] <= kMostChannels && weights->shape[1] <= kMostChannels &&
           weights->shape[2] == 3 && weights->shape[3] == 3 && bias->shape.size() == 1 &&
           bias->shape[0] == weights->shape[0];
}

NetworkLayer makeLayer(const TensorFile& tensors, const LayerDeclaration& declaration) {
    const Tensor& weights = *tensors.find(std::string(declaration.name) + ".weight");
    const Tensor& bias = *tensors.find(std::string(declaration.name) + ".bias");
    return {static_cast<int>(weights.shape[1]),
            static_cast<int>(weights.shape[0]),
            weights.values,
            bias.values,
            declaration.end,
            declaration.skip};
}

}  // namespace

Result<NeuralModel> NeuralModel::create(TensorFile tensors, int inputs) {
    std::vector<int> skips = {inputs};
    int channels = inputs;
    for (const LayerDeclaration& declaration : kLayers) {
        const std::string name = declaration.name;
        if (!isConvolution(tensors.find(name + ".weight"), tensors.find(name + ".bias"))) {
            return Failure("it does not hold the layer \"" + String::fromUtf8(name) + "\"");
        }
        const NetworkLayer layer = makeLayer(tensors, declaration);
        if (layer.skip != kNoSkip) {
            channels += skips[static_cast<std::size_t>(layer.skip)];
        }
        if (layer.inputs != channels) {
            return Failure("its layer \"" + String::fromUtf8(name) +
                           "\" does not fit to the one before");
        }
        channels = layer.outputs;
        if (layer.end == LayerEnd::Pool) {
            skips.push_back(channels);
        }
    }
    if (channels != kOutputs) {
        return Failure("its network does not end with a colour");
    }
    return NeuralModel(std::move(tensors), inputs);
}

Result<NeuralModel> NeuralModel::read(const Path& path, int inputs) {
    Result<TensorFile> tensors = TensorFile::read(path);
    if (!tensors) {
        return Failure(tensors.error());
    }
    Result<NeuralModel> model = create(std::move(*tensors), inputs);
    if (!model) {
        return Failure(TensorFile::makeMessage(path, model.error()));
    }
    return model;
}

std::vector<NetworkLayer> NeuralModel::getLayers() const {
    std::vector<NetworkLayer> layers;
    for (const LayerDeclaration& declaration : kLayers) {
        layers.push_back(makeLayer(tensors_, declaration));
    }
    return layers;
}

}  // namespace tavrin::postcore
