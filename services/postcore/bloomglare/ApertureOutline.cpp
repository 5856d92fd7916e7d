#include "services/postcore/bloomglare/ApertureOutline.h"

#include "services/postcore/bloomglare/Angles.h"

#include <algorithm>
#include <cmath>

namespace tavrin::postcore {
namespace {

float dot(Vec2 a, Vec2 b) {
    return a.x * b.x + a.y * b.y;
}

/// How far a point is inside of an occluder that comes from the right, with its edge at `edge`.
/// Open is a circle of curvature `arc` whose rightmost point is (edge, 0). The signed distance to a
/// circle is written so that it holds for a curvature of 0, too.
float getDistanceFromRight(float edge, float arc, float x, float y) {
    const float fromEdge = x - edge;
    const float root = std::hypot(1.0f + arc * fromEdge, arc * y);
    return (arc * (fromEdge * fromEdge + y * y) + 2.0f * fromEdge) / (1.0f + root);
}

}  // namespace

ApertureOutline ApertureOutline::fromBlades(const ApertureParams& params) {
    return params.isBladed ? fromPolygon(params.bladeCount, toRadians(params.bladeRotation))
                           : ApertureOutline();
}

ApertureOutline ApertureOutline::fromPolygon(int edgeCount, float rotation) {
    ApertureOutline outline;
    const float step = kTurn / static_cast<float>(edgeCount);
    for (int i = 0; i < edgeCount; ++i) {
        outline.edges_.push_back(
            {getDirection(rotation + step * static_cast<float>(i)), std::cos(0.5f * step)});
    }
    return outline;
}

float ApertureOutline::getDistance(float x, float y) const {
    float distance = std::sqrt(x * x + y * y) - 1.0f;
    for (const Edge& edge : edges_) {
        distance = std::max(distance, dot({x, y}, edge.normal) - edge.distance);
    }
    return distance;
}

Vec2 ApertureOutline::getRim(float angle) const {
    const Vec2 direction = getDirection(angle);
    float radius = 1.0f;
    for (const Edge& edge : edges_) {
        const float cosine = dot(direction, edge.normal);
        if (cosine > edge.distance) {  // otherwise the circle comes first
            radius = std::min(radius, edge.distance / cosine);
        }
    }
    return {radius * direction.x, radius * direction.y};
}

float getOcclusionDistance(const ApertureOcclusion& occlusion, float x, float y) {
    const Vec2 axis = getDirection(toRadians(occlusion.rotation));
    const float along = dot({x, y}, axis);
    const float across = dot({x, y}, {-axis.y, axis.x});
    if (occlusion.isSymmetric) {
        return getDistanceFromRight(1.0f - occlusion.ratio, occlusion.arc, std::abs(along), across);
    }
    return getDistanceFromRight(1.0f - 2.0f * occlusion.ratio, occlusion.arc, along, across);
}

}  // namespace tavrin::postcore
