#include "services/colorkit/operators/SigmoidOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/SigmoidOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
#include "services/colorkit/simd/ScaledPower-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

/// f / (P + f) of a component; `film` is f / P of fog + x.
template <class D, class V>
HWY_INLINE V computeResponse(D d, const ScaledPower& film, float fog, V value) {
    const V light = hn::Add(hn::Max(value, hn::Zero(d)), hn::Set(d, fog));
    const V response = computePower(d, film, light);
    return hn::Div(response, hn::Add(response, hn::Set(d, 1.0f)));
}

/// `paper` is W y^q.
void applySigmoid(const ScaledPower& film, const ScaledPower& paper, float fog, PixelBlock& block) {
    forEachComponent(block, [&, fog](auto d, auto value) HWY_ATTR {
        return computePower(d, paper, computeResponse(d, film, fog, value));
    });
}

/// The same for q = 1.
void applyStraightSigmoid(const ScaledPower& film, float white, float fog, PixelBlock& block) {
    forEachComponent(block, [&, white, fog](auto d, auto value) HWY_ATTR {
        return hn::Mul(hn::Set(d, white), computeResponse(d, film, fog, value));
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

#include <cmath>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {
    &SigmoidOperator::kContrast, &SigmoidOperator::kSkew, &SigmoidOperator::kWhite,
    &SigmoidOperator::kBlack};

HWY_EXPORT(applySigmoid);
HWY_EXPORT(applyStraightSigmoid);

/// 18.45 %: what the curve keeps.
constexpr double kGrey = 0.1845;

struct Sigmoid {
    double paperPower;  ///< q
    double filmPower;   ///< p
    double fog;
    double log2Paper;  ///< log2 P
};

/// From f(0) = black, f(grey) = grey and f'(grey) = contrast (1 - grey): with (f + P)/f = 1 + g at
/// grey, g = (W/grey)^(1/q) - 1, the slope is p q g / (1 + g).
Sigmoid solve(double contrast, double skew, double white, double black) {
    const double paperPower = std::pow(5.0, -skew);
    const double atGrey = std::pow(white / kGrey, 1.0 / paperPower) - 1.0;
    const double filmPower = contrast * (1.0 - kGrey) * (1.0 + atGrey) / (paperPower * atGrey);
    // P = (fog + grey)^p g = fog^p k with k like g for black.
    double fog = 0.0;
    if (black > 0.0) {
        const double atBlack = std::pow(white / black, 1.0 / paperPower) - 1.0;
        fog = kGrey / (std::pow(atBlack / atGrey, 1.0 / filmPower) - 1.0);
    }
    return {paperPower, filmPower, fog, filmPower * std::log2(fog + kGrey) + std::log2(atGrey)};
}

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const double white = values.get(SigmoidOperator::kWhite) / 100.0;
    const Sigmoid sigmoid =
        solve(values.get(SigmoidOperator::kContrast), values.get(SigmoidOperator::kSkew), white,
              values.get(SigmoidOperator::kBlack) / 100.0);
    const auto film = ScaledPower::fromLog2(-sigmoid.log2Paper, sigmoid.filmPower);
    const auto fog = static_cast<float>(sigmoid.fog);
    if (sigmoid.paperPower == 1.0) {
        stages.add([film, white = static_cast<float>(white), fog](PixelBlock& block) {
            HWY_DYNAMIC_DISPATCH(applyStraightSigmoid)(film, white, fog, block);
        });
    } else {
        const ScaledPower paper(white, sigmoid.paperPower);
        stages.add([film, paper, fog](PixelBlock& block) {
            HWY_DYNAMIC_DISPATCH(applySigmoid)(film, paper, fog, block);
        });
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor SigmoidOperator::kDescriptor{
    .typeName = "Sigmoid",
    .displayName = "Sigmoid",
    .category = OperatorCategory::CurveControl,
    .description =
        "A smooth S-curve that fits the whole range of brightness into that of the display.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
