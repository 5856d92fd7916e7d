#pragma once

#include "samples/Vector.h"

namespace tavrin::samples {

/// The GGX distribution of microfacet normals with the height-correlated Smith masking
/// (Heitz 2014, "Understanding the masking-shadowing function"). Directions are local, z up.
class Microfacet {
public:
    /// The roughness along x and y; values below 0.01 count as that.
    Microfacet(double alphaX, double alphaY)
        : alphaX_(std::max(alphaX, 0.01)), alphaY_(std::max(alphaY, 0.01)) {}

    double density(const Vector& half) const;
    /// The visible share of the facets towards one direction.
    double masking(const Vector& direction) const { return 1 / (1 + lambda(direction)); }
    double maskingAndShadowing(const Vector& out, const Vector& in) const {
        return 1 / (1 + lambda(out) + lambda(in));
    }
    /// A facet normal seen from `out` (Heitz 2018, "Sampling the GGX distribution of visible
    /// normals"); its reflection has the density reflectionPdf per solid angle.
    Vector sampleVisible(const Vector& out, Point2 u) const;
    double reflectionPdf(const Vector& out, const Vector& half) const {
        return density(half) * masking(out) / (4 * out.z);
    }

private:
    double lambda(const Vector& direction) const;

    double alphaX_;
    double alphaY_;
};

}  // namespace tavrin::samples
