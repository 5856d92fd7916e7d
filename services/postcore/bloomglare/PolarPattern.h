#pragma once

#include "foundation/Bitmap.h"
#include "services/postcore/bloomglare/ApertureSpectrum.h"
#include "services/postcore/bloomglare/SpectralColors.h"

#include <array>
#include <vector>

namespace tavrin::postcore {

/// A pattern around a light by distance (rows from 0 on, in steps) and direction (columns over half
/// a turn, counterclockwise from the right on the screen; the other half is the same).
using PolarPattern = BitmapImpl<float>;
using PolarColorPattern = std::array<PolarPattern, 3>;

inline constexpr int kPolarDirections = 1024;

/// The functions use the default scheduler and throw std::bad_alloc.
PolarPattern toPolarPattern(const ApertureSpectrum& spectrum);

/// Blurs around the middle with a bell of this standard deviation in radians.
void blurDirections(PolarPattern& pattern, float deviation);

/// Sums up the patterns of many wavelengths, for distances up to `reach`: `pattern` is that of the
/// shortest one, dark beyond its rows, and all others are the same with directions scaled by the
/// wavelength. Negative sums become 0.
PolarColorPattern spreadWavelengths(const PolarPattern& pattern,
                                    const std::vector<WavelengthColor>& colors, int reach);

}  // namespace tavrin::postcore
