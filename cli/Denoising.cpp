#include "cli/Denoising.h"

#include "base/pipeline/Completion.h"
#include "foundation/Exception.h"
#include "services/postcore/PropertyIds.h"

#include <algorithm>
#include <iterator>

namespace tavrin::cli {
namespace {

using image::ElementInfo;
using pipeline::Performer;
using postcore::DenoisingMode;

/// Without a wish the mode that gives the best pictures of those that are possible.
DenoisingMode chooseMode(const Options& options, const Performer& performer) {
    if (*options.denoise != DenoisingMode::None) {
        return *options.denoise;
    }
    const std::vector<DenoisingMode> available = performer.denoise.getAvailableDenoisingModes();
    for (const DenoisingMode mode : {DenoisingMode::IntelAi, DenoisingMode::HighQuality}) {
        if (std::ranges::find(available, mode) != available.end() &&
            postcore::isDenoiserInstalled(mode)) {
            return mode;
        }
    }
    return DenoisingMode::FirefliesOnly;
}

/// The elements that the output is made of.
std::vector<ElementInfo> getSources(const Output& output, const Performer& performer) {
    if (output.element == image::kLightMixInteractive) {
        return performer.lightMix.getLightElements();
    }
    const String selector = output.element == image::kBloomGlareInteractive
                                ? image::getDisplayName(image::kBeautyElement)
                                : output.element;
    return performer.denoise.getDenoiseCapableElements(
        pipeline::IOperator::ElementSelector(selector).toFilter());
}

[[noreturn]] void failAsNotDenoisable(const Options& options, const Output& output) {
    throw Exception("Image \"" + options.inputs.front().native() + "\" cannot be denoised: " +
                    (output.element == "*"
                         ? String("it holds no element with its variance")
                         : "it does not hold the variance of \"" + output.element + "\"") +
                    ".");
}

}  // namespace

void denoise(const Options& options, const Output& output, Performer& performer,
             settings::Settings& settings, ProgressLine& progress) {
    settings.set(postcore::kDenoiseModeId, static_cast<int>(chooseMode(options, performer)));
    std::vector<String> names;
    std::ranges::transform(getSources(output, performer), std::back_inserter(names),
                           &ElementInfo::name);
    if (names.empty()) {
        failAsNotDenoisable(options, output);
    }
    performer.load.setElementsFlag(image::kSelectedForDenoising, names);
    pipeline::Completion completion(performer.denoise);
    const TaskProgress step = progress.start("Denoising");
    performer.denoise.onProgress = [step](float fraction) { step.report(fraction); };
    performer.denoise.denoise();
    const Result<String> result = completion.wait();
    if (!result) {
        throw Exception("Image \"" + options.inputs.front().native() + "\": " + result.error());
    }
}

}  // namespace tavrin::cli
