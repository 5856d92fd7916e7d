#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Brightens or darkens linear colours by stops: x · 2^stops.
struct ExposureOperator {
    static constexpr Parameter<float> kStops =
        declareNumber("stops", "Exposure (EV)", 0.0f, -10.0f, 10.0f,
                      "Brightness in stops: each step doubles the light.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
