#pragma once

#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"

namespace tavrin::pipeline {

/// Turns elements of a single channel into grey colours, so that every element can be shown; the
/// fourth float is the value, too.
class MonoToColorOperator final : public DependentMixin<1, IOperator> {
public:
    /// The input's elements, with those of a single channel as colours.
    std::vector<image::ElementInfo> getElements() const override;

private:
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
};

}  // namespace tavrin::pipeline
