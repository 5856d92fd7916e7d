#pragma once

#include <span>
#include <string>

/// What the program and the module that holds oneDNN say to each other. Both come from one build,
/// so that C++ types may pass between them; exceptions may not.
namespace tavrin::postcore {

/// What becomes of the result of a convolution.
enum class LayerEnd {
    Plain,
    Pool,      ///< the largest of every 2 × 2 values
    Upsample,  ///< every value 2 × 2 times
};

/// No skip connection.
inline constexpr int kNoSkip = -1;

/// A convolution of 3 × 3 values with a margin of zeros, whose negative results become 0.
struct NetworkLayer {
    int inputs = 0;                  ///< channels, those of a skip connection included
    int outputs = 0;                 ///< channels
    std::span<const float> weights;  ///< [outputs][inputs][3][3]
    std::span<const float> bias;     ///< [outputs]
    LayerEnd end = LayerEnd::Plain;
    /// What follows the previous layer's channels in the input: kNoSkip, 0 for the network's input,
    /// n for the result of the nth layer that pools.
    int skip = kNoSkip;
};

/// Told the part of the network that is done, 0 to 1; answers false to stop.
class INetworkProgress {
public:
    virtual ~INetworkProgress() = default;
    virtual bool report(float fraction) noexcept = 0;
};

/// A network that is ready to run on pictures of one size. One thread at a time, best always the
/// same one: the library keeps worker threads for each thread that calls it.
class INeuralNetwork {
public:
    virtual ~INeuralNetwork() = default;

    /// Channels lie in blocks: [block][height][width][channel in the block]. This is the number of
    /// channels in a block.
    virtual int getBlockSize() const noexcept = 0;
    /// Where the input is written to before every run; channels beyond the network's inputs that
    /// fill up the last block must be 0.
    virtual float* getInput() noexcept = 0;
    /// The result of the last run; one block, of which the first three channels count.
    virtual float* getOutput() noexcept = 0;
    /// False when it was stopped, or failed, which fills in `reason`.
    virtual bool run(INetworkProgress& progress, std::string& reason) noexcept = 0;
};

/// Makes a network, which the caller then owns, for pictures whose width and height are multiples
/// of the size that one value of the deepest layer covers. The layers' arrays may go afterwards.
/// Null when that cannot be done; `reason` then says why.
using CreateNeuralNetwork = INeuralNetwork* (*)(std::span<const NetworkLayer> layers, int width,
                                                int height, int threads,
                                                std::string& reason) noexcept;

/// The name under which the module exports it. The number counts changes of this header, so that a
/// module of another version is refused.
inline constexpr const char* kCreateNeuralNetworkSymbol = "tavrinCreateNeuralNetwork1";

}  // namespace tavrin::postcore
