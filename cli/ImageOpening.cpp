#include "cli/ImageOpening.h"

#include "base/image/ExrInfo.h"
#include "base/pipeline/Completion.h"
#include "base/settings/PropertyHelp.h"

#include <memory>
#include <string>
#include <vector>

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

/// Auxiliary elements are data, but for the denoised variants, which are images.
bool isData(const image::ElementInfo& element) {
    return element.has(image::kAuxiliaryElement) && !image::isDenoisedElementName(element.name);
}

/// Keeps what makes pictures of colours away from data: they are saved with the values they have.
void protectData(pipeline::LoadOperator& load) {
    for (const image::ElementFlag flag :
         {image::kNoColorMapping, image::kNoBloom, image::kNoGlare, image::kNoSharpenBlur}) {
        std::vector<String> names;
        for (const image::ElementInfo& element : load.getElements()) {
            if (element.has(flag) || isData(element)) {
                names.push_back(element.name);
            }
        }
        load.setElementsFlag(flag, names);
    }
}

}  // namespace

void openImages(const Options& options, ImageContent content, pipeline::Performer& performer,
                ProgressLine& progress, WarningPrinter& warnings) {
    pipeline::LoadOperator& load = performer.load;
    // From the thread of an operator while this one waits, and from this one later.
    const auto print = [&warnings](const String& text) { warnings.print(text); };
    const auto isOpen = std::make_shared<bool>(false);
    load.onWarning = [print, isOpen, &load](const String& text) {
        // What is wrong with the settings of the loaded image, the first one of several; before
        // there is one, what several do not agree on.
        const std::vector<Path> loaded = load.getLoadedPaths();
        const bool isOfImage = !*isOpen && !loaded.empty();
        print(isOfImage ? "Image \"" + loaded.front().native() + "\": " + text : text);
    };
    performer.denoise.onWarning = print;
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
    *isOpen = true;
    protectData(load);
}

}  // namespace tavrin::cli
