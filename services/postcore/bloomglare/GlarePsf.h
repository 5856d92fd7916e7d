#pragma once

#include "services/postcore/bloomglare/ApertureParams.h"
#include "services/postcore/bloomglare/PointSpreadFunction.h"

namespace tavrin::postcore {

/// How the light that an aperture diffracts looks. A plain value.
struct GlareParams {
    int streakCount = 6;          ///< 1 to 16; counts when the aperture is not custom
    float rotation = 15.0f;       ///< of the whole, in degrees, counterclockwise on the screen
    float streakBlur = 0.2f;      ///< 0 is very sharp, 1 over-blurred
    float colorIntensity = 0.2f;  ///< 0 is without colours, 1 those of the spectrum
    float colorShift = 0.0f;      ///< 0 to 1; moves the colours once around the spectrum

    friend bool operator==(const GlareParams&, const GlareParams&) = default;
};

/// The glare of a light, `radius` pixels in all directions (negative counts as 0). The same picture
/// at every radius, and the same kernel on any number of threads. Uses the default scheduler.
/// Numbers out of range count as the nearest that is in it. Throws std::bad_alloc. Any thread.
PointSpreadFunction makeGlarePsf(const GlareParams& glare, const ApertureParams& aperture,
                                 int radius);

}  // namespace tavrin::postcore
