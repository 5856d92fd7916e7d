#include "cli/ElementPicture.h"

#include <algorithm>

namespace tavrin::cli {
namespace {

using colorkit::ColorMapping;
using image::ChannelImage;
using image::ElementInfo;
using image::ElementKind;

/// Auxiliary elements are data but for the denoised variants, which are images.
bool isData(const ElementInfo& element) {
    return element.has(image::kNoColorMapping) ||
           (element.has(image::kAuxiliaryElement) && !image::isDenoisedElementName(element.name));
}

BitmapImpl<Rgb> readColors(const ChannelImage& image, const ElementInfo& element,
                           const Bucket& region) {
    if (element.kind != ElementKind::Mono) {
        return image.getRgbRegion(element.name, region, 1.0f);
    }
    const BitmapImpl<float> values = image.getMonoRegion(element.name, region, 1.0f);
    BitmapImpl<Rgb> colors(values.getWidth(), values.getHeight());
    std::ranges::transform(values.pixels(), colors.pixels().begin(), [](float value) {
        return Rgb{value, value, value, 1.0f};
    });
    return colors;
}

void mapColors(const ChannelImage& image, const ColorMapping& mapping, BitmapImpl<Rgb>& colors) {
    const Bucket& display = image.getDisplayWindow();
    const Bucket& data = image.getDataWindow();
    mapping.createMappingOperator(mapping.getContext(), display.size())
        ->mapBitmap(colors, {data.x0 - display.x0, data.y0 - display.y0}, 1.0f);
}

}  // namespace

ElementPicture renderElement(const ChannelImage& image, const ElementInfo& element,
                             const ColorMapping& colorMapping) {
    const Pixel size = image.getDataWindow().size();
    const Bucket whole = {0, 0, size.x, size.y};
    ElementPicture picture{readColors(image, element, whole), {}, isData(element)};
    if (picture.isData) {
        return picture;
    }
    mapColors(image, colorMapping, picture.bitmap);
    if (image.hasChannel<float>(image::kAlphaElement)) {
        picture.alpha = image.getMonoRegion(image::kAlphaElement, whole, 1.0f);
    }
    return picture;
}

}  // namespace tavrin::cli
