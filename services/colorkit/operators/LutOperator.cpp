#include "services/colorkit/operators/LutOperator.h"

#include "services/colorkit/ColorTransformCache.h"
#include "services/colorkit/ColorTransformStage.h"
#include "services/colorkit/DefaultLut.h"
#include "services/colorkit/DisplayEncoding.h"
#include "services/colorkit/LogEncoding.h"
#include "services/colorkit/OperatorValues.h"

#include <memory>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {
    &LutOperator::kPath,
    &LutOperator::kOpacity,
    &LutOperator::kLogarithmic,
    &LutOperator::kLinear,
};

void appendStages(const OperatorValues& values, const MappingEnvironment& environment,
                  StageList& stages) {
    const Path& path = values.get(LutOperator::kPath);
    const float opacity = values.get(LutOperator::kOpacity);
    if (path.isEmpty() || opacity == 0.0f) {
        return;
    }
    const auto transform = getColorTransform(LutFile{findLut(path).std().native()});
    if (!transform) {
        environment.report(MappingError::Transform, transform.error());
        return;
    }
    const float gamma = environment.context.displayGamma;
    const bool isLinear = values.get(LutOperator::kLinear);
    StageList input;
    if (values.get(LutOperator::kLogarithmic)) {
        if (!isLinear) {
            appendDisplayDecoding(gamma, input);
        }
        appendLogEncoding(input);
    }
    if (!isLinear) {
        appendDisplayEncoding(gamma, stages);
    }
    stages.add(std::make_unique<ColorTransformStage>(*transform, input.take(), opacity));
    if (!isLinear) {
        appendDisplayDecoding(gamma, stages);
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor LutOperator::kDescriptor{
    .typeName = "Lut",
    .displayName = "LUT",
    .category = OperatorCategory::FinalLook,
    .description =
        "Changes the overall look of the image by applying a predefined LUT.\n\nNote that the "
        "effect of this operator may not be unmapped correctly in TavrinTonemapControl, especially "
        "with the \"logarithmic\" option checked or \"opacity\" set lower than 1.\n\nBeware that "
        "applying this operator results in NONLINEAR output. So when composing render elements "
        "together, this operator has to be disabled to get correct results - e.g. when using "
        "render elements that split the output to reflection/refraction, only linear operations "
        "should be used before combining those elements back together.",
    .isEnabledByDefault = false,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
