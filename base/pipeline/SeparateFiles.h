#pragma once

#include "base/pipeline/IOperator.h"
#include "foundation/Path.h"

#include <vector>

namespace tavrin::pipeline {

/// The elements of the operator that can be saved as images of their own and that the filter
/// accepts.
std::vector<image::ElementInfo> getSavableElements(
    const IOperator& op, const Function<bool(const image::ElementInfo&)>& filter);

/// The files of elements that are saved side by side, one for each. A single element takes the path
/// itself; of several the beauty does, and the others have their names after its stem, with a
/// number where two would have the same file. The path has an extension.
std::vector<Path> getSeparatePaths(const std::vector<image::ElementInfo>& elements,
                                   const Path& path);

}  // namespace tavrin::pipeline
