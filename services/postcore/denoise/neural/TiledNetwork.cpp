#include "services/postcore/denoise/neural/TiledNetwork.h"

#include "foundation/Exception.h"
#include "foundation/Scheduler.h"
#include "foundation/platform/DynamicLibrary.h"

#include <string>

namespace tavrin::postcore {
namespace {

class TileProgress final : public INetworkProgress {
public:
    TileProgress(WorkMonitor& monitor, std::size_t done, std::size_t count)
        : monitor_(monitor), done_(static_cast<float>(done)), count_(static_cast<float>(count)) {}

    bool report(float fraction) noexcept override {
        return monitor_.report((done_ + fraction) / count_);
    }

private:
    WorkMonitor& monitor_;
    float done_;
    float count_;
};

[[noreturn]] void fail(const std::string& reason) {
    throw Exception("The neural network cannot be run: " + String::fromUtf8(reason) + ".");
}

}  // namespace

Result<CreateNeuralNetwork> getNetworkCreator() {
    try {
        static const platform::DynamicLibrary module(
            platform::findModule("tavrin-postcore-onednn"));
        return reinterpret_cast<CreateNeuralNetwork>(module.getSymbol(kCreateNeuralNetworkSymbol));
    } catch (const Exception& exception) {
        return Failure(exception.message());
    }
}

void TiledNetwork::prepare(const NeuralModel& model, Pixel tileSize) {
    const int threads = Scheduler::getThreadCount();
    if (network_ && networkModel_ == &model && networkSize_ == tileSize &&
        networkThreads_ == threads) {
        return;
    }
    network_.reset();
    std::string reason;
    network_.reset(create_(model.getLayers(), tileSize.x, tileSize.y, threads, reason));
    if (!network_) {
        fail(reason);
    }
    networkModel_ = &model;
    networkSize_ = tileSize;
    networkThreads_ = threads;
}

void TiledNetwork::run(const NeuralModel& model, Pixel size, std::int64_t mostTilePixels,
                       const Write& write, const Read& read, WorkMonitor& monitor) {
    const TilePlan plan =
        planTiles(size, NeuralModel::kGranule, NeuralModel::kReach, mostTilePixels);
    prepare(model, plan.tileSize);
    const int blockSize = network_->getBlockSize();
    for (std::size_t i = 0; i < plan.tiles.size(); ++i) {
        write(plan.tiles[i], {network_->getInput(), plan.tileSize, blockSize});
        TileProgress progress(monitor, i, plan.tiles.size());
        std::string reason;
        if (!network_->run(progress, reason)) {
            if (!reason.empty()) {
                fail(reason);
            }
            return;
        }
        read(plan.tiles[i], {network_->getOutput(), plan.tileSize, blockSize});
    }
}

}  // namespace tavrin::postcore
