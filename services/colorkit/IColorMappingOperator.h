#pragma once

#include "foundation/EntityHolder.h"
#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {

/// An operator of a colour-mapping pipeline. A pipeline is a chain of operators, each of which
/// holds the one before it, and is represented by its last operator. Operators never change once
/// they are made, so that pipelines may be shared between threads.
class IColorMappingOperator {
public:
    virtual ~IColorMappingOperator() = default;

    /// The operator that feeds this one; empty for the first of a pipeline.
    virtual const EntityHolder<IColorMappingOperator>& getPredecessor() const = 0;
    /// Tells the operators of a process apart; 0 when none was given.
    virtual int getId() const = 0;
    virtual const OperatorValues& getValues() const = 0;
};

}  // namespace tavrin::colorkit
