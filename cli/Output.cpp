#include "cli/Output.h"

#include "base/image/Exr.h"
#include "base/image/ImageIterators.h"
#include "base/image/ImageSettings.h"
#include "base/settings/PropertyHelp.h"
#include "cli/AperturePictures.h"
#include "foundation/Text.h"
#include "services/imageio/SaveImage.h"

#include <algorithm>
#include <functional>
#include <set>
#include <string>

namespace tavrin::cli {
namespace {

using image::ChannelImage;
using image::ElementInfo;
using pipeline::DisplayChain;

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

void throwOnFailure(const Result<void>& result) {
    if (!result) {
        throw Exception(result.error());
    }
}

std::vector<ElementInfo> selectElements(const Output& output, const DisplayChain& chain) {
    std::vector<ElementInfo> elements = chain.zoom.getElements();
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
    throw Exception("Image \"" + output.inputs.front().native() + "\" has no render element \"" +
                    output.element + "\" that can be saved; --list-elements shows those it has.");
}

/// The file of one of several elements: the beauty takes the given name. `count` above 1 tells
/// elements apart whose names become the same file name.
Path getElementPath(const Path& path, const ElementInfo& element, int count) {
    if (element.name == image::kBeautyElement) {
        return path;
    }
    const String start = path.stem() + "_";
    const String end =
        (count > 1 ? "_" + String::fromUtf8(std::to_string(count)) : "") + "." + path.extension();
    const std::size_t taken = (start + end).toUtf8().size();
    const std::size_t room = Str::kLongestFilename - std::min(taken, Str::kLongestFilename);
    const String name = Str::escapeFilename(image::getDisplayName(element.name), room);
    return path.withFileName(start + name + end);
}

struct ElementFile {
    ElementInfo element;
    Path path;
};

/// What is written where. Throws an Exception when the input would be overwritten.
std::vector<ElementFile> planElementFiles(const Output& output, const DisplayChain& chain) {
    std::vector<ElementFile> files;
    std::set<std::filesystem::path> taken;
    for (const ElementInfo& element : selectElements(output, chain)) {
        Path path = output.path;
        if (output.element == kAllElements) {
            path = getElementPath(output.path, element, 1);
            for (int count = 2; !taken.insert(path.std()).second; ++count) {
                path = getElementPath(output.path, element, count);
            }
        }
        if (isOneOf(path, output.inputs)) {
            throw Exception("Element \"" + image::getDisplayName(element.name) +
                            "\" cannot be saved to \"" + path.native() +
                            "\": it is an image that the element comes from.");
        }
        files.push_back({element, path});
    }
    return files;
}

/// Auxiliary elements are data, also those that the colour map does not leave alone, but for the
/// denoised variants, which are images.
bool isData(const ElementInfo& element) {
    return element.has(image::kNoColorMapping) ||
           (element.has(image::kAuxiliaryElement) && !image::isDenoisedElementName(element.name));
}

BitmapImpl<Rgb> render(const ElementInfo& element, DisplayChain& chain) {
    const Pixel size = chain.zoom.getDataWindow().size();
    const bool mustNotBeMapped = isData(element) && !element.has(image::kNoColorMapping);
    pipeline::IOperator& source =
        mustNotBeMapped ? static_cast<pipeline::IOperator&>(chain.includeAlpha) : chain.zoom;
    auto picture = source.provideRgbRegion(element.name, {0, 0, size.x, size.y}, 1.0f,
                                           pipeline::IOperator::Control::Wait);
    if (!picture) {
        throw Exception("Unable to retrieve output image data of the \"" + element.name +
                        "\" render element.");
    }
    return *std::move(picture);
}

BitmapImpl<float> getAlpha(const BitmapImpl<Rgb>& picture) {
    BitmapImpl<float> alpha(picture.getWidth(), picture.getHeight());
    std::ranges::transform(picture.pixels(), alpha.pixels().begin(), &Rgb::a);
    return alpha;
}

bool hasAlpha(const DisplayChain& chain) {
    const auto elements = chain.load.getElements();
    return std::ranges::find(elements, image::kAlphaElement, &ElementInfo::name) != elements.end();
}

void saveElement(const Output& output, const ElementFile& file, DisplayChain& chain,
                 ProgressLine& progress) {
    const TaskProgress step = progress.start("Saving \"" + file.path.native() + "\"");
    const BitmapImpl<Rgb> picture = render(file.element, chain);
    Optional<BitmapImpl<float>> alpha;
    if (!isData(file.element) && hasAlpha(chain)) {
        alpha = getAlpha(picture);
    }
    const image::RgbImageIterator<0> pixels(picture, alpha ? &*alpha : nullptr);
    throwOnFailure(imageio::saveImage(file.path, pixels, isData(file.element), output.format,
                                      output.settings, step));
}

/// Puts the denoised variants of all elements into the image.
void addDenoisedVariants(DisplayChain& chain, ChannelImage& image) {
    const Pixel size = image.getDataWindow().size();
    for (ElementInfo element : chain.denoise.getElements()) {
        const auto pixels =
            chain.denoise.provideRgbRegion(element.name, {0, 0, size.x, size.y}, 1.0f);
        if (!pixels) {
            continue;  // only selected
        }
        element.name = image::getDenoisedElementName(element.name);
        image.addElement(element);
        image.fitChannelsToDataWindow();
        if (element.kind == image::ElementKind::Rgba) {
            image.setRgbWithAlpha(element, *pixels);
        } else {
            image.setRgb(element, *pixels);
        }
    }
}

/// The image as it was loaded, with denoised variants and the settings as they are.
ChannelImage makeTxr(DisplayChain& chain, const settings::Settings& settings,
                     const colorkit::ColorMapping& colorMapping) {
    const SharedPtr<const ChannelImage> loaded = chain.load.getImage();
    const ChannelImage& image = *loaded;
    ChannelImage copy;
    for (const auto& [name, attribute] : image.getAttributes()) {
        copy.setAttribute(attribute->clone());
    }
    for (const auto& [name, channel] : image.getChannels()) {
        copy.setChannel(channel->clone());
    }
    addDenoisedVariants(chain, copy);
    image::writeSettings(copy, settings::allPropertyIds(), settings, colorMapping);
    return copy;
}

}  // namespace

Output planOutput(const Options& options) {
    Output output{options.inputs, options.output, {}, {}, {}};
    output.element = options.element.value_or(image::getDisplayName(image::kBeautyElement));
    checkInputsAreKept(options, options.output);
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

void saveOutput(const Output& output, DisplayChain& chain, const settings::Settings& settings,
                const colorkit::ColorMapping& colorMapping, ProgressLine& progress) {
    if (!output.format) {
        progress.start("Saving \"" + output.path.native() + "\"");
        throwOnFailure(image::ExrSaver().save(makeTxr(chain, settings, colorMapping), output.path));
        return;
    }
    for (const ElementFile& file : planElementFiles(output, chain)) {
        saveElement(output, file, chain, progress);
    }
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
