#include "services/colorkit/operators/ClampOperator.h"

#include "services/colorkit/Clamping.h"
#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&ClampOperator::kMinimum,
                                                       &ClampOperator::kMaximum};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    appendClamping(values.get(ClampOperator::kMinimum), values.get(ClampOperator::kMaximum),
                   stages);
}

}  // namespace

constinit const ColorMappingOperatorDescriptor ClampOperator::kDescriptor{
    .typeName = "Clamp",
    .displayName = "Clamp",
    .category = OperatorCategory::NotOffered,
    .description = "Cuts off what is darker or brighter than a range.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
