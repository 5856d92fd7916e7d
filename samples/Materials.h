#pragma once

#include "samples/Material.h"
#include "samples/Scene.h"

namespace tavrin::samples {

/// The channels of the desk's object mask.
enum DeskMask { kGlassMask = 0, kMetalMask = 1, kCeramicMask = 2 };

Material makeMatt(const Spectrum& color);
Material makeCoated(const Spectrum& color, double roughness, int mask = -1);
Material makePatterned(Function<Material::Pattern(const Vector&)> pattern, int mask = -1);
Material makeMetal(const Spectrum& reflectance, double roughness, double anisotropy = 1);
Material makeGlass(const Spectrum& absorption);
Material makeThinGlass(const Spectrum& tint);
Material makeEmitter(const Spectrum& radiance, LightIndex light);

inline constexpr Spectrum kBrass{0.91, 0.72, 0.40};
inline constexpr Spectrum kSteel{0.72, 0.71, 0.69};
inline constexpr Spectrum kCopper{0.95, 0.62, 0.50};

}  // namespace tavrin::samples
