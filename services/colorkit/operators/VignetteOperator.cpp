#include "services/colorkit/operators/VignetteOperator.h"

#include "services/colorkit/PixelBlock.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/VignetteOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void darkenCorners(const VignetteOperator::Numbers& numbers, PixelBlock& block) {
    const float dy = static_cast<float>(block.position.y) - numbers.centerY;
    const PixelColumns columns(block);
    forEachIndexedColor(block, [&](auto d, std::size_t i, auto& r, auto& g, auto& b) HWY_ATTR {
        const auto x = hn::Load(hn::RebindToSigned<decltype(d)>(), columns.x + i);
        const auto one = hn::Set(d, 1.0f);
        const auto dx = hn::Sub(hn::ConvertTo(d, x), hn::Set(d, numbers.centerX));
        const auto squaredDistance = hn::MulAdd(dx, dx, hn::Set(d, dy * dy));
        const auto root = hn::MulAdd(squaredDistance, hn::Set(d, numbers.steepness), one);
        const auto fallOff = hn::Div(one, hn::Mul(root, root));
        const auto factor = hn::MulAdd(hn::Set(d, numbers.strength), hn::Sub(fallOff, one), one);
        multiplyColor(d, factor, r, g, b);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavrin::colorkit {
namespace {

HWY_EXPORT(darkenCorners);

constexpr const ParameterDeclaration* kParameters[] = {&VignetteOperator::kStrength,
                                                       &VignetteOperator::kHalfFieldOfView};

VignetteOperator::Numbers makeNumbers(float strength, double halfFieldOfView, Pixel displaySize) {
    const double width = displaySize.x;
    const double height = displaySize.y;
    const double cornerDistance = std::max(std::hypot(width, height) / 2.0, 0.5);
    const double slope = std::tan(halfFieldOfView * std::numbers::pi / 180.0) / cornerDistance;
    return {strength, static_cast<float>((width - 1.0) / 2.0),
            static_cast<float>((height - 1.0) / 2.0), static_cast<float>(slope * slope)};
}

void appendStages(const OperatorValues& values, const MappingEnvironment& environment,
                  StageList& stages) {
    const float strength = values.get(VignetteOperator::kStrength);
    if (strength != 0.0f) {
        const auto numbers = makeNumbers(strength, values.get(VignetteOperator::kHalfFieldOfView),
                                         environment.displaySize);
        stages.add([numbers](PixelBlock& block) {
            HWY_DYNAMIC_DISPATCH(darkenCorners)(numbers, block);
        });
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor VignetteOperator::kDescriptor{
    .typeName = "Vignette",
    .displayName = "Vignette",
    .category = OperatorCategory::FinalLook,
    .description = "Makes the corners of the image darker, as a lens does, or brighter.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
