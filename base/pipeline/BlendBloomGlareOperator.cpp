#include "base/pipeline/BlendBloomGlareOperator.h"

#include "base/image/RowLoop.h"

#include <algorithm>

namespace tavrin::pipeline {
namespace {

constexpr int kSourceInput = 0;
constexpr int kLayerInput = 1;

}  // namespace

std::vector<image::ElementInfo> BlendBloomGlareOperator::getElements() const {
    std::vector<image::ElementInfo> elements = input(kSourceInput).getElements();
    const std::vector<image::ElementInfo> layers = input(kLayerInput).getElements();
    const auto layer =
        std::ranges::find(layers, image::kBloomGlareInteractive, &image::ElementInfo::name);
    if (layer != layers.end()) {
        elements.push_back(*layer);
    }
    return elements;
}

Optional<BitmapImpl<Rgb>> BlendBloomGlareOperator::computeRgbRegion(const Request& request) {
    auto layer = requestRgb(request, kLayerInput);
    if (request.element == image::kBloomGlareInteractive) {
        return layer;
    }
    auto base = requestRgb(request, kSourceInput);
    // An image that has been replaced between the two requests may give another size.
    if (!base || !layer || base->getSize() != layer->getSize()) {
        return base;
    }
    image::forEachRow(base->getSize(), [&](int y) {
        const std::span<const Rgb> from = layer->row(y);
        const std::span<Rgb> to = base->row(y);
        for (std::size_t x = 0; x < to.size(); ++x) {
            to[x] = {to[x].r + from[x].r, to[x].g + from[x].g, to[x].b + from[x].b, to[x].a};
        }
    });
    return base;
}

}  // namespace tavrin::pipeline
