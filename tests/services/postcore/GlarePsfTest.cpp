#include "services/postcore/bloomglare/ApertureMask.h"
#include "services/postcore/bloomglare/ApertureSpectrum.h"
#include "services/postcore/bloomglare/AreaResampling.h"
#include "services/postcore/bloomglare/BloomPsf.h"
#include "services/postcore/bloomglare/GlarePsf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace tavrin::postcore {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kDirections = 720;
constexpr int kRadius = 150;

GlareParams makeSharpGlare(int streakCount, float rotation) {
    return {.streakCount = streakCount,
            .rotation = rotation,
            .streakBlur = 0.0f,
            .colorIntensity = 0.0f,
            .colorShift = 0.0f};
}

ApertureParams makeBlades(int count, float rotation) {
    ApertureParams params;
    params.isCustom = true;
    params.bladeCount = count;
    params.bladeRotation = rotation;
    return params;
}

double getSum(const PointSpreadFunction& psf, std::size_t channel, double reach) {
    double sum = 0.0;
    for (int y = 0; y < psf.getSize(); ++y) {
        for (int x = 0; x < psf.getSize(); ++x) {
            if (std::hypot(x - psf.radius, y - psf.radius) <= reach * psf.radius) {
                sum += psf.planes[channel][psf.index(x, y)];
            }
        }
    }
    return sum;
}

/// The light in each direction, half a degree each, counterclockwise from the right, weighted with
/// the square of the distance so that all of a streak counts.
std::vector<double> getDirections(const PointSpreadFunction& psf) {
    std::vector<double> directions(kDirections);
    for (int i = 0; i < kDirections; ++i) {
        const double angle = 2.0 * kPi * i / kDirections;
        for (double distance = 0.25; distance < 0.5; distance += 0.25 / psf.radius) {
            const double x = psf.radius * (1.0 + distance * std::cos(angle));
            const double y = psf.radius * (1.0 - distance * std::sin(angle));
            directions[static_cast<std::size_t>(i)] +=
                distance * distance *
                psf.planes[1][psf.index(static_cast<int>(std::lround(x)),
                                        static_cast<int>(std::lround(y)))];
        }
    }
    return directions;
}

/// Checks that there are `count` streaks, the first one at `degrees`, and nothing between them.
void expectStreaks(const PointSpreadFunction& psf, int count, double degrees) {
    const std::vector<double> directions = getDirections(psf);
    const auto getNear = [&](double angle) {  // the most within two degrees
        double most = 0.0;
        for (int i = -4; i <= 4; ++i) {
            const int index = static_cast<int>(std::lround(2.0 * angle)) + i;
            most = std::max(
                most,
                directions[static_cast<std::size_t>((index + 2 * kDirections) % kDirections)]);
        }
        return most;
    };
    const double brightest = std::ranges::max(directions);
    for (int i = 0; i < count; ++i) {
        const double angle = degrees + 360.0 * i / count;
        EXPECT_GT(getNear(angle), 0.5 * brightest) << i;
        EXPECT_LT(getNear(angle + 180.0 / count), 0.2 * brightest) << i;
    }
}

TEST(ApertureSpectrumTest, FirstDarkRingOfACircleIsWhereAirySaysIt) {
    ApertureParams params;
    params.isBladed = false;
    const int padding = 64;
    const ApertureSpectrum spectrum(drawApertureMask(params, 64), padding, 150);
    for (const double angle : {0.0, 0.7, 2.5, 4.0}) {
        double darkest = 0.5;
        const auto getLight = [&](double distance) {
            return spectrum.sample(static_cast<float>(padding * distance * std::cos(angle)),
                                   static_cast<float>(padding * distance * std::sin(angle)));
        };
        for (double distance = 0.5; distance < 1.6; distance += 0.005) {
            darkest = getLight(distance) < getLight(darkest) ? distance : darkest;
        }
        EXPECT_NEAR(darkest, 1.2197, 0.02 * 1.2197) << angle;
        // The first bright ring has 1.75 % of the light in the middle.
        EXPECT_NEAR(getLight(1.635) / getLight(0.0), 0.0175, 0.0005) << angle;
    }
}

TEST(GlarePsfTest, ThrowsAsManyStreaksAsWanted) {
    for (const int count : {1, 2, 3, 10, 16}) {
        SCOPED_TRACE(count);
        expectStreaks(makeGlarePsf(makeSharpGlare(count, 20.0f), {}, kRadius), count, 20.0);
    }
}

TEST(GlarePsfTest, BladesThrowStreaksAcrossTheirEdges) {
    expectStreaks(makeGlarePsf(makeSharpGlare(6, 0.0f), makeBlades(7, 7.0f), kRadius), 14, 7.0);
    expectStreaks(makeGlarePsf(makeSharpGlare(6, -367.0f), makeBlades(8, 0.0f), kRadius), 8, -7.0);
}

