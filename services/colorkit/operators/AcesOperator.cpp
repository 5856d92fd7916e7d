#include "services/colorkit/operators/AcesOperator.h"

#include "services/colorkit/ColorTransformCache.h"
#include "services/colorkit/ColorTransformStage.h"
#include "services/colorkit/OperatorValues.h"

#include <cmath>
#include <memory>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&AcesOperator::kExposure};

void appendStages(const OperatorValues& values, const MappingEnvironment& environment,
                  StageList& stages) {
    const auto transform = getColorTransform(AcesOutput{});
    if (!transform) {
        environment.report(MappingError::Transform, transform.error());
        return;
    }
    const double factor = std::exp2(double{values.get(AcesOperator::kExposure)});
    stages.addMatrix(Matrix3::diagonal({factor, factor, factor}));
    stages.add(std::make_unique<ColorTransformStage>(
        *transform, std::vector<std::unique_ptr<const IMappingStage>>(), 1.0f));
}

}  // namespace

constinit const ColorMappingOperatorDescriptor AcesOperator::kDescriptor{
    .typeName = "Aces",
    .displayName = "ACES 1.0",
    .category = OperatorCategory::HighlightControl,
    .description =
        "The look of the Academy Color Encoding System on a video display, exactly; "
        "slower than its fit.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
