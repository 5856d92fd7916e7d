#pragma once

#include "services/colorkit/IColorMappingOperator.h"

#include <cstddef>
#include <vector>

namespace tavrin::colorkit {

/// How many operators a pipeline may have.
constexpr std::size_t kMostOperators = 64;

/// Throws an Exception when there are more.
void checkOperatorCount(std::size_t count);

/// A chain of operators with these values, each with an id of its own; without values an empty
/// holder. Throws an Exception when there are too many.
EntityHolder<IColorMappingOperator> makePipeline(const std::vector<OperatorValues>& operators);

/// The operators of a pipeline in the order in which they work on a colour. They live as long as
/// the pipeline.
std::vector<const IColorMappingOperator*> listOperators(
    const EntityHolder<IColorMappingOperator>& pipeline);

/// The tone mapping of an image that brings none: highlights up to about three times white roll off
/// to white with their colour kept, and middle grey stays where it is.
EntityHolder<IColorMappingOperator> createDefaultPipeline();

/// Whether both have the same operators with the same values in the same order; ids do not count.
bool arePipelinesSame(const EntityHolder<IColorMappingOperator>& left,
                      const EntityHolder<IColorMappingOperator>& right);

}  // namespace tavrin::colorkit
