#pragma once

#include "foundation/data/TypeDatabase.h"

namespace tavrin::colorkit {

/// Declares "ColorMapping" (ColorMapping::Data), "UnaryColorMappingOperator"
/// (UnaryColorMappingOperator::Data) and, derived from that, the data of every operator in the
/// factory under its type name: "enabled" and its parameters, as its descriptor declares them.
TypeList declareOperatorTypes();

}  // namespace tavrin::colorkit
