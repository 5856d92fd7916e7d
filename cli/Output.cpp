#include "cli/Output.h"

#include "base/pipeline/Completion.h"
#include "base/pipeline/SeparateFiles.h"
#include "cli/WorkFiles.h"
#include "foundation/platform/File.h"

#include <algorithm>

namespace tavrin::cli {
using image::ElementInfo;
using pipeline::Performer;

imageio::ImageFormat getFormat(const Path& path) {
    const auto format = imageio::detectImageFormat(path);
    if (!format) {
        throw UsageError("The extension of \"" + path.native() +
                         "\" is of no known format; --list-formats shows those that can be "
                         "written.");
    }
    return *format;
}

namespace {

/// What --element chooses of the pictures that the image can be shown as.
std::vector<ElementInfo> selectElements(const Output& output, const Performer& performer) {
    const auto filter = pipeline::IOperator::ElementSelector(output.element).toFilter();
    if (output.element == kAllElements) {
        return performer.saveSeparate.getSavableElements(filter);
    }
    // Also auxiliary ones, when they are asked for by name.
    std::vector<ElementInfo> elements = performer.zoom.getElements();
    std::erase_if(elements, [&filter](const ElementInfo& element) {
        return !filter(element) || element.kind == image::ElementKind::Unsupported;
    });
    if (elements.empty()) {
        throw Exception("Image \"" + output.inputs.front().native() +
                        "\" has no render element \"" + output.element +
                        "\" that can be saved; --list-elements shows those it has.");
    }
    return elements;
}

/// Without alpha what has none: data, and elements of an image that is opaque everywhere.
void dropNeedlessAlpha(const Performer& performer, std::vector<ElementInfo>& elements) {
    const std::vector<ElementInfo> loaded = performer.load.getElements();
    const bool hasAlpha =
        std::ranges::find(loaded, image::kAlphaElement, &ElementInfo::name) != loaded.end();
    for (ElementInfo& element : elements) {
        if (!hasAlpha || element.has(image::kNoColorMapping)) {
            element.kind = image::ElementKind::Rgb;
        }
    }
}

/// Throws an Exception when a picture would overwrite an image that it comes from, or another
/// output.
void checkPictures(const Output& output, const std::vector<ElementInfo>& elements) {
    const std::vector<Path> paths = pipeline::getSeparatePaths(elements, output.path);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const auto isTaken = [path = toCanonical(paths[i])](const Path& other) {
            return toCanonical(other) == path;
        };
        const String start = "Element \"" + image::getDisplayName(elements[i].name) +
                             "\" cannot be saved to \"" + paths[i].native() + "\": it is ";
        if (std::ranges::any_of(output.inputs, isTaken)) {
            throw Exception(start + "an image that the element comes from.");
        }
        if (std::ranges::any_of(output.others, isTaken)) {
            throw Exception(start + "another output.");
        }
        platform::checkWritable(paths[i]);
    }
}

/// Lets the operator save, and waits for it.
template <class Operator, class Save>
void saveWith(Operator& op, const Path& path, ProgressLine& progress, const Save& save) {
    pipeline::Completion completion(op);
    const TaskProgress step = progress.start("Saving \"" + path.native() + "\"");
    op.onProgress = [step](float fraction) { step.report(fraction); };
    save();
    const Result<String> result = completion.wait();
    if (!result) {
        throw Exception(result.error());
    }
}

}  // namespace

Output planOutput(const Options& options) {
    Output output{options.inputs, getNamedOutputs(options), options.output, {}, {}, {}};
    std::erase(output.others, options.output);
    if (isTxr(options.output)) {
        output.element = options.element.value_or(kAllElements);
        if (!options.formatOptions.empty()) {
            throw UsageError("A .txr output has no format options.");
        }
        return output;
    }
    output.element = options.element.value_or(image::getDisplayName(image::kBeautyElement));
    output.format = getFormat(options.output);
    for (const String& option : options.formatOptions) {
        const Result<void> set = setImageSaveOption(output.settings, *output.format, option);
        if (!set) {
            throw UsageError(set.error());
        }
    }
    return output;
}

void saveOutput(const Output& output, Performer& performer, ProgressLine& progress) {
    if (!output.format) {
        saveWith(performer.saveTxrCli, output.path, progress,
                 [&] { performer.saveTxrCli.save(output.element, output.path); });
        return;
    }
    std::vector<ElementInfo> elements = selectElements(output, performer);
    dropNeedlessAlpha(performer, elements);
    checkPictures(output, elements);
    saveWith(performer.saveSeparate, output.path, progress, [&] {
        performer.saveSeparate.save(elements, output.path, *output.format, output.settings);
    });
}

}  // namespace tavrin::cli
