#include "cli/Output.h"

#include "base/image/Exr.h"
#include "base/image/ImageIterators.h"
#include "cli/ElementPicture.h"
#include "foundation/Text.h"
#include "services/imageio/SaveImage.h"

#include <algorithm>
#include <functional>
#include <string>

namespace tavrin::cli {
namespace {

using image::ChannelImage;
using image::ElementInfo;

const String kAllElements = "*";
const String kTxrExtension = "txr";

bool isSameFile(const Path& left, const Path& right) {
    std::error_code error;
    return std::filesystem::equivalent(left.std(), right.std(), error) && !error;
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

void throwOnFailure(const Result<void>& result) {
    if (!result) {
        throw Exception(result.error());
    }
}

std::vector<ElementInfo> selectElements(const Output& output, const ChannelImage& image) {
    std::vector<ElementInfo> elements = image.getElements();
    if (output.element == kAllElements) {
        std::erase_if(elements, std::not_fn(image::isSavableSeparately));
        return elements;
    }
    const String name = image::getInternalName(output.element);
    for (const ElementInfo& element : elements) {
        if (element.name == name && isSupported(element)) {
            return {element};
        }
    }
    throw Exception("Image \"" + output.input.native() + "\" has no render element \"" +
                    output.element + "\" that can be saved; --list-elements shows those it has.");
}

/// The file of one of several elements: the beauty takes the given name. `count` above 1 tells
/// elements apart whose names become the same file name.
Path getElementPath(const Path& path, const ElementInfo& element, int count) {
    if (element.name == image::kBeautyElement) {
        return path;
    }
    return path.withFileName(
        path.stem() + "_" + Str::escapeFilename(image::getDisplayName(element.name)) +
        (count > 1 ? "_" + String::fromUtf8(std::to_string(count)) : "") + "." + path.extension());
}

struct ElementFile {
    ElementInfo element;
    Path path;
};

/// What is written where. Throws an Exception when the input would be overwritten.
std::vector<ElementFile> planElementFiles(const Output& output, const ChannelImage& image) {
    std::vector<ElementFile> files;
    for (const ElementInfo& element : selectElements(output, image)) {
        Path path = output.path;
        if (output.element == kAllElements) {
            const auto isTaken = [&files](const Path& candidate) {
                return std::ranges::find(files, candidate, &ElementFile::path) != files.end();
            };
            path = getElementPath(output.path, element, 1);
            for (int count = 2; isTaken(path); ++count) {
                path = getElementPath(output.path, element, count);
            }
        }
        if (isSameFile(path, output.input)) {
            throw Exception("Element \"" + image::getDisplayName(element.name) +
                            "\" cannot be saved to \"" + path.native() +
                            "\": it is the image that the element comes from.");
        }
        files.push_back({element, path});
    }
    return files;
}

void saveElement(const Output& output, const ChannelImage& image, const ElementFile& file,
                 const colorkit::ColorMapping& colorMapping, ProgressLine& progress) {
    const TaskProgress step = progress.start("Saving \"" + file.path.native() + "\"");
    const ElementPicture picture = renderElement(image, file.element, colorMapping);
    const image::RgbImageIterator<0> pixels(picture.bitmap,
                                            picture.alpha ? &*picture.alpha : nullptr);
    throwOnFailure(imageio::saveImage(file.path, pixels, picture.isData, output.format,
                                      output.settings, step));
}

}  // namespace

Output planOutput(const Options& options) {
    Output output{options.input, options.output, {}, {}, {}};
    output.element = options.element.value_or(image::getDisplayName(image::kBeautyElement));
    checkInputIsKept(options, options.output);
    if (isTxr(options.output)) {
        if (options.element && *options.element != kAllElements) {
            throw UsageError("A .txr output holds all elements; --element cannot choose one.");
        }
        if (!options.formatOptions.empty()) {
            throw UsageError("A .txr output has no format options.");
        }
        return output;
    }
    output.format = getFormat(options.output);
    for (const String& option : options.formatOptions) {
        const Result<void> set = setImageSaveOption(output.settings, *output.format, option);
        if (!set) {
            throw UsageError(set.error());
        }
    }
    return output;
}

void saveOutput(const Output& output, const ChannelImage& image,
                const colorkit::ColorMapping& colorMapping, ProgressLine& progress) {
    if (!output.format) {
        progress.start("Saving \"" + output.path.native() + "\"");
        throwOnFailure(image::ExrSaver().save(image, output.path));
        return;
    }
    for (const ElementFile& file : planElementFiles(output, image)) {
        saveElement(output, image, file, colorMapping, progress);
    }
}

void checkInputIsKept(const Options& options, const Path& file) {
    if (isSameFile(options.input, file)) {
        throw UsageError("The output \"" + file.native() +
                         "\" would overwrite the image that is opened.");
    }
}

bool isSupported(const ElementInfo& element) {
    return element.kind != image::ElementKind::Unsupported;
}

}  // namespace tavrin::cli
