#include "samples/Emitter.h"

namespace tavrin::samples {
namespace {

// 1 − cos of half the angle under which a sphere appears, without cancellation for far spheres.
double coneHeight(const Sphere& sphere, double distanceSquared) {
    const double sine2 = sphere.radius * sphere.radius / distanceSquared;
    return sine2 / (1 + std::sqrt(std::max(0.0, 1 - sine2)));
}

std::optional<EmitterSample> towards(const Vector& lit, const Vector& position,
                                     const Vector& normal, double areaPdf) {
    const Vector offset = position - lit;
    const double distance = length(offset);
    const Vector direction = offset / distance;
    const double cosine = -dot(direction, normal);
    if (!(cosine > 0)) {
        return std::nullopt;
    }
    return EmitterSample{direction, distance, areaPdf * distance * distance / cosine};
}

std::optional<EmitterSample> sampleShape(const Sphere& sphere, const Vector& lit, Point2 u) {
    const Vector offset = sphere.center - lit;
    const double distanceSquared = lengthSquared(offset);
    if (distanceSquared <= sphere.radius * sphere.radius) {
        return std::nullopt;
    }
    const double height = coneHeight(sphere, distanceSquared);
    const double down = u.x * height;
    const double sine = std::sqrt(down * (2 - down));
    const double angle = 2 * kPi * u.y;
    const Frame frame = Frame::around(normalize(offset));
    const Vector direction =
        frame.toWorld({sine * std::cos(angle), sine * std::sin(angle), 1 - down});
    const double along = dot(offset, direction);
    const double across2 = std::max(0.0, distanceSquared - along * along);
    const double depth = std::sqrt(std::max(0.0, sphere.radius * sphere.radius - across2));
    return EmitterSample{direction, along - depth, 1 / (2 * kPi * height)};
}

std::optional<EmitterSample> sampleShape(const Quad& quad, const Vector& lit, Point2 u) {
    const Vector across = cross(quad.edgeU, quad.edgeV);
    const double area = length(across);
    return towards(lit, quad.corner + u.x * quad.edgeU + u.y * quad.edgeV, across / area, 1 / area);
}

// Only the half of the cylinder that is turned to the lit point is sampled; what the point sees is
// always in that half.
std::optional<EmitterSample> sampleShape(const Frustum& cylinder, const Vector& lit, Point2 u) {
    const Vector offset = lit - cylinder.base;
    const Vector across = offset - dot(offset, cylinder.axis) * cylinder.axis;
    const double distanceFromAxis = length(across);
    if (distanceFromAxis <= cylinder.from.radius) {
        return std::nullopt;
    }
    const Vector front = across / distanceFromAxis;
    const double angle = kPi * (u.x - 0.5);
    const Vector radial = std::cos(angle) * front + std::sin(angle) * cross(cylinder.axis, front);
    const double height = cylinder.from.height + u.y * (cylinder.to.height - cylinder.from.height);
    const Vector position = cylinder.base + height * cylinder.axis + cylinder.from.radius * radial;
    return towards(lit, position, radial, 2 / getArea(cylinder));
}

}  // namespace

bool canEmit(const Shape& shape) {
    const auto* frustum = std::get_if<Frustum>(&shape);
    return frustum == nullptr || (frustum->from.radius == frustum->to.radius &&
                                  frustum->from.height < frustum->to.height);
}

double getArea(const Shape& shape) {
    if (const auto* sphere = std::get_if<Sphere>(&shape)) {
        return 4 * kPi * sphere->radius * sphere->radius;
    }
    if (const auto* quad = std::get_if<Quad>(&shape)) {
        return length(cross(quad->edgeU, quad->edgeV));
    }
    const auto& cylinder = std::get<Frustum>(shape);
    return 2 * kPi * cylinder.from.radius * (cylinder.to.height - cylinder.from.height);
}

std::optional<EmitterSample> sampleEmitter(const Shape& shape, const Vector& lit, Point2 u) {
    return std::visit([&](const auto& s) { return sampleShape(s, lit, u); }, shape);
}

double getEmitterPdf(const Shape& shape, const Vector& lit, const SurfacePoint& point) {
    const Vector offset = point.position - lit;
    const double distanceSquared = lengthSquared(offset);
    if (const auto* sphere = std::get_if<Sphere>(&shape)) {
        const double toCenter = lengthSquared(sphere->center - lit);
        return 1 / (2 * kPi * coneHeight(*sphere, toCenter));
    }
    const double areaPdf = (std::holds_alternative<Quad>(shape) ? 1 : 2) / getArea(shape);
    const double cosine = -dot(offset, point.geometricNormal) / std::sqrt(distanceSquared);
    return areaPdf * distanceSquared / cosine;
}

}  // namespace tavrin::samples
