#pragma once

#include "foundation/Function.h"
#include "foundation/Geometry.h"
#include "services/postcore/denoise/neural/NeuralModel.h"
#include "services/postcore/denoise/neural/TilePlan.h"
#include "services/postcore/denoise/neural/WatchedThread.h"
#include "services/postcore/denoise/neural/onednn/NeuralNetwork.h"

#include <cstdint>
#include <memory>

namespace tavrin::postcore {

/// The function that makes networks, from the module that holds oneDNN, which is loaded now if it
/// is not yet. A failure is one sentence. Any thread.
Result<CreateNeuralNetwork> getNetworkCreator();

/// Runs a trained network over pictures of any size, in tiles that bound the memory that it takes.
/// One thread at a time, best always the same one.
class TiledNetwork {
public:
    /// The channels of a tile's pixels as the network has them.
    struct Channels {
        float* values;
        Pixel size;     ///< of the tile
        int blockSize;  ///< channels that lie side by side

        /// The channels from `block` times the block size on, of the pixels from (0, y).
        float* getRow(int block, int y) const {
            const auto row = std::int64_t{block} * size.y + y;
            return values + row * size.x * blockSize;
        }
    };
    using Write = Function<void(const Tile& tile, const Channels& input)>;
    using Read = Function<void(const Tile& tile, const Channels& output)>;

    /// Tiles of so many pixels take 0.8 GB.
    static constexpr std::int64_t kMostTilePixels = 2'000'000;

    explicit TiledNetwork(CreateNeuralNetwork create) : create_(create) {}

    /// Runs the model, which outlives this object. For each tile calls `write`, which fills in all
    /// channels of all of the tile's pixels, zeros outside of the picture and beyond the network's
    /// inputs, and `read` with the result. Reports the fractions of the work to the monitor and
    /// stops when that says so. Throws an Exception when the library fails.
    void run(const NeuralModel& model, Pixel size, std::int64_t mostTilePixels, const Write& write,
             const Read& read, WorkMonitor& monitor);

private:
    void prepare(const NeuralModel& model, Pixel tileSize);

    CreateNeuralNetwork create_;
    // Making a network takes long: the last one is kept.
    std::unique_ptr<INeuralNetwork> network_;
    const NeuralModel* networkModel_ = nullptr;
    Pixel networkSize_;
    int networkThreads_ = 0;
};

}  // namespace tavrin::postcore
