#pragma once

#include "samples/Material.h"
#include "samples/Microfacet.h"
#include "samples/Sampler.h"
#include "samples/Shape.h"

#include <optional>

namespace tavrin::samples {

/// How one point of a surface scatters light towards one direction. Directions are unit vectors in
/// world space that leave the surface.
class Bsdf {
public:
    /// The scattered share × the cosine at the surface, and the density with which sample() picks
    /// the direction, per solid angle.
    struct Value {
        Spectrum weighted;
        double pdf = 0;
    };
    struct Sample {
        Vector direction;
        Spectrum throughput;   ///< weighted / pdf
        double pdf = 0;        ///< 0: a mirror direction, that evaluate() does not know
        bool crosses = false;  ///< went straight through a thin wall
    };

    /// `out` points to where the light goes. Opaque surfaces have two equal sides. A roughness
    /// below the least one counts as that.
    Bsdf(const Material& material, const SurfacePoint& point, const Vector& out,
         double leastRoughness = 0);

    /// True when only mirror directions scatter, so that light sampling is pointless.
    bool isSpecular() const;
    Value evaluate(const Vector& in) const;
    /// Nothing where the picked direction carries no light.
    std::optional<Sample> sample(Sampler& sampler) const;
    /// The colour of the surface under white light from everywhere, near normal incidence.
    const Spectrum& getAlbedo() const { return color_; }

private:
    Value evaluateLocal(const Vector& in) const;
    Spectrum reflectance(double cosine) const;
    Spectrum diffuse(const Vector& in) const;
    double coatProbability() const;
    Sample sampleGlass(Sampler& sampler) const;
    Sample sampleThinGlass(Sampler& sampler) const;

    Material::Kind kind_;
    Spectrum color_;
    Frame frame_;             ///< normal on the side of `out`, except of glass
    Vector geometricNormal_;  ///< on the side of `out`
    Vector out_;              ///< local
    Microfacet facets_;
    double eta_;  ///< refractive index behind the surface over that on out's side
};

}  // namespace tavrin::samples
