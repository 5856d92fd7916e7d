#pragma once

#include "services/postcore/bloomglare/ApertureParams.h"
#include "services/postcore/bloomglare/GlarePsf.h"

#include <cstdint>

namespace tavrin::postcore {

/// How lights glow. A plain value; numbers out of range count as the nearest that is in it. Callers
/// change single fields, whose order stays.
struct BloomGlareData {
    std::int32_t enabled = 0;     ///< when 0, nothing glows
    std::int32_t legacy = 0;      ///< when not 0, the older and simpler effect
    float bloomIntensity = 0.2f;  ///< light in the soft glow, in parts of what glows; 0 or more
    float glareIntensity = 0.2f;  ///< the same for streaks and diffraction
    float threshold = 1.0f;       ///< linear light from which on pixels glow; 0 or more
    float size = 50.0f;       ///< of both, in percent of the image's longer side (at most twice the
                              ///< shorter one), 1 to 100
    GlareParams glare;        ///< the glare's look
    ApertureParams aperture;  ///< what the glare comes from; not in the older effect

    friend bool operator==(const BloomGlareData&, const BloomGlareData&) = default;
};

}  // namespace tavrin::postcore
