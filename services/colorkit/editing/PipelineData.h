#pragma once

#include "foundation/EntityHolder.h"
#include "foundation/data/GenericObject.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/IColorMappingOperator.h"

namespace tavrin::colorkit {

// Pipelines as lists of data objects, one for each operator, and back. The objects are of the types
// of OperatorTypes.h, which must be registered. Their ids are those of the operators; their
// "predecessor" is empty, as their order in the list says it.

/// What becomes of operators that the user interface does not offer (OperatorCategory::NotOffered).
enum class HiddenItems { Include = 0, Omit = 1 };

/// An object without an id (0) gets a new one. Throws an Exception when an object is not the data
/// of an operator, or when there are too many.
EntityHolder<IColorMappingOperator> createPipeline(const GenericList& operators);

GenericList convertPipelineToDataObjects(const EntityHolder<IColorMappingOperator>& pipeline,
                                         HiddenItems hiddenItems);

/// Whether both lists have the same operators with the same values and ids in the same order. No
/// id (0) is the same as any, so that a list is the same as the pipeline made from it.
bool areOperatorsDataSame(const GenericList& left, const GenericList& right);

/// The colour mapping's pipeline and switch as they are now, as a ColorMapping::Data.
GenericObject toDataObject(const ColorMapping& colorMapping);

}  // namespace tavrin::colorkit
