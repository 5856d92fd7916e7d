#include "services/colorkit/operators/CurvesOperator.h"

#include "services/colorkit/Luminance.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/CurvesOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/PixelLoop-inl.h"
#include "services/colorkit/simd/ScaledPower-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

constexpr float kLog2Grey = -2.4739312f;  // log2(0.18)

/// The curve between its first and its last point.
template <class D, class V>
HWY_INLINE V applyCubics(D d, const CurvesOperator::Numbers& curve, V stops) {
    V start = hn::Set(d, curve.starts[0]);
    V coefficients[4];
    for (int k = 0; k < 4; ++k) {
        coefficients[k] = hn::Set(d, curve.coefficients[k][0]);
    }
    // Curves have few segments, so that blends are faster than look-ups.
    for (int i = 1; i < curve.segmentCount; ++i) {
        const V next = hn::Set(d, curve.starts[i]);
        const auto isBehind = hn::Ge(stops, next);
        start = hn::IfThenElse(isBehind, next, start);
        for (int k = 0; k < 4; ++k) {
            coefficients[k] =
                hn::IfThenElse(isBehind, hn::Set(d, curve.coefficients[k][i]), coefficients[k]);
        }
    }
    const V u = hn::Sub(stops, start);
    V result = hn::MulAdd(coefficients[3], u, coefficients[2]);
    result = hn::MulAdd(result, u, coefficients[1]);
    result = hn::MulAdd(result, u, coefficients[0]);
    return computeExp2(d, hn::Add(result, hn::Set(d, kLog2Grey)));
}

template <class D, class V>
HWY_INLINE V applyToneCurve(D d, const CurvesOperator::Numbers& curve, V value) {
    const V x = hn::Max(value, hn::Set(d, curve.smallest));
    const V stops = hn::Sub(computeLog2(d, x), hn::Set(d, kLog2Grey));
    const auto isBelow = hn::Lt(stops, hn::Set(d, curve.starts[0]));
    const auto isAbove = hn::Ge(stops, hn::Set(d, curve.starts[curve.segmentCount]));
    V result = applyCubics(d, curve, stops);
    // Straight lines over logarithms are powers.
    if (!hn::AllFalse(d, isBelow)) {
        result = hn::IfThenElse(isBelow, computePower(d, curve.below, x), result);
    }
    if (!hn::AllFalse(d, isAbove)) {
        result = hn::IfThenElse(isAbove, computePower(d, curve.above, x), result);
    }
    return result;
}

void applyToneCurveTo(float* plane, const CurvesOperator::Numbers& curve, std::size_t count) {
    const hn::ScalableTag<float> d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
        hn::Store(applyToneCurve(d, curve, hn::Load(d, plane + i)), d, plane + i);
    }
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"
#include "services/colorkit/ToneCurve.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavrin::colorkit {
namespace {

HWY_EXPORT(applyToneCurveTo);

constexpr const ParameterDeclaration* kParameters[] = {
    &CurvesOperator::kMaster, &CurvesOperator::kRed, &CurvesOperator::kGreen,
    &CurvesOperator::kBlue};

/// The line through a point: log2(y / 0.18) = point.y + slope (log2(x / 0.18) - point.x).
ScaledPower makePower(const CurvePoint& point, double slope) {
    const double log2Grey = std::log2(kMiddleGrey);
    return ScaledPower::fromLog2(log2Grey + point.y - slope * (log2Grey + point.x), slope);
}

CurvesOperator::Numbers makeNumbers(const ToneCurve& curve) {
    CurvesOperator::Numbers numbers{
        .segmentCount = static_cast<int>(curve.segments.size()),
        .starts = {},
        .coefficients = {},
        // A level curve has a value at 0, others do not need one.
        .smallest = curve.firstSlope == 0.0 ? std::numeric_limits<float>::min() : 0.0f,
        .below = makePower(curve.first, curve.firstSlope),
        .above = makePower(curve.last, curve.lastSlope)};
    for (std::size_t i = 0; i < curve.segments.size(); ++i) {
        numbers.starts[i] = static_cast<float>(curve.segments[i].start);
        for (std::size_t k = 0; k < 4; ++k) {
            numbers.coefficients[k][i] = static_cast<float>(curve.segments[i].coefficients[k]);
        }
    }
    numbers.starts[curve.segments.size()] = curve.last.x;
    return numbers;
}

bool isNeutral(const std::vector<CurvePoint>& points) {
    return std::all_of(points.begin(), points.end(),
                       [](const CurvePoint& point) { return point.x == point.y; });
}

void appendCurve(const std::vector<CurvePoint>& points, bool onRed, bool onGreen, bool onBlue,
                 StageList& stages) {
    if (isNeutral(points)) {
        return;
    }
    stages.add([curve = makeNumbers(ToneCurve(points)), onRed, onGreen, onBlue](PixelBlock& block) {
        const auto apply = HWY_DYNAMIC_DISPATCH(applyToneCurveTo);
        if (onRed) {
            apply(block.r, curve, block.count);
        }
        if (onGreen) {
            apply(block.g, curve, block.count);
        }
        if (onBlue) {
            apply(block.b, curve, block.count);
        }
    });
}

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    appendCurve(values.get(CurvesOperator::kMaster), true, true, true, stages);
    appendCurve(values.get(CurvesOperator::kRed), true, false, false, stages);
    appendCurve(values.get(CurvesOperator::kGreen), false, true, false, stages);
    appendCurve(values.get(CurvesOperator::kBlue), false, false, true, stages);
}

}  // namespace

constinit const ColorMappingOperatorDescriptor CurvesOperator::kDescriptor{
    .typeName = "Curves",
    .displayName = "Curves",
    .category = OperatorCategory::CurveControl,
    .description = "Bends brightness along curves, for all colours or for red, green and blue.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
