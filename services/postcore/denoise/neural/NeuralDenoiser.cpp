#include "services/postcore/denoise/neural/NeuralDenoiser.h"

#include "foundation/Exception.h"
#include "foundation/StandardPaths.h"
#include "services/postcore/denoise/AutoExposure.h"
#include "services/postcore/denoise/CertainPixels.h"
#include "services/postcore/denoise/neural/FeatureTrust.h"
#include "services/postcore/denoise/neural/LightKeeping.h"
#include "services/postcore/denoise/neural/TileChannels.h"
#include "services/postcore/denoise/neural/TiledNetwork.h"
#include "services/postcore/denoise/neural/WatchedThread.h"

#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace tavrin::postcore {
namespace {

/// The features that a network with so many input channels takes.
struct Guides {
    Optional<BitmapImpl<Rgb>> albedo;
    Optional<BitmapImpl<Rgb>> normals;  ///< only with an albedo
    Optional<AlbedoTrust> trust;        ///< in the albedo
};

Optional<DenoisingFeature> takeFeature(DenoisingData& data, FeatureType type) {
    for (DenoisingFeature& feature : data.features) {
        if (feature.type == type) {
            return std::move(feature);
        }
    }
    return std::nullopt;
}

Guides takeGuides(DenoisingData data) {
    Guides guides;
    if (auto albedo = takeFeature(data, FeatureType::VisibleDiffuse)) {
        guides.trust.emplace(*albedo);
        guides.albedo = std::move(albedo->pixels);
        if (auto normals = takeFeature(data, FeatureType::VisibleNormals)) {
            guides.normals = std::move(normals->pixels);
        }
    }
    return guides;
}

class NeuralDenoiser final : public IDenoiser {
public:
    struct Models {
        NeuralModel plain;             ///< told the colour
        Optional<NeuralModel> guided;  ///< told the guides, too
        // They clean the guides where the guided model expects that; none once that is done.
        Optional<NeuralModel> albedo;
        Optional<NeuralModel> normals;
    };

    NeuralDenoiser(Scheduler& scheduler, ILogger& logger, float sensitivity, Guides guides,
                   Models models, CreateNeuralNetwork create)
        : scheduler_(scheduler),
          logger_(logger),
          sensitivity_(sensitivity),
          guides_(std::move(guides)),
          models_(std::move(models)),
          network_(create) {}

