#pragma once

#include "foundation/SharedPtr.h"
#include "services/colorkit/IMappingStage.h"
#include "services/colorkit/opencolorio/ColorTransform.h"

#include <memory>
#include <vector>

namespace tavrin::colorkit {

/// Applies a transform, blended with what came in by an opacity. Colours below 0 count as 0 for the
/// transform, and what comes out is finite and not negative as far as it stems from it.
class ColorTransformStage final : public IMappingStage {
public:
    /// `input` are stages that bring colours into the form that the transform takes; what is
    /// blended is the colour before them. `opacity` from 0 to 1.
    ColorTransformStage(SharedPtr<const IColorTransform> transform,
                        std::vector<std::unique_ptr<const IMappingStage>> input, float opacity);

    void apply(PixelBlock& block) const override;

private:
    SharedPtr<const IColorTransform> transform_;
    std::vector<std::unique_ptr<const IMappingStage>> input_;
    float opacity_;
};

}  // namespace tavrin::colorkit
