#pragma once

#include "samples/Vector.h"

#include <optional>
#include <variant>

namespace tavrin::samples {

struct Sphere {
    Vector center;
    double radius = 1;
};

/// A parallelogram; it faces towards cross(edgeU, edgeV).
struct Quad {
    Vector corner;
    Vector edgeU;
    Vector edgeV;
};

/// The surface that a straight piece of a profile sweeps around an axis: part of a cylinder, a cone
/// or a flat ring. A piece that goes up the axis faces outwards, one that goes down faces the axis.
struct Frustum {
    /// A point of the profile with the profile's normal there, which shading interpolates.
    struct Rim {
        double radius = 0;
        double height = 0;  ///< along the axis, from the base
        double normalRadial = 1;
        double normalAxial = 0;
    };
    Vector base;
    Vector axis{0, 1, 0};  ///< unit length
    Rim from;
    Rim to;
};

using Shape = std::variant<Sphere, Quad, Frustum>;

/// Where a ray meets a surface.
struct SurfacePoint {
    Vector position;
    Vector geometricNormal;  ///< towards the side that the shape faces
    Vector normal;           ///< for shading; equal to the geometric one on flat shapes
    Vector tangent;          ///< along the grain of brushed metal: around the axis, or edgeU
};

struct Bounds {
    Vector low{1e30, 1e30, 1e30};
    Vector high{-1e30, -1e30, -1e30};

    void include(const Bounds& other);
    Vector center() const { return 0.5 * (low + high); }
    double area() const;
    /// The square of the diagonal.
    double getSize2() const { return lengthSquared(high - low); }
};

Bounds getBounds(const Shape& shape);

/// The distance of the first hit between `nearest` and `farthest`, if any.
std::optional<double> intersect(const Shape& shape, const Ray& ray, double nearest,
                                double farthest);

/// What is at a hit that intersect() has reported.
SurfacePoint getSurfacePoint(const Shape& shape, const Ray& ray, double distance);

}  // namespace tavrin::samples
