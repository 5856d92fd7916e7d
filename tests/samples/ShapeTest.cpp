#include "samples/Bvh.h"
#include "samples/Emitter.h"
#include "samples/SceneBuilder.h"
#include "samples/Shape.h"

#include <gtest/gtest.h>

namespace tavrin::samples {
namespace {

Vector randomDirection(Sampler& sampler) {
    const Point2 u = sampler.nextPoint();
    const double z = 1 - 2 * u.x;
    const double sine = std::sqrt(1 - z * z);
    return {sine * std::cos(2 * kPi * u.y), sine * std::sin(2 * kPi * u.y), z};
}

Frustum cone(const Vector& base, const Vector& axis, double r0, double y0, double r1, double y1) {
    return {base, axis, {r0, y0, 1, 0}, {r1, y1, 1, 0}};
}

// Known distances along a ray from (0, 0, 5) towards −z, or towards other directions.
TEST(Shape, KnownHits) {
    const Ray ray{{0, 0, 5}, {0, 0, -1}};
    const Vector up{0, 1, 0};
    EXPECT_NEAR(*intersect(Sphere{{0, 0.6, 0}, 1}, ray, 0, 100), 5 - 0.8, 1e-12);
    EXPECT_NEAR(*intersect(Sphere{{0, 0.6, 0}, 1}, ray, 4.5, 100), 5 + 0.8, 1e-12);
    EXPECT_FALSE(intersect(Sphere{{0, 1.01, 0}, 1}, ray, 0, 100));
    EXPECT_NEAR(*intersect(Quad{{-1, -1, 2}, {3, 0, 0}, {0, 1.5, 0}}, ray, 0, 100), 3, 1e-12);
    EXPECT_FALSE(intersect(Quad{{-1, -1, 2}, {0.9, 0, 0}, {0, 1.5, 0}}, ray, 0, 100));
    // A cone that narrows from 2 at the bottom to 1: 1.5 half way up.
    EXPECT_NEAR(*intersect(cone({0, -1, 0}, up, 2, 0, 1, 2), ray, 0, 100), 3.5, 1e-12);
    EXPECT_FALSE(intersect(cone({0, 1, 0}, up, 2, 0, 1, 2), ray, 0, 100));
    // A flat ring, hit from above between its radii only.
    const Frustum ring = cone({0, 0, 0}, up, 1, 0.5, 2, 0.5);
    EXPECT_NEAR(*intersect(ring, {{1.5, 3, 0}, {0, -1, 0}}, 0, 100), 2.5, 1e-12);
    EXPECT_FALSE(intersect(ring, {{0.9, 3, 0}, {0, -1, 0}}, 0, 100));
    EXPECT_FALSE(intersect(ring, {{2.1, 3, 0}, {0, -1, 0}}, 0, 100));
}

TEST(Shape, ProfilesFaceOutwardsUpAndInwardsDown) {
    const Ray ray{{0, 0.5, 5}, {0, 0, -1}};
    const Frustum outer = cone({0, 0, 0}, {0, 1, 0}, 1, 0, 1, 1);
    const Frustum inner = cone({0, 0, 0}, {0, 1, 0}, 1, 1, 1, 0);
    EXPECT_NEAR(getSurfacePoint(outer, ray, 4).geometricNormal.z, 1, 1e-12);
    EXPECT_NEAR(getSurfacePoint(inner, ray, 4).geometricNormal.z, -1, 1e-12);
}

// Points along a ray are on a rounded box where its distance function (a box grown by the
// rounding) is zero.
TEST(SceneBuilder, RoundedBoxIsWhereItsDistanceFunctionSays) {
    const Vector half{1, 0.4, 0.7};
    constexpr double kRounding = 0.15;
    SceneBuilder builder;
    builder.addBox({0, 0, 0}, uprightFrame(0), half, kRounding, {});
    const Scene scene = builder.build({});
    const auto distance = [&](const Vector& p) {
        const Vector q{std::max(std::abs(p.x) - half.x + kRounding, 0.0),
                       std::max(std::abs(p.y) - half.y + kRounding, 0.0),
                       std::max(std::abs(p.z) - half.z + kRounding, 0.0)};
        return length(q) - kRounding;
    };
    Sampler sampler(3, {0, 0}, 0);
    int hits = 0;
    for (int i = 0; i < 3000; ++i) {
        const Vector origin = 4 * randomDirection(sampler);
        const Ray ray{origin, normalize(1.2 * randomDirection(sampler) - origin)};
        const auto hit = scene.intersect(ray);
        double least = 1e9;
        for (double t = 0; t < 8; t += 0.02) {
            least = std::min(least, distance(ray.at(t)));
        }
        if (hit) {
            ++hits;
            EXPECT_NEAR(distance(hit->point.position), 0, 1e-9);
        } else {
            EXPECT_GT(least, -1e-3);
        }
    }
    EXPECT_GT(hits, 1000);
}

TEST(Bvh, FindsWhatTestingEveryShapeFinds) {
    Sampler sampler(7, {0, 0}, 0);
    std::vector<Shape> shapes;
    for (int i = 0; i < 120; ++i) {
        const Vector center = 5 * sampler.next() * randomDirection(sampler);
        const double size = 0.1 + 0.5 * sampler.next();
        if (i % 3 == 0) {
            shapes.push_back(Sphere{center, size});
        } else if (i % 3 == 1) {
            shapes.push_back(
                Quad{center, size * randomDirection(sampler), size * randomDirection(sampler)});
        } else {
            shapes.push_back(cone(center, randomDirection(sampler), size, 0, size / 3, 1));
        }
    }
    const Bvh tree(shapes);
    for (int i = 0; i < 4000; ++i) {
        const Ray ray{6 * randomDirection(sampler), randomDirection(sampler)};
        double nearest = 1e30;
        for (const Shape& shape : shapes) {
            nearest = intersect(shape, ray, Bvh::kNearest, nearest).value_or(nearest);
        }
        const auto found = tree.findNearest(ray);
        ASSERT_EQ(found.has_value(), nearest < 1e30);
        if (found) {
            EXPECT_EQ(found->distance, nearest);
        }
    }
}

// 1 / pdf averages to the solid angle; rays that are spread uniformly measure it another way, and
// getEmitterPdf must agree with the density that sampling reports.
TEST(Emitter, SamplesTheSolidAngleItIsSeenUnder) {
    const Shape shapes[] = {Sphere{{1, 2, 0}, 0.8}, Quad{{-1, 2, -1}, {2, 0.3, 0}, {0, 0, 2}},
                            cone({0.5, 1, -0.5}, normalize({1, 0.4, 0.2}), 0.4, 0, 0.4, 1.5)};
    for (const Shape& shape : shapes) {
        Sampler sampler(9, {0, 0}, 0);
        const Vector lit{0, 0, 0};
        constexpr int kSamples = 100000;
        double sampled = 0;
        double measured = 0;
        for (int i = 0; i < kSamples; ++i) {
            if (const auto sample = sampleEmitter(shape, lit, sampler.nextPoint())) {
                const Ray ray{lit, sample->direction};
                const auto distance = intersect(shape, ray, 0, 100);
                // The back of the cylinder's sampled half is hidden by its front.
                if (distance && std::abs(*distance - sample->distance) < 1e-6) {
                    sampled += 1 / sample->pdf / kSamples;
                    EXPECT_NEAR(getEmitterPdf(shape, lit, getSurfacePoint(shape, ray, *distance)),
                                sample->pdf, 1e-5 * sample->pdf);
                }
            }
            const Ray ray{lit, randomDirection(sampler)};
            const auto distance = intersect(shape, ray, 0, 100);
            if (distance &&
                dot(getSurfacePoint(shape, ray, *distance).geometricNormal, ray.direction) < 0) {
                measured += 4 * kPi / kSamples;
            }
        }
        const double deviation = std::sqrt(4 * kPi * measured / kSamples);
        EXPECT_NEAR(sampled, measured, 4 * deviation) << shape.index();
    }
}

}  // namespace
}  // namespace tavrin::samples
