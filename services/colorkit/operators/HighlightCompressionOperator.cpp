#include "services/colorkit/operators/HighlightCompressionOperator.h"

#include <limits>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/HighlightCompressionOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

/// The factor on a colour that measures `value`: (1 - amount) + amount (1 + v/w²) / (1 + v), where
/// negative values measure 0.
template <class D, class V>
HWY_INLINE V compressionFactor(D d, V value, float amount, float inverseSquaredWhite) {
    const V one = hn::Set(d, 1.0f);
    const V measured = hn::Clamp(value, hn::Zero(d), hn::Set(d, std::numeric_limits<float>::max()));
    const V ratio =
        hn::Div(hn::MulAdd(measured, hn::Set(d, inverseSquaredWhite), one), hn::Add(measured, one));
    return hn::MulAdd(hn::Set(d, amount), ratio, hn::Set(d, 1.0f - amount));
}

void compressLuminance(float amount, float inverseSquaredWhite, PixelBlock& block) {
    forEachColor(block, [=](auto d, auto& r, auto& g, auto& b) HWY_ATTR {
        const auto factor =
            compressionFactor(d, computeLuminance(d, r, g, b), amount, inverseSquaredWhite);
        r = hn::Mul(r, factor);
        g = hn::Mul(g, factor);
        b = hn::Mul(b, factor);
    });
}

void compressChannels(float amount, float inverseSquaredWhite, PixelBlock& block) {
    forEachComponent(block, [=](auto d, auto value) HWY_ATTR {
        return hn::Mul(value, compressionFactor(d, value, amount, inverseSquaredWhite));
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {
namespace {

HWY_EXPORT(compressLuminance);
HWY_EXPORT(compressChannels);

constexpr const ParameterDeclaration* kParameters[] = {&HighlightCompressionOperator::kAmount,
                                                       &HighlightCompressionOperator::kWhite,
                                                       &HighlightCompressionOperator::kMeasure};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const float amount = values.get(HighlightCompressionOperator::kAmount);
    const float white = values.get(HighlightCompressionOperator::kWhite);
    // At white 1 the curve is a straight line.
    if (amount != 0.0f && white != 1.0f) {
        const auto measure = values.get(HighlightCompressionOperator::kMeasure);
        stages.add([amount, inverse = 1.0f / (white * white), measure](PixelBlock& block) {
            if (measure == HighlightMeasure::Luminance) {
                HWY_DYNAMIC_DISPATCH(compressLuminance)(amount, inverse, block);
            } else {
                HWY_DYNAMIC_DISPATCH(compressChannels)(amount, inverse, block);
            }
        });
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor HighlightCompressionOperator::kDescriptor{
    .typeName = "HighlightCompression",
    .displayName = "Highlight compression",
    .category = OperatorCategory::HighlightControl,
    .description = "Brings highlights that are brighter than white back into the visible range.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
