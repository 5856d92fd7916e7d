#include "base/pipeline/BlendDenoisedOperator.h"

#include "base/image/RowLoop.h"
#include "services/postcore/PropertyIds.h"

#include <algorithm>
#include <cmath>

namespace tavrin::pipeline {
namespace {

constexpr int kSourceInput = 0;
constexpr int kDenoisedInput = 1;

/// Pixels that could not be denoised stay as they are, and so does alpha. Nothing can be blended
/// with infinity: any amount replaces it.
void blend(const Rgb& denoised, float amount, Rgb& pixel) {
    if (!isFinite(denoised) || amount == 0.0f) {
        return;
    }
    if (!isFinite(pixel)) {
        pixel = {denoised.r, denoised.g, denoised.b, pixel.a};
    } else {
        pixel.r = (denoised.r - pixel.r) * amount + pixel.r;
        pixel.g = (denoised.g - pixel.g) * amount + pixel.g;
        pixel.b = (denoised.b - pixel.b) * amount + pixel.b;
    }
}

}  // namespace

std::vector<image::ElementInfo> BlendDenoisedOperator::getElements() const {
    std::vector<image::ElementInfo> elements = input(kSourceInput).getElements();
    for (const image::ElementInfo& denoised : input(kDenoisedInput).getElements()) {
        const auto element = std::ranges::find(elements, denoised.name, &image::ElementInfo::name);
        if (denoised.has(image::kHasDenoisedVariant) && element != elements.end()) {
            element->flags |= image::kHasDenoisedVariant;
        }
    }
    return elements;
}

Optional<BitmapImpl<Rgb>> BlendDenoisedOperator::computeRgbRegion(const Request& request) {
    auto source = requestRgb(request, kSourceInput);
    if (!source || !settings().get(postcore::kDenoiseBlendingId).get<bool>()) {
        return source;
    }
    const auto denoised = requestRgb(request, kDenoisedInput);
    // An image that has been replaced between the two requests may give another size.
    if (!denoised || denoised->getSize() != source->getSize()) {
        return source;
    }
    const float amount = settings().get(postcore::kDenoiseAmountId).get<float>();
    image::forEachRow(source->getSize(), [&](int y) {
        const std::span<const Rgb> from = denoised->row(y);
        const std::span<Rgb> to = source->row(y);
        for (std::size_t x = 0; x < to.size(); ++x) {
            blend(from[x], amount, to[x]);
        }
    });
    return source;
}

}  // namespace tavrin::pipeline
