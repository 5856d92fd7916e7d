#include "services/colorkit/operators/PbrNeutralOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/PbrNeutralOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

constexpr float kStart = 0.76f;
constexpr float kRange = 0.24f;  // up to 1
constexpr float kDesaturation = 0.15f;

void mapNeutral(PixelBlock& block) {
    forEachColor(block, [](auto d, auto& r, auto& g, auto& b) HWY_ATTR {
        const auto zero = hn::Zero(d);
        const auto one = hn::Set(d, 1.0f);
        r = hn::Max(r, zero);
        g = hn::Max(g, zero);
        b = hn::Max(b, zero);
        // m - f = (m - t) + t²/0.16 with t = min(m, 0.08) loses nothing near black.
        const auto smallest = hn::Min(r, hn::Min(g, b));
        const auto toe = hn::Min(smallest, hn::Set(d, 0.08f));
        const auto floor = hn::MulAdd(hn::Mul(toe, toe), hn::Set(d, 6.25f), hn::Sub(smallest, toe));
        r = hn::Add(hn::Sub(r, smallest), floor);
        g = hn::Add(hn::Sub(g, smallest), floor);
        b = hn::Add(hn::Sub(b, smallest), floor);

        const auto start = hn::Set(d, kStart);
        const auto peak = hn::Max(hn::Max(r, hn::Max(g, b)), start);
        const auto newPeak = hn::Sub(
            one, hn::Div(hn::Set(d, kRange * kRange), hn::Sub(peak, hn::Set(d, kStart - kRange))));
        const auto share =
            hn::Div(one, hn::MulAdd(hn::Set(d, kDesaturation), hn::Sub(peak, newPeak), one));
        const auto factor = hn::Mul(hn::Div(newPeak, peak), share);
        const auto white = hn::Mul(newPeak, hn::Sub(one, share));
        const auto isBright = hn::Gt(peak, start);
        r = hn::IfThenElse(isBright, hn::MulAdd(r, factor, white), r);
        g = hn::IfThenElse(isBright, hn::MulAdd(g, factor, white), g);
        b = hn::IfThenElse(isBright, hn::MulAdd(b, factor, white), b);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {
namespace {

HWY_EXPORT(mapNeutral);

void appendStages(const OperatorValues&, const MappingEnvironment&, StageList& stages) {
    stages.add([](PixelBlock& block) { HWY_DYNAMIC_DISPATCH(mapNeutral)(block); });
}

}  // namespace

constinit const ColorMappingOperatorDescriptor PbrNeutralOperator::kDescriptor{
    .typeName = "PbrNeutral",
    .displayName = "PBR Neutral",
    .category = OperatorCategory::HighlightControl,
    .description = "Keeps the colours of materials true and compresses only the highlights.",
    .isEnabledByDefault = true,
    .parameters = {},
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
