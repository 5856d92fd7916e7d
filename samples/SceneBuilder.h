#pragma once

#include "samples/Scene.h"

#include <vector>

namespace tavrin::samples {

/// Collects the objects of a scene and makes common forms of simple shapes.
class SceneBuilder {
public:
    /// A point of a profile: distance from the axis and height along it.
    using ProfilePoint = Point2;
    /// A smooth curve through its points.
    using ProfilePiece = std::vector<ProfilePoint>;

    void addSphere(const Vector& center, double radius, const Material& material);
    void addQuad(const Vector& corner, const Vector& edgeU, const Vector& edgeV,
                 const Material& material);
    /// A cylinder without ends.
    void addCylinder(const Vector& from, const Vector& to, double radius, const Material& material);
    /// A cylinder with round ends.
    void addCapsule(const Vector& from, const Vector& to, double radius, const Material& material);
    /// A box with round edges; half sizes along the frame's tangent, normal and bitangent include
    /// the rounding.
    void addBox(const Vector& center, const Frame& frame, const Vector& halfSize, double rounding,
                const Material& material);
    /// Capsules from point to point.
    void addRod(const std::vector<Vector>& points, double radius, const Material& material);
    /// Cylinders from point to point that overlap enough to close the gaps at the bends.
    void addTube(const std::vector<Vector>& points, double radius, const Material& material);
    /// What a profile sweeps around an axis. Pieces meet in sharp edges; going up gives the outer
    /// side of a vessel, going down its inner side.
    void addLathe(const Vector& base, const Vector& axis, const std::vector<ProfilePiece>& pieces,
                  const Material& material);

    /// The scene; the builder is empty afterwards.
    Scene build(const Scene::Options& options) { return {std::move(objects_), options}; }

private:
    std::vector<Scene::Object> objects_;
};

/// A frame that stands upright, turned by an angle in degrees around the vertical.
Frame uprightFrame(double degrees);

}  // namespace tavrin::samples
