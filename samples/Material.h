#pragma once

#include "foundation/Function.h"
#include "samples/Spectrum.h"
#include "samples/Vector.h"

namespace tavrin::samples {

/// What a surface is made of. Roughness is the GGX alpha.
struct Material {
    enum class Kind {
        Diffuse,  ///< Lambertian, of `color`
        Metal,    ///< GGX conductor; `color` is the reflectance at normal incidence
        Coated,   ///< Lambertian of `color` under a GGX dielectric coat: ceramic, varnish, plastic
        Glass,    ///< smooth solid dielectric; `absorption` per decimetre inside
        ThinGlass,  ///< smooth thin wall that light crosses without bending, tinted by `color`
        Emitter,    ///< emits `color` from its front and scatters nothing
        Opening,    ///< shows `outside` from its front: a window to a distant scene
    };
    /// Colour and roughness at a position in the scene, instead of the constants.
    struct Pattern {
        Spectrum color;
        double roughness;
    };

    Kind kind = Kind::Diffuse;
    Spectrum color = Spectrum::gray(0.5);
    double roughness = 0.1;
    /// Roughness across the grain over roughness along it; above 1 for brushed metal.
    double anisotropy = 1;
    double refractiveIndex = 1.5;
    Spectrum absorption;
    Function<Pattern(const Vector& position)> pattern;    ///< may be empty
    Function<Spectrum(const Vector& direction)> outside;  ///< of an Opening: radiance
    int light = -1;        ///< of an Emitter or Opening: LightIndex of the light it belongs to
    int maskChannel = -1;  ///< 0 to 2: channel of the object mask, −1 for none

    bool emits() const { return kind == Kind::Emitter || kind == Kind::Opening; }
};

}  // namespace tavrin::samples
