#include "cli/ImageOpening.h"

#include "base/image/ExrInfo.h"
#include "base/pipeline/Completion.h"
#include "base/settings/PropertyHelp.h"

#include <string>

namespace tavrin::cli {
namespace {

Result<image::ChannelImage> loadHeader(const Path& path) {
    Result<image::ExrInfo> info = image::readExrInfo(path);
    if (!info) {
        return Failure(info.error());
    }
    if (!info->loadFailure.isEmpty()) {
        return Failure(info->loadFailure);
    }
    return std::move(info->image);
}

String describe(const std::vector<Path>& inputs) {
    return inputs.size() == 1
               ? "Loading \"" + inputs.front().native() + "\""
               : "Merging " + String::fromUtf8(std::to_string(inputs.size())) + " images";
}

}  // namespace

void openImages(const Options& options, ImageContent content, pipeline::DisplayChain& chain,
                ProgressLine& progress, WarningPrinter& warnings) {
    pipeline::LoadOperator& load = chain.load;
    // From the thread of the operator while this one waits, and from this one later.
    load.onWarning = [&warnings](const String& text) { warnings.print(text); };
    if (options.inputs.empty()) {
        load.updateSettings(settings::allPropertyIds());
        return;
    }
    pipeline::Completion completion(load);
    if (content == ImageContent::Header) {
        load.setLoader(loadHeader);
        load.load({}, {options.inputs.front()});
    } else {
        const TaskProgress step = progress.start(describe(options.inputs));
        load.onProgress = [step](float fraction) { step.report(fraction); };
        load.load(options.weights, options.inputs);
    }
    const Result<String> result = completion.wait();
    if (!result) {
        throw Exception(result.error());
    }
}

}  // namespace tavrin::cli
