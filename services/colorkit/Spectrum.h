#pragma once

#include "foundation/Color.h"

#include <array>

namespace tavrin::colorkit {

/// Light or a reflectance in three bands. The bands are the lights of the three primaries of linear
/// sRGB: a coarse spectrum, but one in which every colour has exactly one radiance, white reflects
/// every light unchanged to the last bit, and tinting costs one product for each band.
struct Spectrum {
    std::array<float, 3> bands{};

    /// What a reflectance leaves of a light, band by band.
    friend Spectrum operator*(const Spectrum& left, const Spectrum& right) {
        return {{left.bands[0] * right.bands[0], left.bands[1] * right.bands[1],
                 left.bands[2] * right.bands[2]}};
    }
};

/// The light that has this colour.
inline Spectrum linearSrgbToRadiance(const Rgb& color) {
    return {{color.r, color.g, color.b}};
}

/// The reflectance that gives white light this colour; components above 1 amplify.
inline Spectrum linearSrgbToReflectance(const Rgb& color) {
    return {{color.r, color.g, color.b}};
}

/// The colour of a light; the fourth component is 0.
inline Rgb radianceToLinearSrgb(const Spectrum& radiance) {
    return {radiance.bands[0], radiance.bands[1], radiance.bands[2], 0.0f};
}

}  // namespace tavrin::colorkit
