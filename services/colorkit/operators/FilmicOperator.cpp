#include "services/colorkit/operators/FilmicOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/FilmicOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void applyFilmicCurve(const FilmicOperator::Numbers& numbers, PixelBlock& block) {
    forEachComponent(block, [&](auto d, auto value) HWY_ATTR {
        // The curve is flat long before the upper end.
        const auto x = hn::Clamp(value, hn::Zero(d), hn::Set(d, 1e9f));
        const auto numerator =
            hn::MulAdd(hn::Set(d, numbers.numerator2), x, hn::Set(d, numbers.numerator1));
        const auto denominator = hn::MulAdd(
            hn::MulAdd(hn::Set(d, numbers.denominator2), x, hn::Set(d, numbers.denominator1)), x,
            hn::Set(d, numbers.denominator0));
        return hn::Div(hn::Mul(x, numerator), denominator);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

#include <algorithm>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&FilmicOperator::kShoulderStrength,
                                                       &FilmicOperator::kLinearStrength,
                                                       &FilmicOperator::kLinearAngle,
                                                       &FilmicOperator::kToeStrength,
                                                       &FilmicOperator::kToeNumerator,
                                                       &FilmicOperator::kToeDenominator,
                                                       &FilmicOperator::kWhite};

HWY_EXPORT(applyFilmicCurve);

/// On one denominator the curve is x (A (1 - E/F) x + B (C - E/F)) / (Ax² + Bx + DF), which is
/// exact near 0.
FilmicOperator::Numbers makeNumbers(const OperatorValues& values) {
    constexpr double kExposure = 2.0;
    constexpr double kSmallestWhite = 1e-3;
    const double a = values.get(FilmicOperator::kShoulderStrength);
    const double b = values.get(FilmicOperator::kLinearStrength);
    const double c = values.get(FilmicOperator::kLinearAngle);
    const double d = values.get(FilmicOperator::kToeStrength);
    const double f = values.get(FilmicOperator::kToeDenominator);
    const double toe = values.get(FilmicOperator::kToeNumerator) / f;
    const double w = values.get(FilmicOperator::kWhite);
    const double white = w * (a * (1.0 - toe) * w + b * (c - toe)) / (a * w * w + b * w + d * f);
    // Values that make white black or negative give dark images, but no endless ones.
    const double scale = 1.0 / std::max(white, kSmallestWhite);
    return {static_cast<float>(scale * a * (1.0 - toe) * kExposure * kExposure),
            static_cast<float>(scale * b * (c - toe) * kExposure),
            static_cast<float>(a * kExposure * kExposure), static_cast<float>(b * kExposure),
            static_cast<float>(d * f)};
}

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    stages.add([numbers = makeNumbers(values)](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(applyFilmicCurve)(numbers, block);
    });
}

}  // namespace

constinit const ColorMappingOperatorDescriptor FilmicOperator::kDescriptor{
    .typeName = "Filmic",
    .displayName = "Filmic",
    .category = OperatorCategory::HighlightControl,
    .description = "A film-like curve with deep shadows and soft highlights.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
