#include "cli/Denoising.h"

#include "base/pipeline/Completion.h"
#include "foundation/Exception.h"
#include "services/postcore/PropertyIds.h"

#include <algorithm>
#include <iterator>

namespace tavrin::cli {
namespace {

using image::ElementInfo;
using pipeline::DisplayChain;
using postcore::DenoisingMode;

/// Without a wish the mode that gives the best pictures of those that are possible.
DenoisingMode chooseMode(const Options& options, const DisplayChain& chain) {
    if (*options.denoise != DenoisingMode::None) {
        return *options.denoise;
    }
    const std::vector<DenoisingMode> available = chain.denoise.getAvailableDenoisingModes();
    for (const DenoisingMode mode : {DenoisingMode::IntelAi, DenoisingMode::HighQuality}) {
        if (std::ranges::find(available, mode) != available.end() &&
            postcore::isDenoiserInstalled(mode)) {
            return mode;
        }
    }
    return DenoisingMode::FirefliesOnly;
}

/// The elements that the output is made of.
std::vector<ElementInfo> getSources(const Output& output, const DisplayChain& chain) {
    if (output.element == image::kLightMixInteractive) {
        return chain.lightMix.getLightElements();
    }
    const bool isWholeImage = !output.format;
    const String selector = isWholeImage ? "*"
                            : output.element == image::kBloomGlareInteractive
                                ? image::getDisplayName(image::kBeautyElement)
                                : output.element;
    return chain.denoise.getDenoiseCapableElements(
        pipeline::IOperator::ElementSelector(selector).toFilter());
}

[[noreturn]] void failAsNotDenoisable(const Options& options, const Output& output) {
    throw Exception("Image \"" + options.inputs.front().native() + "\" cannot be denoised: " +
                    (output.format ? "it does not hold the variance of \"" + output.element + "\""
                                   : String("it holds no element with its variance")) +
                    ".");
}

}  // namespace

void denoise(const Options& options, const Output& output, DisplayChain& chain,
             settings::Settings& settings, ProgressLine& progress) {
    settings.set(postcore::kDenoiseModeId, static_cast<int>(chooseMode(options, chain)));
    std::vector<String> names;
    std::ranges::transform(getSources(output, chain), std::back_inserter(names),
                           &ElementInfo::name);
    if (names.empty()) {
        failAsNotDenoisable(options, output);
    }
    chain.load.setElementsFlag(image::kSelectedForDenoising, names);
    pipeline::Completion completion(chain.denoise);
    const TaskProgress step = progress.start("Denoising");
    chain.denoise.onProgress = [step](float fraction) { step.report(fraction); };
    chain.denoise.denoise();
    const Result<String> result = completion.wait();
    if (!result) {
        throw Exception("Image \"" + options.inputs.front().native() + "\": " + result.error());
    }
}

}  // namespace tavrin::cli
