#pragma once

#include "services/colorkit/PixelBlock.h"
#include "services/colorkit/simd/ScaledPower.h"

namespace tavrin::colorkit {

/// The curve that turns linear colours into those a display takes, continued above 1. Immutable:
/// any thread may apply it.
class DisplayEncoding {
public:
    /// The gamma of a CommonColorMappingContext: 2.2 is the sRGB curve, any other value a pure
    /// power.
    explicit DisplayEncoding(float gamma);

    /// Encodes the colours of the block in place; negative ones become 0.
    void encode(PixelBlock& block) const;

private:
    enum class Curve { Srgb, Power, Linear };

    Curve curve_;
    ScaledPower power_;
};

}  // namespace tavrin::colorkit
