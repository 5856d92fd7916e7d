#pragma once

#include "samples/Bvh.h"
#include "samples/Emitter.h"
#include "samples/Material.h"

#include <array>
#include <vector>

namespace tavrin::samples {

/// The lights that every scene may have, by their numbers.
enum LightIndex { kKeyLight = 0, kWindowLight = 1, kNeonLight = 2, kFilamentLight = 3 };
inline constexpr int kLightCount = 4;
inline constexpr std::array<const char*, kLightCount> kLightNames{"Key", "Window", "Neon",
                                                                  "Filament"};

/// One value per light.
template <class T>
using PerLight = std::array<T, kLightCount>;

/// A hit of a ray with the scene.
struct Hit {
    double distance = 0;
    std::uint32_t shape = 0;
    const Material* material = nullptr;
    SurfacePoint point;
};

/// Light that arrives at a point if nothing is in the way.
struct IncomingLight {
    EmitterSample sample;  ///< its pdf includes the choice among the light's shapes
    Spectrum radiance;
};

/// Shapes with their materials, and the lights that the emitting ones make up. Immutable: any
/// thread may ask.
class Scene {
public:
    struct Object {
        Shape shape;
        Material material;
    };
    struct Options {
        /// Radiance that arrives from everywhere outside, as part of the window's light.
        Spectrum surroundings;
        /// Lights whose focused reflections and refractions on matt surfaces are left out, because
        /// they are too small to be found by chance; in exchange they shine through glass without
        /// being bent.
        PerLight<bool> withoutCaustics{};
    };

    Scene(std::vector<Object> objects, Options options);

    const Options& getOptions() const { return options_; }
    std::optional<Hit> intersect(const Ray& ray) const;

    /// Radiance that leaves a hit towards where the ray came from, 0 from an emitter's back.
    static Spectrum getEmission(const Hit& hit, const Ray& ray);
    /// Picks a direction from which a light shines at a point; nothing when the light has no
    /// shapes or the picked one is turned away.
    std::optional<IncomingLight> sampleLight(int light, const Vector& lit, Sampler& sampler) const;
    /// The density with which sampleLight picks an emitting hit.
    double getLightPdf(const Hit& hit, const Vector& lit) const;
    /// How much each light may contribute at a point, in proportion; the sum is 1, or 0 when there
    /// are no lights.
    PerLight<double> estimateLightShares(const Vector& lit) const;
    /// The share of light that passes from one point to another in a straight line.
    Spectrum getTransmittance(const Ray& ray, double distance, int light) const;

private:
    struct Emitter {
        std::uint32_t shape;
        double area;
        Vector center;
        double size2;  ///< square of the distance from the centre to a corner

        /// About how much of its light may reach a point; emitters are chosen in proportion.
        double getReach(const Vector& lit) const {
            return area / (lengthSquared(center - lit) + size2);
        }
    };
    struct Light {
        std::vector<Emitter> emitters;
        double power = 0;
        Bounds bounds;

        double getReach(const Vector& lit) const {
            double sum = 0;
            for (const Emitter& emitter : emitters) {
                sum += emitter.getReach(lit);
            }
            return sum;
        }
    };

    static Bvh makeTree(const std::vector<Object>& objects);
    void addToLight(std::uint32_t index);

    Options options_;
    std::vector<Material> materials_;
    Bvh tree_;
    PerLight<Light> lights_;
    std::vector<std::uint32_t> emitterOfShape_;  ///< index in its light's emitters
};

}  // namespace tavrin::samples
