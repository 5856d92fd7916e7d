#include "services/colorkit/operators/FilmicCurveOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/FilmicCurveOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
#include "services/colorkit/simd/ScaledPower-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

/// y / (1 + y/O) with y = O/I x^c.
void applyFilmicPower(const ScaledPower& power, float inverseLimit, PixelBlock& block) {
    forEachComponent(block, [&power, inverseLimit](auto d, auto value) HWY_ATTR {
        const auto y = computePower(d, power, value);
        return hn::Div(y, hn::MulAdd(y, hn::Set(d, inverseLimit), hn::Set(d, 1.0f)));
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

#include <algorithm>
#include <cmath>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {
    &FilmicCurveOperator::kContrast, &FilmicCurveOperator::kMiddleIn,
    &FilmicCurveOperator::kMiddleOut, &FilmicCurveOperator::kWhite};

HWY_EXPORT(applyFilmicPower);

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const double contrast = values.get(FilmicCurveOperator::kContrast);
    const double a = std::pow(double{values.get(FilmicCurveOperator::kMiddleIn)}, contrast);
    const double b = std::pow(double{values.get(FilmicCurveOperator::kWhite)}, contrast);
    // Below a/b the curve would have to bend upwards: it stays a straight power there.
    const double middleOut =
        std::max(double{values.get(FilmicCurveOperator::kMiddleOut)}, 1.0001 * a / b);
    const double d = a - middleOut * b;
    const double intercept = a * b * (middleOut - 1.0) / d;
    const double limit = middleOut * (a - b) / d;
    stages.add([power = ScaledPower(limit / intercept, contrast),
                inverseLimit = static_cast<float>(1.0 / limit)](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(applyFilmicPower)(power, inverseLimit, block);
    });
}

}  // namespace

constinit const ColorMappingOperatorDescriptor FilmicCurveOperator::kDescriptor{
    .typeName = "FilmicCurve",
    .displayName = "Filmic curve",
    .category = OperatorCategory::HighlightControl,
    .description = "A film-like curve that is set by its contrast, its middle and its white.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
