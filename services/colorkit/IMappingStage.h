#pragma once

#include "services/colorkit/PixelBlock.h"

namespace tavrin::colorkit {

/// One step of a flattened mapping. Stages are immutable: any thread may apply them.
class IMappingStage {
public:
    virtual ~IMappingStage() = default;

    /// Maps the colours of the block in place. Finite colours stay finite; they may be negative
    /// before and after.
    virtual void apply(PixelBlock& block) const = 0;
};

}  // namespace tavrin::colorkit
