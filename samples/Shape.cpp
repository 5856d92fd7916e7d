#include "samples/Shape.h"

namespace tavrin::samples {
namespace {

Vector componentMin(const Vector& a, const Vector& b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
}
Vector componentMax(const Vector& a, const Vector& b) {
    return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

Bounds boundsOf(const Sphere& sphere) {
    const Vector extent{sphere.radius, sphere.radius, sphere.radius};
    return {sphere.center - extent, sphere.center + extent};
}

Bounds boundsOf(const Quad& quad) {
    const Vector opposite = quad.corner + quad.edgeU + quad.edgeV;
    const Vector u = quad.corner + quad.edgeU;
    const Vector v = quad.corner + quad.edgeV;
    return {componentMin(componentMin(quad.corner, opposite), componentMin(u, v)),
            componentMax(componentMax(quad.corner, opposite), componentMax(u, v))};
}

Bounds boundsOf(const Frustum& frustum) {
    // A circle of radius r around the axis a reaches r·sqrt(1 − a_i²) along coordinate i.
    const Vector& axis = frustum.axis;
    const auto reach = [](double a) { return std::sqrt(std::max(0.0, 1 - a * a)); };
    const Vector unit{reach(axis.x), reach(axis.y), reach(axis.z)};
    Bounds bounds;
    for (const Frustum::Rim& rim : {frustum.from, frustum.to}) {
        const Vector center = frustum.base + rim.height * axis;
        bounds.include({center - rim.radius * unit, center + rim.radius * unit});
    }
    return bounds;
}

// The first of two ascending roots that lies in the range and is accepted.
template <class Accept>
std::optional<double> firstRoot(double first, double second, double nearest, double farthest,
                                Accept accept) {
    for (const double root : {first, second}) {
        if (root > nearest && root < farthest && accept(root)) {
            return root;
        }
    }
    return std::nullopt;
}

std::optional<double> hit(const Sphere& sphere, const Ray& ray, double nearest, double farthest) {
    const Vector offset = ray.origin - sphere.center;
    const double b = dot(offset, ray.direction);
    const Vector closest = offset - b * ray.direction;
    const double discriminant = sphere.radius * sphere.radius - lengthSquared(closest);
    if (discriminant < 0) {
        return std::nullopt;
    }
    const double root = std::sqrt(discriminant);
    return firstRoot(-b - root, -b + root, nearest, farthest, [](double) { return true; });
}

std::optional<double> hit(const Quad& quad, const Ray& ray, double nearest, double farthest) {
    const Vector normal = cross(quad.edgeU, quad.edgeV);
    const double distance = dot(quad.corner - ray.origin, normal) / dot(ray.direction, normal);
    if (!(distance > nearest && distance < farthest)) {
        return std::nullopt;
    }
    const Vector offset = ray.at(distance) - quad.corner;
    const double scale = 1 / lengthSquared(normal);
    const double u = dot(cross(offset, quad.edgeV), normal) * scale;
    const double v = dot(cross(quad.edgeU, offset), normal) * scale;
    const bool inside = u >= 0 && u <= 1 && v >= 0 && v <= 1;
    return inside ? std::optional(distance) : std::nullopt;
}

std::optional<double> hit(const Frustum& frustum, const Ray& ray, double nearest, double farthest) {
    const Vector offset = ray.origin - frustum.base;
    const double height = dot(offset, frustum.axis);
    const double climb = dot(ray.direction, frustum.axis);
    const Vector across = offset - height * frustum.axis;
    const Vector drift = ray.direction - climb * frustum.axis;
    const double low = std::min(frustum.from.height, frustum.to.height);
    const double high = std::max(frustum.from.height, frustum.to.height);
    if (high - low < 1e-9) {
        const double distance = (low - height) / climb;
        const double distanceFromAxis = length(across + distance * drift);
        const auto [inner, outer] = std::minmax(frustum.from.radius, frustum.to.radius);
        const bool inside = distance > nearest && distance < farthest &&
                            distanceFromAxis >= inner && distanceFromAxis <= outer;
        return inside ? std::optional(distance) : std::nullopt;
    }
    // |across + t·drift|² = (radius + slope·(height + t·climb))², a quadratic in t.
    const double slope =
        (frustum.to.radius - frustum.from.radius) / (frustum.to.height - frustum.from.height);
    const double radius = frustum.from.radius + slope * (height - frustum.from.height);
    const double growth = slope * climb;
    const double a = lengthSquared(drift) - growth * growth;
    const double b = dot(across, drift) - growth * radius;
    const double c = lengthSquared(across) - radius * radius;
    const double discriminant = b * b - a * c;
    if (discriminant < 0) {
        return std::nullopt;
    }
    // Citardauq form: no cancellation where a is near 0.
    const double q = -(b + std::copysign(std::sqrt(discriminant), b));
    const double one = q / a;
    const double other = c / q;
    return firstRoot(std::min(one, other), std::max(one, other), nearest, farthest, [&](double t) {
        const double y = height + t * climb;
        return y >= low && y <= high && radius + growth * t >= 0;
    });
}

SurfacePoint pointOn(const Sphere& sphere, const Vector& position) {
    const Vector normal = normalize(position - sphere.center);
    return {position, normal, normal, Frame::around(normal).tangent};
}

SurfacePoint pointOn(const Quad& quad, const Vector& position) {
    const Vector normal = normalize(cross(quad.edgeU, quad.edgeV));
    return {position, normal, normal, normalize(quad.edgeU)};
}

SurfacePoint pointOn(const Frustum& frustum, const Vector& position) {
    const Vector offset = position - frustum.base;
    const double height = dot(offset, frustum.axis);
    const Vector across = offset - height * frustum.axis;
    const double radius = length(across);
    const Vector radial = radius > 0 ? across / radius : Frame::around(frustum.axis).tangent;

    const double rise = frustum.to.height - frustum.from.height;
    const double growth = frustum.to.radius - frustum.from.radius;
    const double slant = std::hypot(rise, growth);
    const Vector geometric = (rise * radial - growth * frustum.axis) / slant;
    const double t = std::clamp(
        ((height - frustum.from.height) * rise + (radius - frustum.from.radius) * growth) /
            (slant * slant),
        0.0, 1.0);
    const auto between = [t](double a, double b) { return a + t * (b - a); };
    const Vector shading = between(frustum.from.normalRadial, frustum.to.normalRadial) * radial +
                           between(frustum.from.normalAxial, frustum.to.normalAxial) * frustum.axis;
    return {position, geometric, normalize(shading), cross(frustum.axis, radial)};
}

}  // namespace

void Bounds::include(const Bounds& other) {
    low = componentMin(low, other.low);
    high = componentMax(high, other.high);
}

double Bounds::area() const {
    const Vector size = high - low;
    return 2 * (size.x * size.y + size.y * size.z + size.z * size.x);
}

Bounds getBounds(const Shape& shape) {
    return std::visit([](const auto& s) { return boundsOf(s); }, shape);
}

std::optional<double> intersect(const Shape& shape, const Ray& ray, double nearest,
                                double farthest) {
    return std::visit([&](const auto& s) { return hit(s, ray, nearest, farthest); }, shape);
}

SurfacePoint getSurfacePoint(const Shape& shape, const Ray& ray, double distance) {
    return std::visit([&](const auto& s) { return pointOn(s, ray.at(distance)); }, shape);
}

}  // namespace tavrin::samples
