#pragma once

#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"

namespace tavrin::pipeline {

/// Puts the image's alpha into the fourth float of every colour; 1 where the image has none.
class IncludeAlphaOperator final : public DependentMixin<1, IOperator> {
public:
    /// The input's elements, colours being colours with alpha.
    std::vector<image::ElementInfo> getElements() const override;

private:
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
};

}  // namespace tavrin::pipeline
