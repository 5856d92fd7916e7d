#pragma once

#include <array>
#include <vector>

namespace tavrin::postcore {

/// The visible wavelengths that colours are summed up from, in nanometres.
inline constexpr float kShortestWavelength = 380.0f;
inline constexpr float kLongestWavelength = 770.0f;

/// What light of one wavelength adds to linear sRGB; components may be negative.
struct WavelengthColor {
    float wavelength;  ///< in nanometres
    std::array<float, 3> channels;
};

/// The colours of light of all wavelengths alike, from the shortest on in equal steps. Each channel
/// sums up to 1: all together are white. `intensity` goes from 0, where every wavelength is grey,
/// to 1, the colours of the spectrum; `shift` from 0 to 1 moves the colours once around the
/// wavelengths.
std::vector<WavelengthColor> makeSpectralColors(float intensity, float shift);

}  // namespace tavrin::postcore