    Optional<BitmapImpl<Rgb>> denoise(const BitmapImpl<Rgb>& color, const BitmapImpl<Rgb>& variance,
                                      const Progress& progress) override {
        if (color.getPixelCount() == 0) {
            return color;
        }
        try {
            BitmapImpl<Rgb> result;
            const auto work = [&](WorkMonitor& monitor) {
                filter(color, variance, result, monitor);
            };
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
    void filter(const BitmapImpl<Rgb>& color, const BitmapImpl<Rgb>& variance,
                BitmapImpl<Rgb>& result, WorkMonitor& monitor) {
        const float exposure = computeAutoExposure(scheduler_, color);
        NetworkInput input{&color};
        const NeuralModel* model = &models_.plain;
        if (guides_.trust && guides_.trust->isTrusted(color, variance, exposure)) {
            cleanGuides(monitor);
            model = &*models_.guided;
            input.albedo = &*guides_.albedo;
            input.normals = guides_.normals ? &*guides_.normals : nullptr;
        }
        if (monitor.isStopped()) {
            return;
        }
        result = BitmapImpl<Rgb>(color.getWidth(), color.getHeight());
        apply(*model, input, makeLightCode(exposure), result, monitor);
        if (!monitor.isStopped()) {
            const auto certain =
                findCertainPixels(scheduler_, color, variance, exposure, sensitivity_, result);
            keepLight(scheduler_, color, certain, result);
            keepCertainPixels(scheduler_, color, certain, result);
        }
    }

    /// A guide costs as much as the picture itself, but only for the first element.
    void cleanGuides(WorkMonitor& monitor) {
        constexpr float kPart = 1.0f / 3.0f;
        if (models_.albedo && !monitor.isStopped()) {
            monitor.setStage(0.0f, kPart);
            clean(*guides_.albedo, models_.albedo, makeAlbedoCode(), monitor);
        }
        if (models_.normals && !monitor.isStopped()) {
            monitor.setStage(kPart, 2.0f * kPart);
            clean(*guides_.normals, models_.normals, makeNormalCode(), monitor);
            monitor.setStage(2.0f * kPart, 1.0f);
        }
    }

    /// Drops the model afterwards.
    void clean(BitmapImpl<Rgb>& guide, Optional<NeuralModel>& model, const PixelCode& code,
               WorkMonitor& monitor) {
        BitmapImpl<Rgb> result(guide.getWidth(), guide.getHeight());
        apply(*model, {&guide}, code, result, monitor);
        if (!monitor.isStopped()) {
            guide = std::move(result);
            model.reset();
        }
    }

    void apply(const NeuralModel& model, const NetworkInput& input, const PixelCode& code,
               BitmapImpl<Rgb>& result, WorkMonitor& monitor) {
        network_.run(
            model, result.getSize(), TiledNetwork::kMostTilePixels,
            [&](const Tile& tile, const TiledNetwork::Channels& channels) {
                writeTile(scheduler_, input, code, tile, channels);
            },
            [&](const Tile& tile, const TiledNetwork::Channels& channels) {
                readTile(scheduler_, channels, code, tile, result);
            },
            monitor);
    }

    Scheduler& scheduler_;
    ILogger& logger_;
    const float sensitivity_;
    Guides guides_;
    Models models_;
    TiledNetwork network_;
    WatchedThread thread_;
};

const char* const kPlainModel = "rt_hdr.tza";

Result<NeuralModel> readModel(const String& name, int inputs) {
    const Path path = StandardPaths::denoiserWeightsBundle() / name;
    std::error_code unknown;
    if (!std::filesystem::exists(path.std(), unknown)) {
        return Failure("The neural denoiser's weights are not installed: \"" + path.native() +
                       "\" is missing.");
    }
    return NeuralModel::read(path, inputs);
}

Result<NeuralDenoiser::Models> readModels(const Guides& guides) {
    Result<NeuralModel> plain = readModel(kPlainModel, 3);
    if (!plain) {
        return Failure(plain.error());
    }
    NeuralDenoiser::Models models{std::move(*plain), {}, {}, {}};
    struct Choice {
        Optional<NeuralModel>* model;
        const char* name;
        int inputs;
    };
    std::vector<Choice> choices;
    if (guides.normals) {
        choices = {{&models.guided, "rt_hdr_calb_cnrm.tza", 9},
                   {&models.albedo, "rt_alb.tza", 3},
                   {&models.normals, "rt_nrm.tza", 3}};
    } else if (guides.albedo) {
        choices = {{&models.guided, "rt_hdr_alb.tza", 6}};
    }
    for (const Choice& choice : choices) {
        Result<NeuralModel> model = readModel(choice.name, choice.inputs);
        if (!model) {
            return Failure(model.error());
        }
        *choice.model = std::move(*model);
    }
    return models;
}

}  // namespace

bool areNeuralWeightsInstalled() {
    std::error_code unknown;
    return std::filesystem::exists((StandardPaths::denoiserWeightsBundle() / kPlainModel).std(),
                                   unknown);
}

std::unique_ptr<IDenoiser> createNeuralDenoiser(Scheduler& scheduler, ILogger& logger,
                                                DenoisingData data, OidnBackend backend) {
    const float sensitivity = data.sensitivity;
    Guides guides = takeGuides(std::move(data));
    Result<NeuralDenoiser::Models> models = readModels(guides);
    const Result<CreateNeuralNetwork> create = getNetworkCreator();
    if (!models || !create) {
        logger.error(models ? create.error() : models.error());
        return nullptr;
    }
    if (backend == OidnBackend::Gpu) {
        logger.warning(
            "The neural denoiser runs on the processor: no back end for graphics cards "
            "is installed.");
    }
    return std::make_unique<NeuralDenoiser>(scheduler, logger, sensitivity, std::move(guides),
                                            std::move(*models), *create);
}

}  // namespace tavrin::postcore
