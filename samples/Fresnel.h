#pragma once

#include <algorithm>
#include <cmath>

namespace tavrin::samples {

/// Schlick's approximation (1994) of the reflectance at an angle of incidence with this cosine.
inline double fresnelSchlick(double normalReflectance, double cosine) {
    const double rest = 1 - std::min(cosine, 1.0);
    const double square = rest * rest;
    return normalReflectance + (1 - normalReflectance) * square * square * rest;
}

/// The reflectance of a dielectric at normal incidence, by its relative refractive index.
inline double normalReflectance(double eta) {
    const double ratio = (eta - 1) / (eta + 1);
    return ratio * ratio;
}

/// The share of unpolarised light that a smooth dielectric reflects. cosine: of the angle of
/// incidence, 0 to 1; eta: refractive index behind the surface over that before it.
inline double fresnelDielectric(double cosine, double eta) {
    const double sine2 = (1 - cosine * cosine) / (eta * eta);
    if (sine2 >= 1) {
        return 1;
    }
    const double inner = std::sqrt(1 - sine2);
    const double parallel = (eta * cosine - inner) / (eta * cosine + inner);
    const double perpendicular = (cosine - eta * inner) / (cosine + eta * inner);
    return 0.5 * (parallel * parallel + perpendicular * perpendicular);
}

/// The same for a thin wall, with all reflections between its two sides: R = 2F / (1 + F).
inline double fresnelThinWall(double cosine, double eta) {
    const double single = fresnelDielectric(cosine, eta);
    return 2 * single / (1 + single);
}

}  // namespace tavrin::samples
