#include "services/colorkit/operators/WhiteBalanceOperator.h"

#include "services/colorkit/Chromaticity.h"
#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&WhiteBalanceOperator::kTemperature,
                                                       &WhiteBalanceOperator::kTint,
                                                       &WhiteBalanceOperator::kMethod};
constexpr float kNeutralTemperature = 6500.0f;

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const float temperature = values.get(WhiteBalanceOperator::kTemperature);
    const float tint = values.get(WhiteBalanceOperator::kTint);
    if (temperature != kNeutralTemperature || tint != 0.0f) {
        stages.addMatrix(adaptRec709(lightOfTemperature(temperature, tint),
                                     lightOfTemperature(kNeutralTemperature, 0.0),
                                     values.get(WhiteBalanceOperator::kMethod)));
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor WhiteBalanceOperator::kDescriptor{
    .typeName = "WhiteBalance",
    .displayName = "White balance",
    .category = OperatorCategory::Basic,
    .description = "Makes the image warmer or cooler by choosing which light looks white.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
