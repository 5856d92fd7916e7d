#include "services/colorkit/operators/SaturationOperator.h"

#include "services/colorkit/Luminance.h"
#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&SaturationOperator::kSaturation};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const float saturation = values.get(SaturationOperator::kSaturation);
    if (saturation != 1.0f) {
        stages.addMatrix(saturationMatrix(double{saturation}));
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor SaturationOperator::kDescriptor{
    .typeName = "Saturation",
    .displayName = "Saturation",
    .category = OperatorCategory::Basic,
    .description = "Makes colours stronger or weaker without changing their brightness.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
