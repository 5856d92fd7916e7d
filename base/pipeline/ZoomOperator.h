#pragma once

#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"

namespace tavrin::pipeline {

/// The end of the display chain. Enlarges by repeating pixels, so that the operators before it
/// never work on more than full resolution; reductions are made at the head of the chain.
class ZoomOperator final : public DependentMixin<1, IOperator> {
private:
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
    Optional<BitmapImpl<float>> computeMonoRegion(const Request& request) override;
};

}  // namespace tavrin::pipeline
