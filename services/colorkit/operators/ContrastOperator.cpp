#include "services/colorkit/operators/ContrastOperator.h"

#include "services/colorkit/OperatorValues.h"
#include "services/colorkit/PowerStage.h"

#include <cmath>
#include <memory>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&ContrastOperator::kContrast,
                                                       &ContrastOperator::kPivot};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const double contrast = values.get(ContrastOperator::kContrast);
    const double pivot = values.get(ContrastOperator::kPivot);
    if (contrast != 1.0) {
        // p (x/p)^c = p^(1-c) x^c
        stages.add(std::make_unique<PowerStage>(std::pow(pivot, 1.0 - contrast), contrast));
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
