#include "services/postcore/bloomglare/GratingLines.h"

#include "services/postcore/bloomglare/Angles.h"

#include <algorithm>
#include <cmath>

namespace tavrin::postcore {
namespace {

// Without zoom. Their halo is then about as large as the whole glare.
constexpr float kLineCount = 180.0f;

}  // namespace

ApertureMarks makeGratingLines(const ApertureGrating& grating, const ApertureOutline& outline) {
    ApertureMarks lines;
    const float length = std::min(2.0f * grating.length * grating.zoom, 2.0f);
    if (grating.ratio <= 0.0f || length <= 0.0f) {
        return lines;
    }
    const int count = static_cast<int>(std::round(kLineCount / grating.zoom));
    const float pitch = kTurn / static_cast<float>(count);
    for (int i = 0; i < count; ++i) {
        const float angle = pitch * static_cast<float>(i);
        const Vec2 rim = outline.getRim(angle);
        const Vec2 next = outline.getRim(angle + pitch);
        const float width = grating.ratio * std::hypot(next.x - rim.x, next.y - rim.y);
        // The round end at the rim is outside of the aperture.
        const Vec2 inwards = getDirection(angle + kPi + toRadians(grating.direction));
        const float middle = 0.5f * (length - width);
        lines.marks.push_back({.center = {rim.x + middle * inwards.x, rim.y + middle * inwards.y},
                               .direction = inwards,
                               .halfLength = 0.5f * length,
                               .halfWidth = 0.5f * width});
    }
    return lines;
}

}  // namespace tavrin::postcore
