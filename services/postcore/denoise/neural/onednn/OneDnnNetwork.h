#pragma once

#include "foundation/PixelArray.h"
#include "services/postcore/denoise/neural/onednn/BufferPlan.h"
#include "services/postcore/denoise/neural/onednn/NeuralNetwork.h"

#include <oneapi/dnnl/dnnl.hpp>

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace tavrin::postcore {

/// A network made of oneDNN's primitives on the processor, in the library's blocked layout. Nothing
/// is copied to join a skip connection: the layer that pools and the one that upsamples write into
/// the two parts of one buffer. All buffers lie in one block, in which they follow each other.
class OneDnnNetwork final : public INeuralNetwork {
public:
    /// Throws dnnl::error, std::bad_alloc, and std::runtime_error for layers that do not fit.
    OneDnnNetwork(std::span<const NetworkLayer> layers, int width, int height, int threads);

    int getBlockSize() const noexcept override { return blockSize_; }
    float* getInput() noexcept override { return input_; }
    float* getOutput() noexcept override { return output_; }
    bool run(INetworkProgress& progress, std::string& reason) noexcept override;

private:
    /// Channels of a buffer.
    struct View {
        int buffer = 0;
        int firstChannel = 0;
        int channels = 0;
        int level = 0;  ///< how often width and height have been halved
    };

    struct Step {
        dnnl::primitive primitive;
        View source;
        View destination;
        std::unordered_map<int, dnnl::memory> arguments;
        double cost = 0.0;  ///< additions and multiplications
    };

    int pad(int channels) const;
    View makeView(int channels, int level);
    dnnl::memory::desc describe(const View& view) const;
    void planSkips(std::span<const NetworkLayer> layers);
    void addLayer(const NetworkLayer& layer, const NetworkLayer* next, bool isLast);
    void addConvolution(const NetworkLayer& layer, const View& to, bool isLast);
    void addPooling(const View& to);
    void addUpsampling(const View& to);
    template <class Description>
    void addStep(const Description& description, const View& to, double cost,
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
    std::vector<View> joined_;  ///< of each skip connection: the upsampled channels and the skip's
    std::vector<View> skips_;   ///< of each skip connection: where it is written to
    int poolings_ = 0;
    View current_;
    std::vector<Step> steps_;
    double cost_ = 0.0;
    std::size_t scratchpadBytes_ = 0;
    PixelArray<std::byte> memory_;
    PixelArray<std::byte> scratchpad_;
    float* input_ = nullptr;
    float* output_ = nullptr;
};

}  // namespace tavrin::postcore
