#include "services/colorkit/operators/AgXOperator.h"

#include <limits>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/AgXOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

/// x^(-1/3) for x from 1 to 5.13, with a relative error below 2e-7: a polynomial (interpolation at
/// Chebyshev's points, error below 0.4 %), then two steps of Newton's method.
template <class D, class V>
HWY_INLINE V computeInverseCubeRoot(D d, V x) {
    V root =
        evaluatePolynomial(d, x, 1.416652f, -0.5771686f, 0.18538887f, -0.03018583f, 0.0019077229f);
    const V third = hn::Mul(x, hn::Set(d, 1.0f / 3.0f));
    for (int i = 0; i < 2; ++i) {
        const V square = hn::Mul(root, root);
        root = hn::Mul(root, hn::NegMulAdd(hn::Mul(square, root), third, hn::Set(d, 4.0f / 3.0f)));
    }
    return root;
}

/// From the stops of a linear value, as a share of their range, to a display-encoded value by a
/// curve through (10 / 16.5, 0.18^(1/2.4)) whose slope there is 2.4 and whose ends lie on (0, 0)
/// and (1, 1), and by the power of 2.4 back to a linear one.
template <class D, class V>
HWY_INLINE V applyAgXCurve(D d, const AgXOperator::Curve& curve, V value) {
    const V zero = hn::Zero(d);
    const V one = hn::Set(d, 1.0f);
    V t = hn::MulAdd(computeLog2(d, value), hn::Set(d, curve.stopScale),
                     hn::Set(d, curve.stopOffset));
    t = hn::Clamp(t, zero, one);
    const V distance = hn::Mul(hn::Set(d, curve.slope), hn::Sub(t, hn::Set(d, curve.pivotX)));
    const V inverseRange = hn::IfThenElse(hn::Lt(distance, zero), hn::Set(d, curve.inverseToe),
                                          hn::Set(d, curve.inverseShoulder));
    const V u = hn::Abs(hn::Mul(distance, inverseRange));
    // (1 + u^1.5)^(-1/1.5)
    const V root = computeInverseCubeRoot(d, hn::MulAdd(u, hn::Sqrt(u), one));
    const V damping = hn::Mul(root, root);
    const V encoded = hn::MulAdd(distance, damping, hn::Set(d, curve.pivotY));
    const V decoded = computeExp2(d, hn::Mul(computeLog2(d, encoded), hn::Set(d, curve.decoding)));
    return hn::IfThenElseZero(hn::Gt(t, zero), decoded);
}

/// Moves a component to where it lay between the smallest and the largest before, by a share.
template <class D, class V>
HWY_INLINE V restorePosition(D d, V before, V smallestBefore, V inverseRangeBefore, V after,
                             V smallest, V range) {
    const V position = hn::Mul(hn::Sub(before, smallestBefore), inverseRangeBefore);
    const V target = hn::MulAdd(range, position, smallest);
    return hn::MulAdd(hn::Set(d, AgXOperator::kHueRestoration), hn::Sub(target, after), after);
}

