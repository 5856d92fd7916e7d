#pragma once

#include "samples/Material.h"

namespace tavrin::samples {

/// Varnished walnut boards that lie along x.
Material::Pattern walnut(const Vector& position);
/// Dark plaster with the marks of the trowel.
Material::Pattern plaster(const Vector& position);
/// A glaze whose colour runs from one hue at the foot to another at the rim, with fine crackle.
Material::Pattern runningGlaze(const Vector& position, double foot, double rim, const Spectrum& low,
                               const Spectrum& high);
/// The cut edges of a book's pages.
Material::Pattern pageEdges(const Vector& position);
/// Woven book cloth of a colour.
Material::Pattern bookCloth(const Vector& position, const Spectrum& color);

/// Radiance of a city after sunset, seen along a direction out of the window (towards −z).
Spectrum eveningCity(const Vector& direction);

}  // namespace tavrin::samples
