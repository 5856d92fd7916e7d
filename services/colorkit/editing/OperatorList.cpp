#include "services/colorkit/editing/OperatorList.h"

#include "services/colorkit/Pipeline.h"
#include "services/colorkit/editing/ColorMappingWithObservers.h"
#include "services/colorkit/editing/PipelineData.h"

namespace tavrin::colorkit {

void applyOverride(GenericObject& operatorObject) {
    if (ColorMappingWithObservers::sOverrideSetter) {
        ColorMappingWithObservers::sOverrideSetter(operatorObject);
    }
}

GenericList createOperatorList(const EntityHolder<IColorMappingOperator>& pipeline) {
    GenericList list = convertPipelineToDataObjects(pipeline, HiddenItems::Include);
    for (GenericObject& object : list) {
        applyOverride(object);
    }
    return list;
}

GenericList createDefaultOperatorList() {
    return createOperatorList(createDefaultPipeline());
}

}  // namespace tavrin::colorkit
