#include "samples/Bsdf.h"

#include <gtest/gtest.h>

#include <string>

namespace tavrin::samples {
namespace {

struct Case {
    std::string name;
    Material material;
    double cosine;  ///< of the angle between the normal and the outgoing direction
};

Material make(Material::Kind kind, double roughness, double color = 1, double anisotropy = 1) {
    Material material;
    material.kind = kind;
    material.roughness = roughness;
    material.color = Spectrum::gray(color);
    material.anisotropy = anisotropy;
    return material;
}

SurfacePoint flatPoint() {
    return {{0, 0, 0}, {0, 0, 1}, {0, 0, 1}, {1, 0, 0}};
}

Vector outgoing(double cosine) {
    const double sine = std::sqrt(1 - cosine * cosine);
    return {0.8 * sine, 0.6 * sine, cosine};
}

class BsdfSampling : public testing::TestWithParam<Case> {
protected:
    Bsdf bsdf_{GetParam().material, flatPoint(), outgoing(GetParam().cosine)};
    Sampler sampler_{11, {1, 2}, 3};
};

// Cells of equal solid angle over the hemisphere; each must get the share of sampled directions
// that the density predicts.
TEST_P(BsdfSampling, FollowsItsDensity) {
    constexpr int kRings = 6;
    constexpr int kSectors = 8;
    constexpr int kSamples = 60000;
    const auto cellOf = [](const Vector& d) {
        const int ring = std::min(int(d.z * kRings), kRings - 1);
        const double turn = std::atan2(d.y, d.x) / (2 * kPi) + 0.5;
        return std::size_t(ring * kSectors + std::min(int(turn * kSectors), kSectors - 1));
    };
    std::array<double, kRings * kSectors> expected{};
    std::array<double, kRings * kSectors> found{};
    constexpr int kFine = 600;
    for (int i = 0; i < kFine; ++i) {
        for (int j = 0; j < kFine; ++j) {
            const double z = (i + 0.5) / kFine;
            const double angle = 2 * kPi * (j + 0.5) / kFine;
            const double sine = std::sqrt(1 - z * z);
            const Vector direction{sine * std::cos(angle), sine * std::sin(angle), z};
            expected[cellOf(direction)] +=
                bsdf_.evaluate(direction).pdf * 2 * kPi / (kFine * kFine);
        }
    }
    for (int i = 0; i < kSamples; ++i) {
        if (const auto sample = bsdf_.sample(sampler_)) {
            found[cellOf(sample->direction)] += 1.0 / kSamples;
        }
    }
    for (std::size_t cell = 0; cell < found.size(); ++cell) {
        const double deviation = std::sqrt(expected[cell] / kSamples);
        EXPECT_NEAR(found[cell], expected[cell], 5 * deviation + 2e-3) << cell;
    }
}

// Two estimates of the reflected share of uniform light: by sample() and over uniform directions.
TEST_P(BsdfSampling, ReflectsWhatEvaluateSays) {
    constexpr int kSamples = 200000;
    double sampled = 0;
    double uniform = 0;
    for (int i = 0; i < kSamples; ++i) {
        if (const auto sample = bsdf_.sample(sampler_)) {
            sampled += sample->throughput.g / kSamples;
            const auto value = bsdf_.evaluate(sample->direction);
            EXPECT_NEAR(sample->pdf, value.pdf, 1e-6 * value.pdf);
        }
        const Point2 u = sampler_.nextPoint();
        const double sine = std::sqrt(1 - u.x * u.x);
        const double angle = 2 * kPi * u.y;
        uniform +=
            bsdf_.evaluate({sine * std::cos(angle), sine * std::sin(angle), u.x}).weighted.g * 2 *
            kPi / kSamples;
    }
    EXPECT_NEAR(sampled, uniform, 0.03 * sampled);
    EXPECT_LE(sampled, 1.002);
}

TEST_P(BsdfSampling, IsReciprocal) {
    for (int i = 0; i < 200; ++i) {
        const Point2 u = sampler_.nextPoint();
        const double sine = std::sqrt(1 - u.x * u.x);
        const Vector in{sine * std::cos(6 * u.y), sine * std::sin(6 * u.y), std::max(u.x, 0.05)};
        const Vector other = normalize(in);
        const Vector out = outgoing(GetParam().cosine);
        const Bsdf reversed(GetParam().material, flatPoint(), other);
        const double forward = bsdf_.evaluate(other).weighted.r / other.z;
        EXPECT_NEAR(reversed.evaluate(out).weighted.r / out.z, forward, 1e-9 + 1e-6 * forward);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Opaque, BsdfSampling,
    testing::Values(Case{"matt", make(Material::Kind::Diffuse, 0, 0.7), 0.6},
                    Case{"metal", make(Material::Kind::Metal, 0.4), 0.9},
                    Case{"roughMetalGrazing", make(Material::Kind::Metal, 0.7), 0.2},
                    Case{"brushedMetal", make(Material::Kind::Metal, 0.4, 0.8, 3), 0.5},
                    Case{"glazed", make(Material::Kind::Coated, 0.3, 0.5), 0.7},
                    Case{"roughCoatGrazing", make(Material::Kind::Coated, 0.5, 0.9), 0.25}),
    [](const auto& info) { return info.param.name; });

// The shares that single reflections between the facets of a white metal leave, integrated
// numerically (400 × 400 directions) from the formulas of Walter et al. 2007 and Heitz 2014.
TEST(Bsdf, WhiteMetalReflectsTheKnownShare) {
    struct Case {
        double roughness;
        double cosine;
        double reflected;
    };
    for (const Case& c :
         {Case{0.02, 0.8, 0.9994}, Case{0.6, 0.8, 0.6005}, Case{0.6, 0.2, 0.7609}}) {
        const Bsdf metal(make(Material::Kind::Metal, c.roughness), flatPoint(), outgoing(c.cosine));
        Sampler sampler(1, {0, 0}, 0);
        constexpr int kSamples = 100000;
        double reflected = 0;
        for (int i = 0; i < kSamples; ++i) {
            const auto sample = metal.sample(sampler);
            reflected += sample ? sample->throughput.r / kSamples : 0;
        }
        EXPECT_NEAR(reflected, c.reflected, 5e-3) << c.roughness << ' ' << c.cosine;
    }
}

TEST(Bsdf, GlassRefractsBySnellsLaw) {
    Material glass = make(Material::Kind::Glass, 0);
    glass.refractiveIndex = 1.5;
    const double sine = 0.6;
    const Bsdf bsdf(glass, flatPoint(), {sine, 0, 0.8});
    Sampler sampler(5, {0, 0}, 0);
    int refracted = 0;
    constexpr int kSamples = 20000;
    for (int i = 0; i < kSamples; ++i) {
        const auto sample = bsdf.sample(sampler);
        ASSERT_TRUE(sample);
        EXPECT_EQ(sample->throughput.r, 1);
        if (sample->direction.z < 0) {
            ++refracted;
            EXPECT_NEAR(sample->direction.x, -sine / 1.5, 1e-12);
        } else {
            EXPECT_NEAR(sample->direction.x, -sine, 1e-12);
        }
    }
    // Fresnel at sin 0.6, cosines 0.8 and 0.916515 inside: r_s = -0.264291, r_p = 0.133939.
    EXPECT_NEAR(1 - double(refracted) / kSamples, 0.0439, 0.006);
}

TEST(Bsdf, ThinGlassLetsLightGoStraight) {
    const Vector out{0.6, 0, 0.8};
    const Bsdf bsdf(make(Material::Kind::ThinGlass, 0), flatPoint(), out);
    Sampler sampler(5, {0, 0}, 0);
    for (int i = 0; i < 100; ++i) {
        const auto sample = bsdf.sample(sampler);
        ASSERT_TRUE(sample);
        EXPECT_EQ(sample->crosses, sample->direction.z < 0);
        if (sample->crosses) {
            EXPECT_NEAR(length(sample->direction + out), 0, 1e-12);
        }
    }
}

}  // namespace
}  // namespace tavrin::samples
