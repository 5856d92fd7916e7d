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
    /// A regular polygon with one edge straight to the right, turned by `rotation` radians.
    static ApertureOutline fromPolygon(int edgeCount, float rotation);

    /// How far a point is outside; negative inside.
    float getDistance(float x, float y) const;
    /// The point of the outline in a direction, in radians.
    Vec2 getRim(float angle) const;

private:
    struct Edge {
        Vec2 normal;     // outwards, of length 1
        float distance;  // from the origin
    };

    std::vector<Edge> edges_;
};

/// How far a point is inside of what occludes the aperture; negative where light passes.
float getOcclusionDistance(const ApertureOcclusion& occlusion, float x, float y);

}  // namespace tavrin::postcore
