#include "services/colorkit/operators/PhotographicExposureOperator.h"

#include "services/colorkit/OperatorValues.h"

#include <algorithm>
#include <cmath>

namespace tavrin::colorkit {
namespace {

/// 1 for settings that no camera has.
double exposureFactor(const CommonColorMappingContext& context) {
    const CommonColorMappingContext reference;
    constexpr double kLargest = 1e15;
    const auto square = [](double x) { return x * x; };
    const double factor = double{context.iso} / reference.iso *
                          (double{reference.shutterSpeed} / context.shutterSpeed) *
                          square(double{reference.fStop} / context.fStop);
    return std::isfinite(factor) && factor > 0.0 ? std::min(factor, kLargest) : 1.0;
}

void appendStages(const OperatorValues&, const MappingEnvironment& environment, StageList& stages) {
    if (environment.context.usesCameraExposure) {
        const double factor = exposureFactor(environment.context);
        if (factor != 1.0) {
            stages.addMatrix(Matrix3::diagonal({factor, factor, factor}));
        }
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor PhotographicExposureOperator::kDescriptor{
    .typeName = "PhotographicExposure",
    .displayName = "Photographic exposure",
    .category = OperatorCategory::Basic,
    .description = "Brightens or darkens the image by the camera's ISO, f-stop and shutter speed.",
    .isEnabledByDefault = true,
    .parameters = {},
    .appendStages = appendStages,
    .isExposure = true,
};

}  // namespace tavrin::colorkit
