#include "services/colorkit/ColorTransformStage.h"

#include <algorithm>
#include <utility>

namespace tavrin::colorkit {
namespace {

/// Written so that an opacity of 1 gives exactly the second value.
void blend(const float* transformed, std::size_t count, float opacity, float* plane) {
    for (std::size_t i = 0; i < count; ++i) {
        plane[i] = (1.0f - opacity) * plane[i] + opacity * transformed[i];
    }
}

}  // namespace

ColorTransformStage::ColorTransformStage(SharedPtr<const IColorTransform> transform,
                                         std::vector<std::unique_ptr<const IMappingStage>> input,
                                         float opacity)
    : transform_(std::move(transform)), input_(std::move(input)), opacity_(opacity) {}

void ColorTransformStage::apply(PixelBlock& block) const {
    PixelBlock transformed = block;
    for (const auto& stage : input_) {
        stage->apply(transformed);
    }
    Rgb pixels[PixelBlock::kCapacity];
    storeBlock(transformed, {pixels, block.count});
    transform_->apply(&pixels[0].r, block.count);
    loadBlock({pixels, block.count}, transformed);
    blend(transformed.r, block.count, opacity_, block.r);
    blend(transformed.g, block.count, opacity_, block.g);
    blend(transformed.b, block.count, opacity_, block.b);
}

}  // namespace tavrin::colorkit
