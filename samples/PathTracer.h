#pragma once

#include "samples/Bsdf.h"
#include "samples/Camera.h"
#include "samples/Scene.h"

namespace tavrin::samples {

/// What one sample of one pixel has found.
struct PathSample {
    PerLight<Spectrum> radiance;  ///< by the light that it came from
    bool covered = false;         ///< something is seen, if only the distance in a window
    bool hit = false;             ///< a surface is seen
    Vector normal;                ///< camera space, of the first surface; 0 without a hit
    /// Colour of the first surface that is not clear glass, seen through it; emitters show their
    /// hue, scaled to at most 1; 0 where the outside is seen.
    Spectrum albedo;
    double depth = 0;      ///< along the camera's axis, of the first surface
    int maskChannel = -1;  ///< of the first surface
    int rays = 0;          ///< traced, shadow rays included
};

/// Unidirectional path tracing (Kajiya 1986) with light sampling and multiple importance sampling
/// by the power heuristic (Veach and Guibas 1995).
class PathTracer {
public:
    PathTracer(const Scene& scene, const Camera& camera) : scene_(scene), camera_(camera) {}

    PathSample trace(Pixel pixel, Sampler& sampler) const;

private:
    struct Path;

    void addEmission(const Hit& hit, Path& path) const;
    void addSurroundings(Path& path) const;
    void addLights(const Hit& hit, const Bsdf& bsdf, Path& path) const;
    void addLight(int light, const Hit& hit, const Bsdf& bsdf, Path& path) const;
    bool scatter(const Hit& hit, const Bsdf& bsdf, Path& path) const;
    void recordFirstHit(const Hit& hit, Path& path) const;

    const Scene& scene_;
    const Camera& camera_;
};

}  // namespace tavrin::samples
