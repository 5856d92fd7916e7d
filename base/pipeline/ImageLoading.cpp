#include "base/pipeline/ImageLoading.h"

#include "base/image/Accumulator.h"
#include "base/image/Exr.h"
#include "foundation/Exception.h"
#include "foundation/NumberText.h"
#include "foundation/Optional.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <utility>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::Weight;

void checkFits(const ChannelImage& image, const ChannelImage& merged, const Path& path) {
    if (!image.fitsWithin(merged)) {
        throw Exception(
            "Image \"" + path.native() +
            "\" does not fit within the merged output image.\n\nThe first image loaded for merging "
            "defines the dimensions of the output image. All other images to be merged have to fit "
            "within those dimensions, otherwise they are not compatible for the merging.");
    }
}

void checkHasWeights(const ChannelImage& image, const Weight& weight, const Path& path) {
    const String* channel = std::get_if<String>(&weight);
    if (channel != nullptr && !image.hasChannel<float>(*channel)) {
        throw Exception(
            "Image \"" + path.native() + "\" is missing channel \"" + *channel +
            "\", expected to contain pixel weights.\n\nFor each pixel to be merged its weight is "
            "required. For this purpose mergeable images store a special weight channel defining a "
            "weight of each pixel of the image. By default Orvix Tavrin names this channel \"" +
            image::kWeightsElement + "\".");
    }
}

void addImage(image::Accumulator& accumulator, const Weight& weight, const ChannelImage& image,
              const Path& path) {
    try {
        accumulator.add(weight, image);
    } catch (const Exception& exception) {
        throw Exception(image::makeFileMessage(exception.message(), path));
    }
}

/// The channels of denoised variants. What one image lacks is dropped after merging: with a part of
/// the light it would be shown in place of the element.
class DenoisedVariants {
public:
    explicit DenoisedVariants(const ChannelImage& first) {
        for (const auto& [name, channel] : first.getChannels()) {
            if (image::isDenoisedElementName(image::splitChannelName(name).element)) {
                names_.push_back(name);
            }
        }
    }

    void add(const ChannelImage& image) {
        std::erase_if(names_, [&](const String& name) {
            const bool isMissing = !image.hasChannel<float>(name);
            if (isMissing) {
                incomplete_.push_back(name);
            }
            return isMissing;
        });
    }

    void dropIncomplete(ChannelImage& merged, const MergeReport& report) const {
        std::ranges::for_each(incomplete_, [&](const String& name) { merged.removeChannel(name); });
        if (!incomplete_.empty()) {
            report.onWarning(
                "Not all merged images hold the same denoised variants. Those that "
                "one of them lacks are dropped.");
        }
    }

private:
    std::vector<String> names_;  ///< that all images have had so far
    std::vector<String> incomplete_;
};

void checkMakesSense(const Weight& weight) {
    if (const float* number = std::get_if<float>(&weight)) {
        if (!std::isfinite(*number) || *number < 0.0f) {
            throw Exception("A weight of " + Str::getNumberText(*number) +
                            " makes no sense: it is 0 or more.");
        }
        return;
    }
    const String& channel = std::get<String>(weight);
    if (channel == "R" || channel == "G" || channel == "B") {
        throw Exception("Channel \"" + channel +
                        "\" cannot hold pixel weights: it is one of the beauty.");
    }
}

}  // namespace

std::vector<Weight> normalizeWeights(std::vector<Weight> weights, std::size_t inputCount) {
    if (weights.empty()) {
        weights.emplace_back(image::kWeightsElement);
    }
    if (weights.size() == 1) {
        weights.resize(inputCount, Weight(weights.front()));
    }
    if (weights.size() != inputCount) {
        throw Exception(
            "Number of specified weights is mismatched with number of input images.\n\nYou can "
            "either set no weight at all which will lead to a default (%" +
            image::kWeightsElement +
            ") for all input images, or set only one weight to actually change the default, or set "
            "same number of weights as the number of input images.");
    }
    for (const Weight& weight : weights) {
        checkMakesSense(weight);
    }
    if (std::ranges::all_of(weights, [](const Weight& weight) { return weight == Weight(0.0f); })) {
        throw Exception("No image would be left to merge: all weights are 0.");
    }
    return weights;
}

ChannelImage loadImage(const Loader& loader, const Path& path) {
    Result<ChannelImage> image = loader(path);
    if (!image) {
        throw Exception(image.error());
    }
    try {
        static_cast<void>(image->getRenderElementInfos());
    } catch (const Exception& exception) {
        throw Exception(image::makeFileMessage(exception.message(), path));
    }
    return *std::move(image);
}

ChannelImage loadMerged(const Loader& loader, const std::vector<Path>& paths,
                        const std::vector<Weight>& weights, const MergeReport& report) {
    std::vector<String> warnings;  // of the image that is being added
    image::Accumulator accumulator(image::kWeightsElement,
                                   [&](const String& text) { warnings.push_back(text); });
    std::future<void> adding;
    const auto finishAdding = [&](std::size_t count) {
        adding.get();
        std::ranges::for_each(std::exchange(warnings, {}), report.onWarning);
        report.onProgress(static_cast<float>(count) / static_cast<float>(paths.size()));
    };
    Optional<DenoisedVariants> denoised;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        ChannelImage image = loadImage(loader, paths[i]);
        if (i == 0) {
            denoised.emplace(image);
        }
        denoised->add(image);
        if (i > 0) {
            finishAdding(i);
            checkFits(image, accumulator.getImage(), paths[i]);
        }
        checkHasWeights(image, weights[i], paths[i]);
        adding = std::async(std::launch::async, [&, i, image = std::move(image)] {
            addImage(accumulator, weights[i], image, paths[i]);
        });
    }
    finishAdding(paths.size());
    accumulator.finish();
    ChannelImage merged = accumulator.takeImage();
    denoised->dropIncomplete(merged, report);
    return merged;
}

}  // namespace tavrin::pipeline
