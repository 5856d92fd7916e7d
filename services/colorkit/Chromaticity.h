#pragma once

#include "services/colorkit/Matrix3.h"

namespace tavrin::colorkit {

/// A chromaticity of the CIE 1931 standard observer.
struct Chromaticity {
    double x = 0.0;
    double y = 0.0;
};

/// The white of the working space, as IEC 61966-2-1 gives it.
inline constexpr Chromaticity kD65{0.3127, 0.3290};

/// X, Y and Z of a light of this chromaticity with Y = 1.
constexpr Vector3 toXyz(const Chromaticity& light) {
    return {light.x / light.y, 1.0, (1.0 - light.x - light.y) / light.y};
}

/// The chromaticity of a light of `temperature` kelvin (1700 to 25000): a black body up to 4000 K,
/// daylight from 5000 K on, and a mixture between. Temperatures of daylight are nominal as in
/// "D65", so that 6500 K is that white. `tint` (-150 to 150) moves the light at right angles to
/// this curve in the CIE 1960 diagram, positive ones towards green, by 1/3000 of (u, v) each.
Chromaticity lightOfTemperature(double temperature, double tint);

}  // namespace tavrin::colorkit
