#pragma once

#include "foundation/EntityHolder.h"
#include "foundation/data/GenericObject.h"
#include "services/colorkit/IColorMappingOperator.h"

namespace tavrin::colorkit {

/// Gives an object that is made for the model's list to ColorMappingWithObservers::sOverrideSetter,
/// when that is not empty.
void applyOverride(GenericObject& operatorObject);

/// The content of the model's list that stands for this pipeline, hidden operators included.
GenericList createOperatorList(const EntityHolder<IColorMappingOperator>& pipeline);

/// The same for the default pipeline, with new ids at each call.
GenericList createDefaultOperatorList();

}  // namespace tavrin::colorkit
