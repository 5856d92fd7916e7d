#include "services/colorkit/operators/ExposureOperator.h"

#include "services/colorkit/OperatorValues.h"

#include <cmath>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&ExposureOperator::kStops};

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const float stops = values.get(ExposureOperator::kStops);
    if (stops != 0.0f) {
        const double factor = std::exp2(double{stops});
        stages.addMatrix(Matrix3::diagonal({factor, factor, factor}));
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor ExposureOperator::kDescriptor{
    .typeName = "Exposure",
    .displayName = "Exposure",
    .category = OperatorCategory::Basic,
    .description = "Makes the image brighter or darker, as a longer or shorter exposure would.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
    .isExposure = true,
};

}  // namespace tavrin::colorkit
