#include "services/colorkit/operators/TintOperator.h"

#include "services/colorkit/OperatorValues.h"

#include <cmath>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&TintOperator::kColor,
                                                       &TintOperator::kAmount};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const CompressedRgb color = values.get(TintOperator::kColor);
    const double amount = values.get(TintOperator::kAmount);
    if (amount != 0.0 && color != CompressedRgb{1.0f, 1.0f, 1.0f}) {
        stages.addMatrix(Matrix3::diagonal({std::lerp(1.0, double{color.r}, amount),
                                            std::lerp(1.0, double{color.g}, amount),
                                            std::lerp(1.0, double{color.b}, amount)}));
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor TintOperator::kDescriptor{
    .typeName = "Tint",
    .displayName = "Tint",
    .category = OperatorCategory::Basic,
    .description = "Colours the whole image, as a coloured filter in front of the lens would.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
