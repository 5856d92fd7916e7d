#include "services/colorkit/operators/LiftGammaGainOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/LiftGammaGainOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/PixelLoop-inl.h"
#include "services/colorkit/simd/ScaledPower-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void scaleAndShift(const CompressedRgb& slope, const CompressedRgb& offset, PixelBlock& block) {
    forEachColor(block, [&](auto d, auto& r, auto& g, auto& b) HWY_ATTR {
        r = clampToFinite(d, hn::MulAdd(r, hn::Set(d, slope.r), hn::Set(d, offset.r)));
        g = clampToFinite(d, hn::MulAdd(g, hn::Set(d, slope.g), hn::Set(d, offset.g)));
        b = clampToFinite(d, hn::MulAdd(b, hn::Set(d, slope.b), hn::Set(d, offset.b)));
    });
}

template <class D, class V>
HWY_INLINE V raisePositive(D d, const ScaledPower& power, V value) {
    return hn::IfThenElse(hn::Gt(value, hn::Zero(d)), computePower(d, power, value), value);
}

void raiseChannels(const LiftGammaGainOperator::Powers& powers, PixelBlock& block) {
    forEachColor(block, [&](auto d, auto& r, auto& g, auto& b) HWY_ATTR {
        r = raisePositive(d, powers.r, r);
        g = raisePositive(d, powers.g, g);
        b = raisePositive(d, powers.b, b);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/Clamping.h"
#include "services/colorkit/Luminance.h"
#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {
    &LiftGammaGainOperator::kSlope, &LiftGammaGainOperator::kOffset, &LiftGammaGainOperator::kPower,
    &LiftGammaGainOperator::kSaturation, &LiftGammaGainOperator::kClamp};

HWY_EXPORT(scaleAndShift);
HWY_EXPORT(raiseChannels);

constexpr CompressedRgb kOnes{1.0f, 1.0f, 1.0f};

void appendScaling(const CompressedRgb& slope, const CompressedRgb& offset, StageList& stages) {
    if (offset != CompressedRgb{}) {
        stages.add([slope, offset](PixelBlock& block) {
            HWY_DYNAMIC_DISPATCH(scaleAndShift)(slope, offset, block);
        });
    } else if (slope != kOnes) {
        stages.addMatrix(Matrix3::diagonal({slope.r, slope.g, slope.b}));
    }
}

void appendPower(const CompressedRgb& power, StageList& stages) {
    if (power != kOnes) {
        const LiftGammaGainOperator::Powers powers{{1.0, power.r}, {1.0, power.g}, {1.0, power.b}};
        stages.add([powers](PixelBlock& block) {
            HWY_DYNAMIC_DISPATCH(raiseChannels)(powers, block);
        });
    }
}

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const bool clamps = values.get(LiftGammaGainOperator::kClamp);
    const float saturation = values.get(LiftGammaGainOperator::kSaturation);
    appendScaling(values.get(LiftGammaGainOperator::kSlope),
                  values.get(LiftGammaGainOperator::kOffset), stages);
    if (clamps) {
        appendClamping(0.0f, 1.0f, stages);
    }
    appendPower(values.get(LiftGammaGainOperator::kPower), stages);
    if (saturation != 1.0f) {
        stages.addMatrix(saturationMatrix(saturation));
        if (clamps) {
            appendClamping(0.0f, 1.0f, stages);
        }
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor LiftGammaGainOperator::kDescriptor{
    .typeName = "LiftGammaGain",
    .displayName = "Lift, gamma, gain",
    .category = OperatorCategory::CurveControl,
    .description =
        "Grades shadows, midtones and highlights with the numbers of an ASC colour decision list.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