void formPicture(const AgXOperator::Curve& curve, PixelBlock& block) {
    forEachColor(block, [&](auto d, auto& r, auto& g, auto& b) HWY_ATTR {
        const auto map = [&](auto value) HWY_ATTR { return applyAgXCurve(d, curve, value); };
        const auto zero = hn::Zero(d);
        r = hn::Max(r, zero);
        g = hn::Max(g, zero);
        b = hn::Max(b, zero);
        const auto newR = map(r);
        const auto newG = map(g);
        const auto newB = map(b);
        // The curve rises, so that components keep their order and hues their sextant of the
        // hexagon (HSV), where the hue is the position of the component in the middle.
        const auto smallestBefore = hn::Min(r, hn::Min(g, b));
        const auto rangeBefore = hn::Sub(hn::Max(r, hn::Max(g, b)), smallestBefore);
        const auto inverseRangeBefore = hn::Div(
            hn::Set(d, 1.0f), hn::Max(rangeBefore, hn::Set(d, std::numeric_limits<float>::min())));
        const auto smallest = hn::Min(newR, hn::Min(newG, newB));
        const auto range = hn::Sub(hn::Max(newR, hn::Max(newG, newB)), smallest);
        const auto restore = [&](auto before, auto after) HWY_ATTR {
            return restorePosition(d, before, smallestBefore, inverseRangeBefore, after, smallest,
                                   range);
        };
        r = restore(r, newR);
        g = restore(g, newG);
        b = restore(b, newB);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/ChromaticAdaptation.h"
#include "services/colorkit/Clamping.h"
#include "services/colorkit/Luminance.h"
#include "services/colorkit/OperatorValues.h"
#include "services/colorkit/PowerStage.h"

#include <cmath>
#include <memory>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&AgXOperator::kLook};

HWY_EXPORT(formPicture);

constexpr double kStopsBelowGrey = 10.0;
constexpr double kStops = 16.5;
constexpr double kDisplayPower = 2.4;

// Both draw the primaries of Rec. 2020 towards white; the second is undone after the curve.
constexpr Matrix3 kInset{{{{0.856627153315983, 0.0951212405381588, 0.0482516061458583},
                           {0.137318972929847, 0.761241990602591, 0.101439036467562},
                           {0.11189821299995, 0.0767994186031903, 0.811302368396859}}}};
constexpr Matrix3 kOutset{{{{0.899796955911611, 0.0871996192028351, 0.013003424885555},
                            {0.11142098895748, 0.875575586156966, 0.0130034248855548},
                            {0.11142098895748, 0.0871996192028349, 0.801379391839686}}}};

/// s = ((slope X)^-p ((slope X / Y)^p - 1))^(-1/p) with p = 1.5, where X and Y lead from the pivot
/// to an end of the curve.
double rangeOfCurve(double slope, double x, double y) {
    constexpr double kPower = 1.5;
    return slope * x / std::pow(std::pow(slope * x / y, kPower) - 1.0, 1.0 / kPower);
}

AgXOperator::Curve makeCurve() {
    constexpr double kSlope = 2.4;
    constexpr double kPivotX = kStopsBelowGrey / kStops;
    const double pivotY = std::pow(kMiddleGrey, 1.0 / kDisplayPower);
    return {static_cast<float>(1.0 / kStops),
            static_cast<float>(kPivotX - std::log2(kMiddleGrey) / kStops),
            static_cast<float>(kPivotX),
            static_cast<float>(pivotY),
            static_cast<float>(kSlope),
            static_cast<float>(1.0 / rangeOfCurve(kSlope, kPivotX, pivotY)),
            static_cast<float>(1.0 / rangeOfCurve(kSlope, 1.0 - kPivotX, 1.0 - pivotY)),
            static_cast<float>(kDisplayPower)};
}

void appendPunchyLook(StageList& stages) {
    constexpr double kPower = 1.35;
    constexpr double kSaturation = 1.4;
    stages.add(std::make_unique<PowerStage>(1.0, kPower / kDisplayPower));
    stages.addMatrix(saturationMatrix(kSaturation));
    stages.add(std::make_unique<PowerStage>(1.0, kDisplayPower));
}

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const Matrix3 toRec2020 = rec709ToRec2020();
    stages.addMatrix(kInset * toRec2020);
    stages.add([curve = makeCurve()](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(formPicture)(curve, block);
    });
    stages.addMatrix(inverse(toRec2020) * inverse(kOutset));
    if (values.get(AgXOperator::kLook) == AgXLook::Punchy) {
        appendPunchyLook(stages);
    }
    appendClamping(0.0f, 1.0f, stages);
}

}  // namespace

constinit const ColorMappingOperatorDescriptor AgXOperator::kDescriptor{
    .typeName = "AgX",
    .displayName = "AgX",
    .category = OperatorCategory::HighlightControl,
    .description =
        "Brings a very wide range of brightness to the display; bright colours fade to white "
        "softly.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
