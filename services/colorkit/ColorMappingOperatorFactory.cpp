#include "services/colorkit/ColorMappingOperatorFactory.h"

#include "services/colorkit/operators/AcesFitOperator.h"
#include "services/colorkit/operators/AcesOperator.h"
#include "services/colorkit/operators/AgXOperator.h"
#include "services/colorkit/operators/ClampOperator.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/CurvesOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/FilmicCurveOperator.h"
#include "services/colorkit/operators/FilmicOperator.h"
#include "services/colorkit/operators/GainOperator.h"
#include "services/colorkit/operators/GrainOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "services/colorkit/operators/LiftGammaGainOperator.h"
#include "services/colorkit/operators/LutOperator.h"
#include "services/colorkit/operators/MatrixOperator.h"
#include "services/colorkit/operators/OpenColorIoViewOperator.h"
#include "services/colorkit/operators/PbrNeutralOperator.h"
#include "services/colorkit/operators/PhotographicExposureOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "services/colorkit/operators/SigmoidOperator.h"
#include "services/colorkit/operators/SoftKneeOperator.h"
#include "services/colorkit/operators/TintOperator.h"
#include "services/colorkit/operators/VignetteOperator.h"
#include "services/colorkit/operators/WhiteBalanceOperator.h"

namespace tavrin::colorkit {

const ColorMappingOperatorFactory& ColorMappingOperatorFactory::getInstance() {
    static const ColorMappingOperatorFactory instance;
    return instance;
}

const ColorMappingOperatorDescriptor* ColorMappingOperatorFactory::findDescriptor(
    const String& typeName) const {
    const auto found = descriptors_.find(typeName);
    return found == descriptors_.end() ? nullptr : found->second;
}

ColorMappingOperatorFactory::ColorMappingOperatorFactory() {
    for (const ColorMappingOperatorDescriptor* descriptor : {
             &AcesFitOperator::kDescriptor,       &AcesOperator::kDescriptor,
             &AgXOperator::kDescriptor,           &ClampOperator::kDescriptor,
             &ContrastOperator::kDescriptor,      &CurvesOperator::kDescriptor,
             &ExposureOperator::kDescriptor,      &FilmicCurveOperator::kDescriptor,
             &FilmicOperator::kDescriptor,        &GainOperator::kDescriptor,
             &GrainOperator::kDescriptor,         &HighlightCompressionOperator::kDescriptor,
             &LiftGammaGainOperator::kDescriptor, &LutOperator::kDescriptor,
             &MatrixOperator::kDescriptor,        &OpenColorIoViewOperator::kDescriptor,
             &PbrNeutralOperator::kDescriptor,    &PhotographicExposureOperator::kDescriptor,
             &SaturationOperator::kDescriptor,    &SigmoidOperator::kDescriptor,
             &SoftKneeOperator::kDescriptor,      &TintOperator::kDescriptor,
             &VignetteOperator::kDescriptor,      &WhiteBalanceOperator::kDescriptor,
         }) {
        descriptors_.emplace(descriptor->typeName, descriptor);
    }
}

}  // namespace tavrin::colorkit
