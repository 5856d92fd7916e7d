#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Vec.h"

#include <vector>

namespace tavrin::postcore {

/// A stroke of a brush with round ends, in units of the aperture's radius. Without length it is a
/// disc.
struct ApertureMark {
    Vec2 center;
    Vec2 direction{1.0f, 0.0f};  ///< of length 1
    float halfLength = 0.0f;     ///< of the line between the middles of the round ends
    float halfWidth = 0.0f;
    float bend = 0.0f;   ///< how far the middle is to the left of the straight line
    float taper = 0.0f;  ///< part of the width that is lost towards the ends, 0 to 1
};

/// What lies on a lens.
struct ApertureMarks {
    std::vector<ApertureMark> marks;
    bool coverAll = false;  ///< everything is covered, whatever the marks

    /// Turns by `angle` radians and magnifies, both around the origin.
    void transform(float angle, float zoom);
};

/// Takes away `strength` times what the marks cover of each pixel of a square mask, on which the
/// aperture's radius is half a side. Uses the default scheduler.
void coverMask(const ApertureMarks& marks, float strength, BitmapImpl<float>& mask);

}  // namespace tavrin::postcore
