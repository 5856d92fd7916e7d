#include "services/colorkit/operators/ContrastOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/ContrastOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
#include "services/colorkit/simd/ScaledPower-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void raiseToPower(const ScaledPower& power, PixelBlock& block) {
    forEachComponent(
        block, [&power](auto d, auto value) HWY_ATTR { return computePower(d, power, value); });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

#include <cmath>
#include <memory>

namespace tavrin::colorkit {
namespace {

HWY_EXPORT(raiseToPower);

class ContrastStage final : public IMappingStage {
public:
    // p (x/p)^c = p^(1-c) x^c
    ContrastStage(double contrast, double pivot)
        : power_(std::pow(pivot, 1.0 - contrast), contrast) {}

    void apply(PixelBlock& block) const override {
        HWY_DYNAMIC_DISPATCH(raiseToPower)(power_, block);
    }

private:
    ScaledPower power_;
};

constexpr const ParameterDeclaration* kParameters[] = {&ContrastOperator::kContrast,
                                                       &ContrastOperator::kPivot};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const float contrast = values.get(ContrastOperator::kContrast);
    if (contrast != 1.0f) {
        stages.add(std::make_unique<ContrastStage>(contrast, values.get(ContrastOperator::kPivot)));
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor ContrastOperator::kDescriptor{
    .typeName = "Contrast",
    .displayName = "Contrast",
    .category = OperatorCategory::CurveControl,
    .description = "Spreads the brightness around a middle value that stays as it is.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
