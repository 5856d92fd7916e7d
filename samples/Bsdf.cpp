#include "samples/Bsdf.h"

#include "samples/Fresnel.h"

namespace tavrin::samples {
namespace {

Vector reflect(const Vector& out, const Vector& half) {
    return 2 * dot(out, half) * half - out;
}

// Points of the unit disc, projected up: density cosine / π (Malley's method).
Vector sampleCosine(Point2 u) {
    const double radius = std::sqrt(u.x);
    const double angle = 2 * kPi * u.y;
    return {radius * std::cos(angle), radius * std::sin(angle), std::sqrt(1 - u.x)};
}

Microfacet facetsOf(const Material& material, double roughness) {
    const double stretch = std::sqrt(material.anisotropy);
    return {roughness / stretch, roughness * stretch};
}

Material::Pattern patternOf(const Material& material, const Vector& position) {
    return material.pattern ? material.pattern(position)
                            : Material::Pattern{material.color, material.roughness};
}

}  // namespace

Bsdf::Bsdf(const Material& material, const SurfacePoint& point, const Vector& out,
           double leastRoughness)
    : kind_(material.kind), facets_(1, 1), eta_(material.refractiveIndex) {
    const Material::Pattern pattern = patternOf(material, point.position);
    color_ = pattern.color;
    facets_ = facetsOf(material, std::max(pattern.roughness, leastRoughness));
    const bool front = dot(out, point.geometricNormal) >= 0;
    if (!front && kind_ == Material::Kind::Glass) {
        eta_ = 1 / eta_;
    }
    geometricNormal_ = front ? point.geometricNormal : -point.geometricNormal;
    Vector normal = front ? point.normal : -point.normal;
    if (dot(out, normal) < 1e-4) {
        normal = geometricNormal_;  // an interpolated normal that turns away from the eye
    }
    frame_ = Frame::along(normal, point.tangent);
    out_ = frame_.toLocal(out);
    out_.z = std::max(out_.z, 1e-6);
}

bool Bsdf::isSpecular() const {
    return kind_ == Material::Kind::Glass || kind_ == Material::Kind::ThinGlass;
}

Spectrum Bsdf::reflectance(double cosine) const {
    if (kind_ == Material::Kind::Coated) {
        return Spectrum::gray(fresnelSchlick(normalReflectance(eta_), cosine));
    }
    return {fresnelSchlick(color_.r, cosine), fresnelSchlick(color_.g, cosine),
            fresnelSchlick(color_.b, cosine)};
}

// Under a coat only what the coat lets in and out again is left, in the reciprocal form of Kelemen
// and Szirmay-Kalos 2001; (20/21)(1 − R0) is the cosine-weighted mean of 1 − Schlick's formula.
Spectrum Bsdf::diffuse(const Vector& in) const {
    if (kind_ == Material::Kind::Diffuse) {
        return color_ * (1 / kPi);
    }
    const double r0 = normalReflectance(eta_);
    const double passed = (1 - fresnelSchlick(r0, in.z)) * (1 - fresnelSchlick(r0, out_.z));
    return color_ * (passed / (kPi * (1 - r0) * 20 / 21));
}

// The probability of sampling the coat or metal rather than what lies under it.
double Bsdf::coatProbability() const {
    switch (kind_) {
        case Material::Kind::Metal:
            return 1;
        case Material::Kind::Coated: {
            const double coat = fresnelSchlick(normalReflectance(eta_), out_.z);
            return coat / (coat + (1 - coat) * color_.mean());
        }
        default:
            return 0;
    }
}

Bsdf::Value Bsdf::evaluateLocal(const Vector& in) const {
    Value value;
    if (in.z <= 0) {
        return value;
    }
    const double coat = coatProbability();
    if (coat > 0) {
        const Vector half = normalize(in + out_);
        const double facets = facets_.density(half) * facets_.maskingAndShadowing(out_, in);
        value.weighted += reflectance(dot(out_, half)) * (facets / (4 * out_.z));
        value.pdf += coat * facets_.reflectionPdf(out_, half);
    }
    if (coat < 1) {
        value.weighted += diffuse(in) * in.z;
        value.pdf += (1 - coat) * in.z / kPi;
    }
    return value;
}

Bsdf::Value Bsdf::evaluate(const Vector& in) const {
    if (isSpecular() || dot(in, geometricNormal_) <= 0) {
        return {};
    }
    return evaluateLocal(frame_.toLocal(in));
}

std::optional<Bsdf::Sample> Bsdf::sample(Sampler& sampler) const {
    if (kind_ == Material::Kind::Glass) {
        return sampleGlass(sampler);
    }
    if (kind_ == Material::Kind::ThinGlass) {
        return sampleThinGlass(sampler);
    }
    const bool coat = sampler.next() < coatProbability();
    const Point2 u = sampler.nextPoint();
    const Vector in = coat ? reflect(out_, facets_.sampleVisible(out_, u)) : sampleCosine(u);
    const Vector direction = frame_.toWorld(in);
    const Value value = evaluateLocal(in);
    if (value.pdf <= 0 || dot(direction, geometricNormal_) <= 0) {
        return std::nullopt;
    }
    return Sample{direction, value.weighted * (1 / value.pdf), value.pdf};
}

// The factor eta² of radiance that enters and leaves a dielectric is left out: the eye and the
// lights are outside, so it cancels along every path.
Bsdf::Sample Bsdf::sampleGlass(Sampler& sampler) const {
    const double reflected = fresnelDielectric(out_.z, eta_);
    if (sampler.next() < reflected) {
        return {frame_.toWorld({-out_.x, -out_.y, out_.z}), Spectrum::gray(1)};
    }
    const double x = -out_.x / eta_;
    const double y = -out_.y / eta_;
    const double z = -std::sqrt(std::max(0.0, 1 - x * x - y * y));
    return {frame_.toWorld({x, y, z}), Spectrum::gray(1)};
}

Bsdf::Sample Bsdf::sampleThinGlass(Sampler& sampler) const {
    if (sampler.next() < fresnelThinWall(out_.z, eta_)) {
        return {frame_.toWorld({-out_.x, -out_.y, out_.z}), Spectrum::gray(1)};
    }
    return {frame_.toWorld(-out_), color_, 0, true};
}

}  // namespace tavrin::samples
