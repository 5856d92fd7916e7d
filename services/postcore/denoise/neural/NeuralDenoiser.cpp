#include "services/postcore/denoise/neural/NeuralDenoiser.h"

#include "foundation/Exception.h"
#include "foundation/StandardPaths.h"
#include "services/postcore/denoise/neural/AutoExposure.h"
#include "services/postcore/denoise/neural/TileChannels.h"
#include "services/postcore/denoise/neural/TiledNetwork.h"
#include "services/postcore/denoise/neural/WatchedThread.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tavrin::postcore {
namespace {

struct WeightsFile {
    const char* name;
    int inputs;  ///< channels
};

const DenoisingFeature* findFeature(const DenoisingData& data, FeatureType type) {
    for (const DenoisingFeature& feature : data.features) {
        if (feature.type == type) {
            return &feature;
        }
    }
    return nullptr;
}

class NeuralDenoiser final : public IDenoiser {
public:
    NeuralDenoiser(Scheduler& scheduler, ILogger& logger, DenoisingData data, TiledNetwork network)
        : scheduler_(scheduler),
          logger_(logger),
          data_(std::move(data)),
          network_(std::move(network)) {}

    Optional<BitmapImpl<Rgb>> denoise(const BitmapImpl<Rgb>& color,
                                      const BitmapImpl<Rgb>& /*variance*/,
                                      const Progress& progress) override {
        if (color.getPixelCount() == 0) {
            return color;
        }
        try {
            BitmapImpl<Rgb> result(color.getWidth(), color.getHeight());
            const auto work = [&](WorkMonitor& monitor) { filter(color, result, monitor); };
            if (!thread_.run(work, progress)) {
                return std::nullopt;
            }
            return result;
        } catch (const Exception& exception) {
            logger_.error(exception.message());
            return std::nullopt;
        }
    }

private:
    void filter(const BitmapImpl<Rgb>& color, BitmapImpl<Rgb>& result, WorkMonitor& monitor) {
        NetworkInput input;
        input.color = &color;
        input.exposure = computeAutoExposure(scheduler_, color);
        const auto* albedo = findFeature(data_, FeatureType::VisibleDiffuse);
        const auto* normals = findFeature(data_, FeatureType::VisibleNormals);
        if (albedo != nullptr && network_.getModel().getInputs() >= 6) {
            input.albedo = &albedo->pixels;
        }
        if (normals != nullptr && network_.getModel().getInputs() == 9) {
            input.normals = &normals->pixels;
        }
        network_.run(
            color.getSize(), TiledNetwork::kMostTilePixels,
            [&](const Tile& tile, const TiledNetwork::Channels& channels) {
                writeTile(scheduler_, input, tile, channels);
            },
            [&](const Tile& tile, const TiledNetwork::Channels& channels) {
                readTile(scheduler_, channels, input.exposure, tile, result);
            },
            monitor);
    }

    Scheduler& scheduler_;
    ILogger& logger_;
    DenoisingData data_;
    TiledNetwork network_;
    WatchedThread thread_;
};

WeightsFile chooseWeights(const DenoisingData& data) {
    if (findFeature(data, FeatureType::VisibleDiffuse) == nullptr) {
        return {"rt_hdr.tza", 3};
    }
    if (findFeature(data, FeatureType::VisibleNormals) == nullptr) {
        return {"rt_hdr_alb.tza", 6};
    }
    return {"rt_hdr_alb_nrm.tza", 9};
}

}  // namespace

std::unique_ptr<IDenoiser> createNeuralDenoiser(Scheduler& scheduler, ILogger& logger,
                                                DenoisingData data, OidnBackend) {
    const WeightsFile weights = chooseWeights(data);
    const Path path = StandardPaths::denoiserWeightsBundle() / weights.name;
    std::error_code unknown;
    if (!std::filesystem::exists(path.std(), unknown)) {
        logger.error("The neural denoiser's weights are not installed: \"" + path.native() +
                     "\" is missing.");
        return nullptr;
    }
    Result<NeuralModel> model = NeuralModel::read(path, weights.inputs);
    if (!model) {
        logger.error(model.error());
        return nullptr;
    }
    const Result<CreateNeuralNetwork> creator = getNetworkCreator();
    if (!creator) {
        logger.error(creator.error());
        return nullptr;
    }
    return std::make_unique<NeuralDenoiser>(scheduler, logger, std::move(data),
                                            TiledNetwork(*creator, std::move(*model)));
}

}  // namespace tavrin::postcore
