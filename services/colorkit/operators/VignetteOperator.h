#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Darkens linear colours towards the corners as a lens does: by the square of the natural
/// fall-off, 1 / (1 + (r tan θ)²)², where r is the distance from the centre of the display window
/// with 1 at its corners and θ half the field of view. The factor is mixed with 1 by the strength;
/// negative ones brighten by as much as positive ones darken.
struct VignetteOperator {
    static constexpr Parameter<float> kStrength =
        declareNumber("strength", "Strength", 0.0f, -1.0f, 1.0f,
                      "Above 0 the corners become darker, below 0 brighter.");
    static constexpr Parameter<float> kHalfFieldOfView =
        declareNumber("halfFieldOfView", "Half field of view (°)", 25.0f, 5.0f, 60.0f,
                      "Angle between the middle and a corner of the image: wider lenses make the "
                      "corners darker.");

    struct Numbers {
        float strength;
        float centerX;  ///< in positions of pixels, which stand for their centres
        float centerY;
        float steepness;  ///< (tan θ / distance of the corners in pixels)²
    };

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
