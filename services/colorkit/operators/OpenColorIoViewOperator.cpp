#include "services/colorkit/operators/OpenColorIoViewOperator.h"

#include "services/colorkit/ColorTransformCache.h"
#include "services/colorkit/ColorTransformStage.h"
#include "services/colorkit/DisplayEncoding.h"
#include "services/colorkit/OperatorValues.h"

#include <cstdlib>
#include <memory>

namespace tavrin::colorkit {
namespace {

using View = OpenColorIoViewOperator;

constexpr const ParameterDeclaration* kParameters[] = {
    &View::kConfiguration, &View::kSource, &View::kDisplay, &View::kView, &View::kLook,
};

/// The configuration's path; empty when none is named anywhere.
std::string findConfiguration(const Path& path) {
    if (!path.isEmpty()) {
        return path.std().native();
    }
    const char* fromEnvironment = std::getenv("OCIO");
    return fromEnvironment != nullptr ? fromEnvironment : "";
}

void appendStages(const OperatorValues& values, const MappingEnvironment& environment,
                  StageList& stages) {
    const DisplayView request{findConfiguration(values.get(View::kConfiguration)),
                              values.get(View::kSource).toUtf8(),
                              values.get(View::kDisplay).toUtf8(), values.get(View::kView).toUtf8(),
                              values.get(View::kLook).toUtf8()};
    if (request.configuration.empty()) {
        environment.report(MappingError::Transform,
                           "The OpenColorIO view cannot be used: no configuration is named, "
                           "neither by the operator nor by the environment variable OCIO.");
        return;
    }
    const auto transform = getColorTransform(request);
    if (!transform) {
        environment.report(MappingError::Transform, transform.error());
        return;
    }
    stages.add(std::make_unique<ColorTransformStage>(
        *transform, std::vector<std::unique_ptr<const IMappingStage>>(), 1.0f));
    // The view encodes for the display by itself; the mapping does so once more at its end.
    appendDisplayDecoding(environment.context.displayGamma, stages);
}

}  // namespace

constinit const ColorMappingOperatorDescriptor OpenColorIoViewOperator::kDescriptor{
    .typeName = "OpenColorIoView",
    .displayName = "OpenColorIO view",
    .category = OperatorCategory::FinalLook,
    .description =
        "Shows the image as a display and view of an OpenColorIO configuration do; it "
        "belongs at the end of the list.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
