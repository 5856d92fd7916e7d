#include "samples/Materials.h"
#include "samples/PathTracer.h"
#include "samples/PixelStatistics.h"
#include "samples/SceneBuilder.h"

#include <gtest/gtest.h>

namespace tavrin::samples {
namespace {

Camera::View lookAt(const Vector& eye, const Vector& target, double degrees) {
    return {eye, target, degrees, 0, 1};
}

PixelStatistics traceOnePixel(const Scene& scene, const Camera::View& view, int samples) {
    const Camera camera(view, {1, 1});
    const PathTracer tracer(scene, camera);
    PixelStatistics statistics;
    for (int i = 0; i < samples; ++i) {
        Sampler sampler(1, {0, 0}, static_cast<std::uint32_t>(i));
        statistics.add(tracer.trace({0, 0}, sampler));
    }
    return statistics;
}

Scene::Options uniformLight(double radiance) {
    Scene::Options options;
    options.surroundings = Spectrum::gray(radiance);
    return options;
}

// In uniform light nothing is brighter than the light, and what absorbs nothing vanishes in it.
TEST(Furnace, WhiteObjectsShowTheSurroundings) {
    struct Case {
        const char* name;
        Material material;
        double least;
    };
    const Case cases[] = {{"matt", makeMatt(Spectrum::gray(1)), 0.999},
                          {"glass", makeGlass({}), 0.999},
                          {"thin glass", makeThinGlass(Spectrum::gray(1)), 0.999},
                          {"polished metal", makeMetal(Spectrum::gray(1), 0.05), 0.99},
                          {"rough metal", makeMetal(Spectrum::gray(1), 0.6), 0.59},
                          {"white glaze", makeCoated(Spectrum::gray(1), 0.1), 0.9}};
    for (const Case& c : cases) {
        SceneBuilder builder;
        builder.addSphere({0, 0, 0}, 1, c.material);
        const Scene scene = builder.build(uniformLight(2));
        const auto statistics = traceOnePixel(scene, lookAt({0, 0, 6}, {0, 0, 0}, 12), 6000);
        const double seen = statistics.getLight(kWindowLight).getMean(1) / 2;
        EXPECT_LE(seen, 1.003) << c.name;
        EXPECT_GE(seen, c.least) << c.name;
    }
}

// A matt surface of reflectance rho under irradiance E shows the radiance rho E / pi.
void expectIrradiance(const Scene& scene, LightIndex light, double expected) {
    const auto statistics = traceOnePixel(scene, lookAt({3, 3, 3}, {0, 0, 0}, 0.05), 40000);
    const double deviation = std::sqrt(statistics.getLight(light).getVarianceOfMean(0));
    EXPECT_LT(deviation, 0.01 * expected);
    EXPECT_NEAR(statistics.getLight(light).getMean(0) / (0.5 / kPi), expected,
                0.005 * expected + 5 * deviation / (0.5 / kPi));
    EXPECT_EQ(statistics.getBeauty().getMean(0), statistics.getLight(light).getMean(0));
}

void addFloor(SceneBuilder& builder) {
    builder.addQuad({-50, 0, -50}, {0, 0, 100}, {100, 0, 0}, makeMatt(Spectrum::gray(0.5)));
}

// E = pi L (R / h)^2 right below a sphere.
TEST(Irradiance, BelowASphere) {
    SceneBuilder builder;
    addFloor(builder);
    builder.addSphere({0, 2, 0}, 0.5, makeEmitter(Spectrum::gray(7), kKeyLight));
    expectIrradiance(builder.build({}), kKeyLight, kPi * 7 * 0.0625);
}

// Lambert's formula for a rectangle with one corner straight above the point, four times.
TEST(Irradiance, BelowARectangle) {
    SceneBuilder builder;
    addFloor(builder);
    builder.addQuad({-1, 2, -1.5}, {2, 0, 0}, {0, 0, 3}, makeEmitter(Spectrum::gray(3), kKeyLight));
    const double a = 0.5;
    const double b = 0.75;
    const double factor = (a / std::hypot(1, a) * std::atan(b / std::hypot(1, a)) +
                           b / std::hypot(1, b) * std::atan(a / std::hypot(1, b))) /
                          (2 * kPi);
    expectIrradiance(builder.build({}), kKeyLight, 4 * kPi * 3 * factor);
}

// The same light behind thin glass keeps what two Fresnel reflections at each crossing leave;
// straight above the mean over the small lamp is that of normal incidence, R = 2F / (1 + F).
TEST(Irradiance, ThroughThinGlassIsAttenuatedOnly) {
    SceneBuilder builder;
    addFloor(builder);
    builder.addSphere({0, 2, 0}, 0.1, makeEmitter(Spectrum::gray(200), kFilamentLight));
    builder.addQuad({-0.4, 1, -0.4}, {0.8, 0, 0}, {0, 0, 0.8}, makeThinGlass({0.8, 0.9, 1}));
    const double single = 0.04;
    expectIrradiance(builder.build({}), kFilamentLight,
                     kPi * 200 * 0.0025 * 0.8 * (1 - 2 * single / (1 + single)));
}

TEST(PathTracer, RecordsTheFirstSurface) {
    SceneBuilder builder;
    Material metal = makeMetal({0.9, 0.5, 0.1}, 0.3);
    builder.addQuad({-50, -50, -2}, {100, 0, 0}, {0, 100, 0}, metal);
    const auto facing = traceOnePixel(builder.build({}), lookAt({0, 0, 5}, {0, 0, -2}, 0.1), 10);
    EXPECT_NEAR(facing.getDepth(), 7, 1e-6);
    EXPECT_NEAR(facing.getNormal().getMean(2), 1, 1e-6);
    EXPECT_NEAR(facing.getAlbedo().getMean(1), 0.5, 1e-12);
    EXPECT_EQ(facing.getCoverage(), 1);
    EXPECT_EQ(facing.getMask(kMetalMask), 1);
    EXPECT_EQ(facing.getMask(kGlassMask), 0);

    // Seen from the left, the surface's normal points to the left of the picture.
    builder.addQuad({-50, -50, -2}, {100, 0, 0}, {0, 100, 0}, metal);
    const auto oblique = traceOnePixel(builder.build({}), lookAt({7, 0, 5}, {0, 0, -2}, 0.1), 10);
    EXPECT_NEAR(oblique.getNormal().getMean(0), -std::sqrt(0.5), 1e-3);
    EXPECT_NEAR(oblique.getDepth(), 7 * std::sqrt(2), 0.02);

    const auto nothing = traceOnePixel(SceneBuilder().build({}), lookAt({0, 0, 5}, {}, 10), 10);
    EXPECT_EQ(nothing.getCoverage(), 0);
    EXPECT_EQ(nothing.getDepth(), PixelStatistics::kNoDepth);
    EXPECT_EQ(nothing.getNormal().getMean(2), 0);
}

}  // namespace
}  // namespace tavrin::samples
