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

DenoisingMode chooseMode(const Options& options, const DisplayChain& chain) {
    if (*options.denoise != DenoisingMode::None) {
        return *options.denoise;
    }
    const std::vector<DenoisingMode> modes = chain.denoise.getAvailableDenoisingModes();
    if (modes.empty()) {
        throw Exception("Image \"" + options.inputs.front().native() +
                        "\" has not what any mode of denoising needs.");
    }
    return modes.front();
}

/// The elements that the output is made of.
std::vector<ElementInfo> getSources(const Output& output, const DisplayChain& chain) {
    if (output.element == image::kLightMixInteractive) {
        return chain.lightMix.getLightElements();
    }
    const bool isWholeImage = !output.format;
    return chain.denoise.getDenoiseCapableElements(
        pipeline::IOperator::ElementSelector(isWholeImage ? "*" : output.element).toFilter());
}

}  // namespace

void denoise(const Options& options, const Output& output, DisplayChain& chain,
             settings::Settings& settings, ProgressLine& progress) {
    settings.set(postcore::kDenoiseModeId, static_cast<int>(chooseMode(options, chain)));
    std::vector<String> names;
    std::ranges::transform(getSources(output, chain), std::back_inserter(names),
                           &ElementInfo::name);
    chain.load.setElementsFlag(image::kSelectedForDenoising, names);
    pipeline::Completion completion(chain.denoise);
    const TaskProgress step = progress.start("Denoising");
    chain.denoise.onProgress = [step](float fraction) { step.report(fraction); };
    chain.denoise.denoise();
    const Result<String> result = completion.wait();
    if (!result) {
        throw Exception(result.error());
    }
}

}  // namespace tavrin::cli
