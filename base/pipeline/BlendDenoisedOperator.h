#pragma once

#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/SettingsMixin.h"

namespace tavrin::pipeline {

/// Blends every element with its denoised variant by the amount of the settings. Input 0 is the
/// load operator, input 1 the denoise operator.
class BlendDenoisedOperator final : public DependentMixin<2, SettingsMixin<IOperator>> {
public:
    /// The elements of input 0; those that input 1 has denoised have the flag for that.
    std::vector<image::ElementInfo> getElements() const override;

private:
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
};

}  // namespace tavrin::pipeline
