#include "services/colorkit/operators/SoftKneeOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/SoftKneeOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

/// 1 - e^-x for x that is not negative.
template <class D, class V>
HWY_INLINE V computeSaturation(D d, V x) {
    constexpr float kLog2E = 1.44269504f;
    return hn::Neg(computeExp2Minus1(d, hn::Mul(x, hn::Set(d, -kLog2E))));
}

void bendHighlights(float threshold, float range, PixelBlock& block) {
    const float inverseRange = 1.0f / range;
    forEachComponent(block, [=](auto d, auto value) HWY_ATTR {
        const auto excess = hn::Sub(value, hn::Set(d, threshold));
        const auto bent = hn::MulAdd(
            hn::Set(d, range), computeSaturation(d, hn::Mul(excess, hn::Set(d, inverseRange))),
            hn::Set(d, threshold));
        return hn::IfThenElse(hn::Gt(excess, hn::Zero(d)), bent, value);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

#include <algorithm>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&SoftKneeOperator::kThreshold,
                                                       &SoftKneeOperator::kLimit};

HWY_EXPORT(bendHighlights);

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    constexpr float kSmallestRange = 1e-6f;
    const float threshold = values.get(SoftKneeOperator::kThreshold);
    const float range = std::max(values.get(SoftKneeOperator::kLimit) - threshold, kSmallestRange);
    stages.add([threshold, range](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(bendHighlights)(threshold, range, block);
    });
}

}  // namespace

constinit const ColorMappingOperatorDescriptor SoftKneeOperator::kDescriptor{
    .typeName = "SoftKnee",
    .displayName = "Soft knee",
    .category = OperatorCategory::HighlightControl,
    .description =
        "Keeps shadows and midtones as they are and rolls bright highlights off to a limit.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
