#include "samples/SceneBuilder.h"

namespace tavrin::samples {
namespace {

constexpr int kStepsPerSpan = 6;

// A point of the Catmull–Rom curve (1974) through the points of a profile, with the profile's
// normal there.
Frustum::Rim pointOfProfile(const SceneBuilder::ProfilePiece& points, std::size_t span, double t) {
    const std::size_t last = points.size() - 1;
    const Point2 p1 = points[span];
    const Point2 p2 = points[span + 1];
    const auto extended = [](const Point2& end, const Point2& next) {
        return Point2{2 * end.x - next.x, 2 * end.y - next.y};
    };
    const Point2 p0 = span == 0 ? extended(p1, p2) : points[span - 1];
    const Point2 p3 = span + 1 == last ? extended(p2, p1) : points[span + 2];
    const auto value = [t](double a, double b, double c, double d) {
        return b + 0.5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
    };
    const auto slope = [t](double a, double b, double c, double d) {
        return 0.5 * (c - a) + t * (2 * a - 5 * b + 4 * c - d) +
               1.5 * t * t * (3 * (b - c) + d - a);
    };
    const double dr = slope(p0.x, p1.x, p2.x, p3.x);
    const double dy = slope(p0.y, p1.y, p2.y, p3.y);
    const double size = std::hypot(dr, dy);
    return {std::max(0.0, value(p0.x, p1.x, p2.x, p3.x)), value(p0.y, p1.y, p2.y, p3.y), dy / size,
            -dr / size};
}

}  // namespace

void SceneBuilder::addSphere(const Vector& center, double radius, const Material& material) {
    objects_.push_back({Sphere{center, radius}, material});
}

void SceneBuilder::addQuad(const Vector& corner, const Vector& edgeU, const Vector& edgeV,
                           const Material& material) {
    objects_.push_back({Quad{corner, edgeU, edgeV}, material});
}

void SceneBuilder::addCylinder(const Vector& from, const Vector& to, double radius,
                               const Material& material) {
    const double height = length(to - from);
    objects_.push_back(
        {Frustum{from, (to - from) / height, {radius, 0, 1, 0}, {radius, height, 1, 0}}, material});
}

void SceneBuilder::addCapsule(const Vector& from, const Vector& to, double radius,
                              const Material& material) {
    addCylinder(from, to, radius, material);
    addSphere(from, radius, material);
    addSphere(to, radius, material);
}

void SceneBuilder::addBox(const Vector& center, const Frame& frame, const Vector& halfSize,
                          double rounding, const Material& material) {
    const Vector axes[3] = {frame.tangent, frame.normal, frame.bitangent};
    const double half[3] = {halfSize.x, halfSize.y, halfSize.z};
    for (int i = 0; i < 3; ++i) {
        const int j = (i + 1) % 3;
        const int k = (i + 2) % 3;
        const Vector along = (half[i] - rounding) * axes[i];
        const Vector u = (half[j] - rounding) * axes[j];
        const Vector v = (half[k] - rounding) * axes[k];
        for (const double side : {-1.0, 1.0}) {
            const Vector face = center + side * half[i] * axes[i];
            addQuad(face - u - v, 2 * u, 2 * v, material);
            for (const double other : {-1.0, 1.0}) {
                const Vector edge = center + side * u + other * v;
                addCapsule(edge - along, edge + along, rounding, material);
            }
        }
    }
}

void SceneBuilder::addRod(const std::vector<Vector>& points, double radius,
                          const Material& material) {
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        addCapsule(points[i], points[i + 1], radius, material);
    }
}

void SceneBuilder::addTube(const std::vector<Vector>& points, double radius,
                           const Material& material) {
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const Vector overlap = 0.1 * radius * normalize(points[i + 1] - points[i]);
        addCylinder(points[i] - overlap, points[i + 1] + overlap, radius, material);
    }
}

void SceneBuilder::addLathe(const Vector& base, const Vector& axis,
                            const std::vector<ProfilePiece>& pieces, const Material& material) {
    for (const ProfilePiece& piece : pieces) {
        const int steps = piece.size() == 2 ? 1 : kStepsPerSpan;
        Frustum::Rim from = pointOfProfile(piece, 0, 0);
        for (std::size_t span = 0; span + 1 < piece.size(); ++span) {
            for (int step = 1; step <= steps; ++step) {
                const Frustum::Rim to = pointOfProfile(piece, span, double(step) / steps);
                objects_.push_back({Frustum{base, axis, from, to}, material});
                from = to;
            }
        }
    }
}

Frame uprightFrame(double degrees) {
    const double angle = degrees * kPi / 180;
    const Vector tangent{std::cos(angle), 0, -std::sin(angle)};
    return {tangent, cross({0, 1, 0}, tangent), {0, 1, 0}};
}

}  // namespace tavrin::samples
