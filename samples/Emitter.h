#pragma once

#include "samples/Sampler.h"
#include "samples/Shape.h"

#include <optional>

namespace tavrin::samples {

/// A direction towards a light-emitting shape.
struct EmitterSample {
    Vector direction;     ///< unit length, away from the lit point
    double distance = 0;  ///< to the shape, in decimetres
    double pdf = 0;       ///< per solid angle at the lit point
};

/// True for the shapes that light can be sampled from: spheres, quads and cylinders.
bool canEmit(const Shape& shape);
/// The area that emits.
double getArea(const Shape& shape);
/// Picks a point of the shape's front as seen from a lit point, if there is one to be seen.
std::optional<EmitterSample> sampleEmitter(const Shape& shape, const Vector& lit, Point2 u);
/// The density with which sampleEmitter picks `position`, a point of the shape's front that the lit
/// point sees; per solid angle.
double getEmitterPdf(const Shape& shape, const Vector& lit, const SurfacePoint& position);

}  // namespace tavrin::samples
