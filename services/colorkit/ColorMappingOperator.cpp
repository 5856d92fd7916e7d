#include "services/colorkit/ColorMappingOperator.h"

#include "services/colorkit/DisplayEncoding.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/StageList.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tavrin::colorkit {
namespace {

double toFactor(float exposure) {
    constexpr float kLargest = 1e15f;
    return std::isfinite(exposure) && exposure >= 0.0f ? std::min(exposure, kLargest) : 1.0f;
}

void appendContextExposure(const CommonColorMappingContext& context, StageList& stages) {
    const double factor = toFactor(context.imageExposure) * toFactor(context.viewExposure);
    if (factor != 1.0) {
        stages.addMatrix(Matrix3::diagonal({factor, factor, factor}));
    }
}

void appendOperators(const std::vector<const IColorMappingOperator*>& operators,
                     const MappingEnvironment& environment, StageList& stages) {
    for (const IColorMappingOperator* current : operators) {
        const OperatorValues& values = current->getValues();
        if (values.isEnabled()) {
            values.getDescriptor().appendStages(values, environment, stages);
        }
    }
}

StageList makeDisplayStages(const EntityHolder<IColorMappingOperator>& pipeline, bool isEnabled,
                            const MappingEnvironment& environment) {
    StageList stages;
    if (isEnabled) {
        appendContextExposure(environment.context, stages);
        appendOperators(listOperators(pipeline), environment, stages);
    }
    appendDisplayEncoding(environment.context.displayGamma, stages);
    return stages;
}

StageList makeHistogramStages(const EntityHolder<IColorMappingOperator>& pipeline, bool isEnabled,
                              const MappingEnvironment& environment, std::uint32_t stage) {
    std::vector<const IColorMappingOperator*> operators = listOperators(pipeline);
    const auto found = std::find_if(operators.begin(), operators.end(), [stage](const auto* each) {
        return each->getId() > 0 && static_cast<std::uint32_t>(each->getId()) == stage;
    });
    StageList stages;
    if (found == operators.end()) {
        stages.addMatrix(Matrix3::diagonal({0.0, 0.0, 0.0}));
    } else if (isEnabled) {
        operators.erase(found, operators.end());
        appendContextExposure(environment.context, stages);
        appendOperators(operators, environment, stages);
    }
    return stages;
}

StageList makeExposureStages(const EntityHolder<IColorMappingOperator>& pipeline, bool isEnabled,
                             const MappingEnvironment& environment) {
    StageList stages;
    if (isEnabled) {
        std::vector<const IColorMappingOperator*> operators = listOperators(pipeline);
        std::erase_if(operators, [](const IColorMappingOperator* each) {
            return !each->getValues().getDescriptor().isExposure;
        });
        appendContextExposure(environment.context, stages);
        appendOperators(operators, environment, stages);
    }
    return stages;
}

}  // namespace

ColorMappingOperator<0>::ColorMappingOperator(const EntityHolder<IColorMappingOperator>& pipeline,
                                              bool isEnabled, const MappingEnvironment& environment)
    : StagedMapping(makeDisplayStages(pipeline, isEnabled, environment)) {}

HistogramColorMappingOperator::HistogramColorMappingOperator(
    const EntityHolder<IColorMappingOperator>& pipeline, bool isEnabled,
    const MappingEnvironment& environment, std::uint32_t stage)
    : StagedMapping(makeHistogramStages(pipeline, isEnabled, environment, stage)) {}

ExposureMapping::ExposureMapping(const EntityHolder<IColorMappingOperator>& pipeline,
                                 bool isEnabled, const MappingEnvironment& environment)
    : StagedMapping(makeExposureStages(pipeline, isEnabled, environment)) {}

}  // namespace tavrin::colorkit
