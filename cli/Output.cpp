#include "cli/Output.h"

#include "base/pipeline/Completion.h"
#include "base/pipeline/SeparateFiles.h"
#include "cli/AperturePictures.h"
#include "foundation/Text.h"

#include <algorithm>

namespace tavrin::cli {
namespace {

using image::ElementInfo;
using pipeline::Performer;

const String kAllElements = "*";
const String kTxrExtension = "txr";

bool isSameFile(const Path& left, const Path& right) {
    std::error_code error;
    return std::filesystem::equivalent(left.std(), right.std(), error) && !error;
}

/// One spelling for each file, as far as the system knows it.
std::filesystem::path toAbsolute(const Path& path) {
    std::error_code unknown;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path.std(), unknown),
                                             unknown);
}

bool isOneOf(const Path& file, const std::vector<Path>& files) {
    return std::ranges::any_of(files, [&](const Path& other) { return isSameFile(file, other); });
}

bool isTxr(const Path& path) {
    return Str::toLowerCase(path.extension()) == kTxrExtension;
}

imageio::ImageFormat getFormat(const Path& path) {
    const auto format = imageio::detectImageFormat(path);
    if (!format) {
        throw UsageError("The extension of \"" + path.native() +
                         "\" is of no known format; --list-formats shows those that can be "
                         "written.");
    }
    return *format;
}

/// What --element chooses of the pictures that the image can be shown as.
std::vector<ElementInfo> selectElements(const Output& output, const Performer& performer) {
    const auto filter = pipeline::IOperator::ElementSelector(output.element).toFilter();
    if (output.element == kAllElements) {
        return performer.saveSeparate.getSavableElements(filter);
    }
    // Also auxiliary ones, when they are asked for by name.
    std::vector<ElementInfo> elements = performer.zoom.getElements();
    std::erase_if(elements, [&filter](const ElementInfo& element) {
        return !filter(element) || !isSupported(element);
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

/// Throws an Exception when a picture would overwrite an image that it comes from.
void checkPicturesKeepInputs(const Output& output, const std::vector<ElementInfo>& elements) {
    const std::vector<Path> paths = pipeline::getSeparatePaths(elements, output.path);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (isOneOf(paths[i], output.inputs)) {
            throw Exception("Element \"" + image::getDisplayName(elements[i].name) +
                            "\" cannot be saved to \"" + paths[i].native() +
                            "\": it is an image that the element comes from.");
        }
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
    Output output{options.inputs, options.output, {}, {}, {}};
    checkInputsAreKept(options, options.output);
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
    checkPicturesKeepInputs(output, elements);
    saveWith(performer.saveSeparate, output.path, progress, [&] {
        performer.saveSeparate.save(elements, output.path, *output.format, output.settings);
    });
}

void checkInputsAreKept(const Options& options, const Path& file) {
    if (isOneOf(file, options.inputs)) {
        throw UsageError("The output \"" + file.native() +
                         "\" would overwrite an image that is opened.");
    }
}

void checkAperturePictures(const Options& options) {
    if (options.aperture.isEmpty()) {
        return;
    }
    getFormat(options.aperture);
    for (const Path& path : {options.aperture, getPointSpreadFunctionPath(options.aperture)}) {
        checkInputsAreKept(options, path);
        std::error_code unknown;
        if (std::filesystem::is_directory(path.std(), unknown)) {
            throw UsageError("\"" + path.native() + "\" is a folder; --aperture writes a picture.");
        }
        if (!options.output.isEmpty() && toAbsolute(path) == toAbsolute(options.output)) {
            throw UsageError("--output and --aperture would both write \"" + path.native() + "\".");
        }
    }
}

bool isSupported(const ElementInfo& element) {
    return element.kind != image::ElementKind::Unsupported;
}

}  // namespace tavrin::cli
