#include "cli/Output.h"

#include "base/image/Exr.h"
#include "base/image/ImageIterators.h"
#include "cli/ElementPicture.h"
#include "foundation/StringArray.h"
#include "services/imageio/SaveImage.h"

#include <algorithm>
#include <functional>

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
    std::string extension = path.extension().toUtf8();
    std::ranges::transform(extension, extension.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? char(letter - 'A' + 'a') : letter;
    });
    return String::fromUtf8(extension) == kTxrExtension;
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
        if (element.name == name && isSavable(element)) {
            return {element};
        }
    }
    throw Exception("Image \"" + output.input.native() + "\" has no render element \"" +
                    output.element + "\" that can be saved; --list-elements shows those it has.");
}

/// The file of one of several elements: the beauty takes the given name.
Path getElementPath(const Path& path, const ElementInfo& element) {
    if (element.name == image::kBeautyElement) {
        return path;
    }
    return path.withFileName(path.stem() + "_" +
                             Str::escapeFilename(image::getDisplayName(element.name)) + "." +
                             path.extension());
}

struct ElementFile {
    ElementInfo element;
    Path path;
};

/// What is written where. Throws an Exception when two elements would share a file or one would
/// overwrite the input.
std::vector<ElementFile> planElementFiles(const Output& output, const ChannelImage& image) {
    std::vector<ElementFile> files;
    for (const ElementInfo& element : selectElements(output, image)) {
        const Path path =
            output.element == kAllElements ? getElementPath(output.path, element) : output.path;
        const auto refuse = [&](const String& reason) {
            throw Exception("Element \"" + image::getDisplayName(element.name) +
                            "\" cannot be saved to \"" + path.native() + "\": " + reason);
        };
        if (isSameFile(path, output.input)) {
            refuse("it is the image that the element comes from.");
        }
        if (std::ranges::find(files, path, &ElementFile::path) != files.end()) {
            refuse("another element has the same file name.");
        }
        files.push_back({element, path});
    }
    return files;
}

void saveElement(const Output& output, const ChannelImage& image, const ElementFile& file,
                 ProgressLine& progress) {
    const TaskProgress step = progress.start("Saving \"" + file.path.native() + "\"");
    const ElementPicture picture = renderElement(image, file.element, output.toneMapping);
    const image::RgbImageIterator<0> pixels(picture.bitmap,
                                            picture.alpha ? &*picture.alpha : nullptr);
    throwOnFailure(imageio::saveImage(file.path, pixels, picture.isData, output.format,
                                      output.settings, step));
}

}  // namespace

Output planOutput(const Options& options) {
    Output output{options.input, options.output, {}, {}, {}, options.toneMapping};
    output.element = options.element.value_or(image::getDisplayName(image::kBeautyElement));
    if (isSameFile(options.input, options.output)) {
        throw UsageError("The output \"" + options.output.native() +
                         "\" would overwrite the image that is opened.");
    }
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

void saveOutput(const Output& output, const ChannelImage& image, ProgressLine& progress) {
    if (!output.format) {
        progress.start("Saving \"" + output.path.native() + "\"");
        throwOnFailure(image::ExrSaver().save(image, output.path));
        return;
    }
    for (const ElementFile& file : planElementFiles(output, image)) {
        saveElement(output, image, file, progress);
    }
}

bool isSavable(const ElementInfo& element) {
    return element.kind != image::ElementKind::Unsupported;
}

}  // namespace tavrin::cli
