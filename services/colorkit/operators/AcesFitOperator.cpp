#include "services/colorkit/operators/AcesFitOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/AcesFitOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void applyAcesFit(PixelBlock& block) {
    forEachComponent(block, [](auto d, auto value) HWY_ATTR {
        // The curve is flat long before the upper end.
        const auto v = hn::Clamp(value, hn::Zero(d), hn::Set(d, 1e9f));
        const auto numerator =
            hn::MulAdd(hn::Add(v, hn::Set(d, 0.0245786f)), v, hn::Set(d, -0.000090537f));
        const auto denominator = hn::MulAdd(
            hn::MulAdd(hn::Set(d, 0.983729f), v, hn::Set(d, 0.432951f)), v, hn::Set(d, 0.238081f));
        return hn::Div(numerator, denominator);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/Clamping.h"
#include "services/colorkit/OperatorValues.h"

#include <cmath>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&AcesFitOperator::kExposure};

HWY_EXPORT(applyAcesFit);

constexpr Matrix3 kInput{{{{0.59719, 0.35458, 0.04823},  //
                           {0.07600, 0.90834, 0.01566},
                           {0.02840, 0.13383, 0.83777}}}};
constexpr Matrix3 kOutput{{{{1.60475, -0.53108, -0.07367},  //
                            {-0.10208, 1.10813, -0.00605},
                            {-0.00327, -0.07276, 1.07602}}}};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const double factor = std::exp2(double{values.get(AcesFitOperator::kExposure)});
    stages.addMatrix(Matrix3::diagonal({factor, factor, factor}) * kInput);
    stages.add([](PixelBlock& block) { HWY_DYNAMIC_DISPATCH(applyAcesFit)(block); });
    stages.addMatrix(kOutput);
    appendClamping(0.0f, 1.0f, stages);
}

}  // namespace

constinit const ColorMappingOperatorDescriptor AcesFitOperator::kDescriptor{
    .typeName = "AcesFit",
    .displayName = "ACES fit",
    .category = OperatorCategory::HighlightControl,
    .description =
        "A fast likeness of the ACES film look: contrasty, with highlights that fade to white.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
