#include "samples/Materials.h"

namespace tavrin::samples {

Material makeMatt(const Spectrum& color) {
    Material material;
    material.color = color;
    return material;
}

Material makeCoated(const Spectrum& color, double roughness, int mask) {
    Material material;
    material.kind = Material::Kind::Coated;
    material.color = color;
    material.roughness = roughness;
    material.maskChannel = mask;
    return material;
}

Material makePatterned(Function<Material::Pattern(const Vector&)> pattern, int mask) {
    Material material;
    material.kind = Material::Kind::Coated;
    material.pattern = std::move(pattern);
    material.maskChannel = mask;
    return material;
}

Material makeMetal(const Spectrum& reflectance, double roughness, double anisotropy) {
    Material material;
    material.kind = Material::Kind::Metal;
    material.color = reflectance;
    material.roughness = roughness;
    material.anisotropy = anisotropy;
    material.maskChannel = kMetalMask;
    return material;
}

Material makeGlass(const Spectrum& absorption) {
    Material material;
    material.kind = Material::Kind::Glass;
    material.refractiveIndex = 1.52;
    material.absorption = absorption;
    material.maskChannel = kGlassMask;
    return material;
}

Material makeThinGlass(const Spectrum& tint) {
    Material material;
    material.kind = Material::Kind::ThinGlass;
    material.color = tint;
    material.maskChannel = kGlassMask;
    return material;
}

Material makeEmitter(const Spectrum& radiance, LightIndex light) {
    Material material;
    material.kind = Material::Kind::Emitter;
    material.color = radiance;
    material.light = light;
    return material;
}

}  // namespace tavrin::samples
