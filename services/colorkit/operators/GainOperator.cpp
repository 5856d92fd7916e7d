#include "services/colorkit/operators/GainOperator.h"

#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&GainOperator::kFactors};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const CompressedRgb factors = values.get(GainOperator::kFactors);
    if (factors != CompressedRgb{1.0f, 1.0f, 1.0f}) {
        stages.addMatrix(Matrix3::diagonal({factors.r, factors.g, factors.b}));
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor GainOperator::kDescriptor{
    .typeName = "Gain",
    .displayName = "Gain",
    .category = OperatorCategory::NotOffered,
    .description = "Multiplies red, green and blue by numbers.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
