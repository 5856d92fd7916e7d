#include "base/pipeline/BlendBloomGlareOperator.h"

#include "base/image/RowLoop.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavrin::pipeline {
namespace {

constexpr int kSourceInput = 0;
constexpr int kLayerInput = 1;

/// Light of the largest floats stays that.
float add(float light, float more) {
    const float sum = light + more;
    return std::isinf(sum) && std::isfinite(light) ? std::numeric_limits<float>::max() : sum;
}

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
            to[x] = {add(to[x].r, from[x].r), add(to[x].g, from[x].g), add(to[x].b, from[x].b),
                     to[x].a};
        }
    });
    return base;
}

}  // namespace tavrin::pipeline
