#pragma once

#include "services/colorkit/IMappingStage.h"
#include "services/colorkit/simd/ScaledPower.h"

namespace tavrin::colorkit {

/// Turns every component x into scale · x^exponent, at most the largest float; components that are
/// 0, negative or subnormal become 0.
class PowerStage final : public IMappingStage {
public:
    /// Both positive and finite.
    PowerStage(double scale, double exponent) : power_(scale, exponent) {}

    void apply(PixelBlock& block) const override;

private:
    ScaledPower power_;
};

}  // namespace tavrin::colorkit
