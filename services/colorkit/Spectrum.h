#pragma once

#include "foundation/Color.h"

#include <array>

namespace tavrin::colorkit {

/// Light or a reflectance in three bands. The bands are the lights of the three primaries of linear
/// sRGB: a coarse spectrum, but one in which every colour has exactly one radiance, white reflects
/// every light unchanged to the last bit, and tinting costs one product for each band. The fourth
/// band is none: it makes a spectrum as large as a colour, so that processors compute all at once.
struct Spectrum {
    alignas(16) std::array<float, 4> bands{};

    /// What a reflectance leaves of a light, band by band.
    friend Spectrum operator*(const Spectrum& left, const Spectrum& right) {
        return {{left.bands[0] * right.bands[0], left.bands[1] * right.bands[1],
                 left.bands[2] * right.bands[2], left.bands[3] * right.bands[3]}};
    }
};

/// The light that has this colour. Alpha goes into the band that is none.
inline Spectrum linearSrgbToRadiance(const Rgb& color) {
    return {{color.r, color.g, color.b, color.a}};
}

/// The reflectance that gives white light this colour; components above 1 amplify. What
/// it leaves of a light has no alpha.
inline Spectrum linearSrgbToReflectance(const Rgb& color) {
    return {{color.r, color.g, color.b, 0.0f}};
}

/// The colour of a light.
inline Rgb radianceToLinearSrgb(const Spectrum& radiance) {
    return {radiance.bands[0], radiance.bands[1], radiance.bands[2], radiance.bands[3]};
}

}  // namespace tavrin::colorkit
