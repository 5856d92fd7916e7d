#include "samples/DeskScene.h"
#include "samples/Materials.h"
#include "samples/Scene.h"
#include "samples/SceneBuilder.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tavrin::samples {
namespace {

// Whatever sampleLight picks, a ray finds with the density and radiance that were told.
TEST(Scene, LightSamplesAgreeWithHits) {
    const Scene scene = makeDeskScene();
    Sampler sampler(2, {0, 0}, 0);
    for (int light = 0; light < kLightCount; ++light) {
        int reached = 0;
        int seen = 0;
        for (int i = 0; i < 2000; ++i) {
            const Vector lit{4 * sampler.next() - 2, 2.8, 3 * sampler.next()};
            const auto incoming = scene.sampleLight(light, lit, sampler);
            if (!incoming) {
                continue;
            }
            const Ray ray{lit, incoming->sample.direction};
            constexpr double kMargin = 1e-5;
            const auto passed =
                scene.getTransmittance(ray, incoming->sample.distance - kMargin, light);
            reached += passed.isBlack() ? 0 : 1;
            const auto hit = scene.intersect(ray);
            ASSERT_TRUE(hit);
            if (std::abs(hit->distance - incoming->sample.distance) > 1e-6 ||
                !hit->material->emits()) {
                continue;  // something stands before it
            }
            ++seen;
            EXPECT_EQ(hit->material->light, light);
            EXPECT_NEAR(scene.getLightPdf(*hit, lit), incoming->sample.pdf,
                        1e-4 * incoming->sample.pdf);
            EXPECT_EQ(Scene::getEmission(*hit, ray).g, incoming->radiance.g);
        }
        EXPECT_GT(reached, 300) << kLightNames[std::size_t(light)];
        // Rays to the filament meet the glass of its bulb first.
        EXPECT_EQ(seen > 300, light != kFilamentLight) << kLightNames[std::size_t(light)];
    }
}

TEST(Scene, LightSharesAreProbabilities) {
    const Scene scene = makeDeskScene();
    const auto shares = scene.estimateLightShares({0.3, 0.5, 1});
    EXPECT_NEAR(std::accumulate(shares.begin(), shares.end(), 0.0), 1, 1e-12);
    for (const double share : shares) {
        EXPECT_GT(share, 0.005);
    }
    const auto none = SceneBuilder().build({}).estimateLightShares({});
    EXPECT_EQ(std::accumulate(none.begin(), none.end(), 0.0), 0);
}

TEST(Scene, OnlyGlassLetsShadowRaysThrough) {
    const Ray ray{{0, 0, 5}, {0, 0, -1}};
    const auto transmittance = [&](const Material& material, bool withoutCaustics) {
        SceneBuilder builder;
        builder.addSphere({0, 0, 0}, 1, material);
        Scene::Options options;
        options.withoutCaustics[kKeyLight] = withoutCaustics;
        return builder.build(options).getTransmittance(ray, 9, kKeyLight).r;
    };
    EXPECT_EQ(transmittance(makeMatt(Spectrum::gray(1)), true), 0);
    EXPECT_EQ(transmittance(makeGlass({}), false), 0);
    // Both walls, at normal incidence: F = ((n − 1) / (n + 1))², thin walls 2F / (1 + F) each.
    const double f = 0.04;
    EXPECT_NEAR(transmittance(makeThinGlass(Spectrum::gray(0.9)), false),
                std::pow(0.9 * (1 - 2 * f / (1 + f)), 2), 1e-12);
    const double f2 = std::pow(0.52 / 2.52, 2);
    EXPECT_NEAR(transmittance(makeGlass({}), true), std::pow(1 - f2, 2), 1e-12);
}

}  // namespace
}  // namespace tavrin::samples
