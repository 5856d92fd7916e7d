#pragma once

#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"

namespace tavrin::pipeline {

/// Adds to each element the light that bloom and glare give it. Input 0 is the LightMix operator,
/// input 1 the bloom and glare operator.
class BlendBloomGlareOperator final : public DependentMixin<2, IOperator> {
public:
    /// The elements of input 0, and the layer of light as one of its own.
    std::vector<image::ElementInfo> getElements() const override;

private:
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
};

}  // namespace tavrin::pipeline
