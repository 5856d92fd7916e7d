#pragma once

#include "foundation/Vec.h"
#include "services/postcore/bloomglare/ApertureParams.h"

#include <vector>

namespace tavrin::postcore {

// Apertures are drawn around the origin, x to the right and y up, in units of their radius.

/// The unit circle, of which straight edges cut off what is beyond them.
class ApertureOutline {
public:
    /// The whole circle, or a regular polygon with its corners on it.
    static ApertureOutline fromBlades(const ApertureParams& params);
    /// An aperture whose edges throw streaks to the right and at equal angles from there: `count`
    /// of them when it is even, otherwise as many again opposite to them. One or two streaks come
    /// from a circle with two straight sides.
    static ApertureOutline fromStreaks(int count);

    /// How far a point is outside; negative inside.
    float getDistance(float x, float y) const;
    /// The point of the outline in a direction, in radians.
    Vec2 getRim(float angle) const;

private:
    struct Edge {
        Vec2 normal;     // outwards, of length 1
        float distance;  // from the origin
    };

    void addEdges(int count, float firstAngle, float distance);

    std::vector<Edge> edges_;
};

/// How far a point is inside of what occludes the aperture; negative where light passes.
float getOcclusionDistance(const ApertureOcclusion& occlusion, float x, float y);

}  // namespace tavrin::postcore