TEST(GlarePsfTest, KeepsTheLightAndLeavesNoBorder) {
    ApertureParams dirty = makeBlades(5, 0.0f);
    dirty.dust.isEnabled = true;
    dirty.grating.isEnabled = true;
    for (const int radius : {1, 37, 600}) {
        SCOPED_TRACE(radius);
        for (const PointSpreadFunction& psf :
             {makeGlarePsf({}, dirty, radius), makeBloomPsf(radius)}) {
            for (std::size_t c = 0; c < 3; ++c) {
                const std::vector<float>& plane = psf.planes[c];
                EXPECT_NEAR(std::accumulate(plane.begin(), plane.end(), 0.0), 1.0, 1e-5);
                EXPECT_GE(std::ranges::min(plane), 0.0f);
                EXPECT_EQ(plane[psf.index(radius, radius)], 0.0f);
                if (radius > 2) {
                    const double mean = 1.0 / static_cast<double>(plane.size());
                    for (int i = 0; i < psf.getSize(); ++i) {
                        EXPECT_LT(plane[psf.index(i, 0)], 0.01 * mean);
                        EXPECT_LT(plane[psf.index(0, i)], 0.01 * mean);
                    }
                }
            }
        }
    }
}

TEST(GlarePsfTest, NoLightComesFromAClosedApertureOrOutOfOnePixel) {
    ApertureParams closed = makeBlades(6, 0.0f);
    closed.occlusion.isEnabled = true;
    closed.occlusion.ratio = 1.0f;
    for (const PointSpreadFunction& psf :
         {makeGlarePsf({}, closed, 3), makeGlarePsf({}, {}, 0), makeBloomPsf(-1)}) {
        for (const std::vector<float>& plane : psf.planes) {
            EXPECT_EQ(plane, std::vector<float>(psf.index(0, psf.getSize())));
        }
    }
}

TEST(GlarePsfTest, IsTheSamePictureAtEveryRadius) {
    const auto make = [](int radius) {
        return std::array{makeBloomPsf(radius), makeGlarePsf({}, {}, radius)};
    };
    const auto expected = make(300);
    for (const int radius : {60, 600}) {
        const auto actual = make(radius);
        for (std::size_t i = 0; i < actual.size(); ++i) {
            for (const double reach : {0.1, 0.25, 0.5}) {
                // The light's own pixel, which is left out, is not as large in all of them.
                EXPECT_NEAR(getSum(actual[i], 1, reach), getSum(expected[i], 1, reach), 0.03)
                    << radius << " " << i << " " << reach;
            }
        }
    }
}

TEST(GlarePsfTest, StreakBlurWidensStreaks) {
    // The part of the directions that are at least half as bright as the brightest.
    const auto getWidth = [](float blur) {
        GlareParams glare = makeSharpGlare(4, 0.0f);
        glare.streakBlur = blur;
        const std::vector<double> directions = getDirections(makeGlarePsf(glare, {}, kRadius));
        return static_cast<double>(std::ranges::count_if(
                   directions,
                   [half = 0.5 * std::ranges::max(directions)](double d) { return d > half; })) /
               kDirections;
    };
    EXPECT_LT(getWidth(0.0f), 0.03);
    EXPECT_GT(getWidth(0.5f), 2.0 * getWidth(0.0f));
    EXPECT_GT(getWidth(1.0f), 0.3);
}

TEST(GlarePsfTest, ColorsGrowWithTheirIntensityAndTurnWithTheirShift) {
    const auto make = [](float intensity, float shift) {
        GlareParams glare;
        glare.colorIntensity = intensity;
        glare.colorShift = shift;
        return makeGlarePsf(glare, {}, kRadius);
    };
    const auto getDifference = [](const std::vector<float>& left, const std::vector<float>& right) {
        return std::transform_reduce(left.begin(), left.end(), right.begin(), 0.0, std::plus<>(),
                                     [](float a, float b) { return std::abs(a - b); });
    };
    const auto getColor = [&](const PointSpreadFunction& psf) {
        return getDifference(psf.planes[0], psf.planes[2]);
    };
    EXPECT_EQ(getColor(make(0.0f, 0.5f)), 0.0);
    const PointSpreadFunction colored = make(1.0f, 0.0f);
    const double half = getColor(make(0.5f, 0.0f));
    EXPECT_GT(half, 0.02);
    EXPECT_GT(getColor(colored), 1.5 * half);
    // Light of short wavelengths is bent least: red reaches farther than blue until they change.
    const PointSpreadFunction shifted = make(1.0f, 0.5f);
    EXPECT_GT(getSum(colored, 2, 0.25), getSum(colored, 0, 0.25));
    EXPECT_LT(getSum(shifted, 2, 0.25), getSum(shifted, 0, 0.25));
    EXPECT_LT(getDifference(make(1.0f, 1.0f).planes[0], colored.planes[0]), 1e-6);
}

TEST(AreaResamplingTest, KeepsTheLightOfASpotWhereverItIs) {
    for (const int size : {5, 21, 77}) {
        const double scale = (41.0 - 1.0) / (size - 1.0);
        for (const int place : {12, 20, 27}) {
            BitmapImpl<float> square(41, 41);
            std::ranges::fill(square.pixels(), 0.0f);
            square.at(place, 20) = 1.0f;
            const std::vector<float> result = resampleAreas(square, size);
            double sum = 0.0;
            double moment = 0.0;
            for (int i = 0; i < size * size; ++i) {
                sum += result[static_cast<std::size_t>(i)];
                moment += result[static_cast<std::size_t>(i)] * (i % size - (size - 1) / 2);
            }
            EXPECT_NEAR(sum * scale * scale, 1.0, 1e-5) << size << " " << place;
            if (scale <= 1.0) {  // the middle of light is known only where it is spread
                EXPECT_NEAR(scale * moment / sum, place - 20, 1e-3) << size << " " << place;
            }
        }
    }
}

}  // namespace
}  // namespace tavrin::postcore
