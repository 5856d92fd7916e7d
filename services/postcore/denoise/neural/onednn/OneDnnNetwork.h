#pragma once

#include "foundation/PixelArray.h"
#include "services/postcore/denoise/neural/onednn/BufferPlan.h"
#include "services/postcore/denoise/neural/onednn/LayerPart.h"
#include "services/postcore/denoise/neural/onednn/NeuralNetwork.h"

#include <oneapi/dnnl/dnnl.hpp>

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace tavrin::postcore {

/// A network made of oneDNN's primitives on the processor, in the library's blocked layout. All its
/// buffers lie in one block of memory, in which they follow each other.
///
/// A convolution of an upsampled picture and of a skip connection is computed as the sum of two: as
/// three neighbours of an upsampled value are only two different values, the first one takes 4 × 4
/// weights on the small picture instead of 4 times 3 × 3 on the large one. That saves more than
/// half of the work of these layers, and the memory of the upsampled pictures.
class OneDnnNetwork final : public INeuralNetwork {
public:
    /// Throws dnnl::error, std::bad_alloc, and std::runtime_error for layers that do not fit.
    OneDnnNetwork(std::span<const NetworkLayer> layers, int width, int height, int threads);

    int getBlockSize() const noexcept override { return blockSize_; }
    float* getInput() noexcept override { return input_; }
    float* getOutput() noexcept override { return output_; }
    bool run(INetworkProgress& progress, std::string& reason) noexcept override;

private:
    /// A picture in a buffer.
    struct View {
        int buffer = 0;
        int channels = 0;
        int level = 0;  ///< how often width and height have been halved
    };

    /// What a convolution begins with.
    enum class Sum { Bias, BiasAndDestination, Nothing };

    struct Step {
        dnnl::primitive primitive;
        View source;
        View destination;
        std::unordered_map<int, dnnl::memory> arguments;
        double cost = 0.0;  ///< additions and multiplications
    };

    int pad(int channels) const;
    std::size_t getPixelCount(int level) const;
    View makeView(int channels, int level);
    dnnl::memory::desc describe(const View& view) const;
    dnnl::memory makeWeights(const dnnl::memory::desc& description, std::vector<float> weights,
                             const dnnl::memory::dims& shape);
    void addLayer(const NetworkLayer& layer, bool isLast);
    void addJoinedConvolution(const NetworkLayer& layer, const View& to);
    void addConvolution(const LayerPart& part, const View& from, const View& to, Sum sum,
                        bool mayTransform);
    void addUpsampledConvolution(const LayerPart& part, const View& from, const View& to);
    bool addTransposedConvolution(const LayerPart& part, const View& from, const View& to);
    void addPooling(const View& from, const View& to);
    void addUpsampling(const View& from, const View& to);
    template <class Description>
    void addStep(const Description& description, const View& from, const View& to, double cost,
                 std::unordered_map<int, dnnl::memory> arguments);
    void placeBuffers();
    float* getAddress(const View& view);

    int width_;
    int height_;
    int threads_;
    int blockSize_;
    dnnl::engine engine_{dnnl::engine::kind::cpu, 0};
    dnnl::stream stream_{engine_};
    BufferPlan plan_;
    std::vector<View> skips_;  ///< the input and the results of the layers that pool
    View current_;
    bool isUpsampled_ = false;  ///< current_ stands for its upsampled picture
    std::vector<Step> steps_;
    double cost_ = 0.0;
    std::size_t scratchpadBytes_ = 0;
    PixelArray<std::byte> memory_;
    PixelArray<std::byte> scratchpad_;
    float* input_ = nullptr;
    float* output_ = nullptr;
};

}  // namespace tavrin::postcore
