#pragma once

#include "foundation/Bitmap.h"

namespace tavrin::postcore {

/// The light of one wavelength that an aperture diffracts in each direction, by Fraunhofer:
/// |F(A)|², F being the Fourier transform and A the aperture's transmission. Directions are counted
/// in parts of λ / D, the wavelength over the side of the mask, from that of the light itself, u
/// to the right and v down as in the mask. The pattern looks the same turned by half a turn.
class ApertureSpectrum {
public:
    /// From a square mask of at least two pixels. One step is λ / D / `padding`; the pattern
    /// reaches `reach` steps in all directions, fewer than half of side times padding, an even
    /// number. Uses the default scheduler. Throws std::bad_alloc.
    ApertureSpectrum(const BitmapImpl<float>& mask, int padding, int reach);

    int getReach() const { return reach_; }

    /// The light in a direction, between steps interpolated, in parts of what an open mask of one
    /// pixel lets pass. Coordinates are within the reach.
    float sample(float u, float v) const;

private:
    int reach_;
    BitmapImpl<float> power_;  // u from 0, v from -reach - 1, to reach + 1 each
};

}  // namespace tavrin::postcore
