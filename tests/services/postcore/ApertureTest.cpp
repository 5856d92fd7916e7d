#include "foundation/Function.h"
#include "services/postcore/bloomglare/ApertureMask.h"
#include "services/postcore/bloomglare/LensEffectsParams.h"
#include "services/postcore/bloomglare/RandomNumbers.h"
#include "tests/services/postcore/MaskMeasures.h"
#include "tests/support/MapSettings.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace tavrin::postcore {
namespace {

constexpr double kPi = std::numbers::pi;

using tests::MapSettings;

TEST(LensEffectsParamsTest, DefaultsAreThoseOfTheProperties) {
    EXPECT_EQ(LensEffectsParams::loadApertureFromSettings(MapSettings()), ApertureParams());
    EXPECT_EQ(LensEffectsParams::loadGlareFromSettings(MapSettings()), GlareParams());
}

TEST(LensEffectsParamsTest, EveryPropertyOfTheApertureSurvivesLoadingAndSaving) {
    MapSettings original;
    for (int id = 401; id <= 435; ++id) {
        const PropertyDescriptor& descriptor = *PropertyDescriptor::get(id);
        if (const bool* value = descriptor.defaultValue.getIf<bool>()) {
            original.set(id, !*value);
        } else if (descriptor.defaultValue == descriptor.maximum) {
            original.set(id, descriptor.minimum);
        } else {
            original.set(id, descriptor.maximum);
        }
    }
    MapSettings copy;
    LensEffectsParams::saveApertureToSettings(LensEffectsParams::loadApertureFromSettings(original),
                                              copy);
    EXPECT_EQ(copy.values, original.values);
}

TEST(RandomNumbersTest, AreTheSameOnEveryMachine) {
    // The first outputs of SplitMix64 from the state 0, of which the upper 24 bits count.
    RandomNumbers numbers{};
    EXPECT_EQ(numbers.next(), 14819496 * 0x1p-24f);
    EXPECT_EQ(numbers.next(), 7239838 * 0x1p-24f);
    RandomNumbers keyed{7, -3};
    EXPECT_EQ(keyed.next(), 5324299 * 0x1p-24f);
}

TEST(ApertureMaskTest, AreaIsThatOfTheShape) {
    ApertureParams params;
    params.isBladed = false;
    EXPECT_NEAR(getArea(drawApertureMask(params, 512)), kPi, 0.001 * kPi);
    params.isBladed = true;
    params.bladeRotation = 11.0f;
    for (const int count : {3, 4, 7, 16}) {
        params.bladeCount = count;
        const double area = 0.5 * count * std::sin(2.0 * kPi / count);
        EXPECT_NEAR(getArea(drawApertureMask(params, 512)), area, 0.001 * area) << count;
    }
}

TEST(ApertureMaskTest, DensityIsThePartThatIsCovered) {
    for (const bool isDust : {false, true}) {
        for (const int pattern : {0, 1}) {
            for (const float variation : {0.0f, 1.0f}) {
                for (const float density : {0.0f, 0.1f, 0.3f, 0.7f, 1.0f}) {
                    ApertureParams params;
                    params.isBladed = false;
                    params.dust = {isDust,    static_cast<DustPattern>(pattern),
                                   density,   variation,
                                   variation, 1.0f,
                                   0.0f,      1.0f};
                    params.scratches.isEnabled = !isDust;
                    params.scratches.pattern = static_cast<ScratchesPattern>(pattern);
                    params.scratches.density = density;
                    params.scratches.slopeVariation = variation;
                    const double covered = 1.0 - getArea(drawApertureMask(params, 512)) / kPi;
                    const double tolerance = density > 0.0f && density < 1.0f ? 0.07 : 0.001;
                    EXPECT_NEAR(covered, density, tolerance)
                        << isDust << pattern << variation << density;
                }
            }
        }
    }
}

/// Every kind of mark there is.
ApertureParams makeDirtyParams() {
    ApertureParams params;
    params.grating.isEnabled = true;
    params.occlusion.isEnabled = true;
    params.scratches.isEnabled = true;
    params.dust.isEnabled = true;
    return params;
}

TEST(ApertureMaskTest, TakesAnyNumbers) {
    for (const float number : {std::numeric_limits<float>::quiet_NaN(), -1e30f, 1e30f}) {
        ApertureParams params = makeDirtyParams();
        params.bladeCount = number > 0.0f ? 1000000000 : -5;
        for (float* value :
             {&params.bladeRotation, &params.grating.zoom, &params.grating.length,
              &params.occlusion.arc, &params.scratches.zoom, &params.scratches.length,
              &params.scratches.widthVariation, &params.dust.zoom, &params.dust.radiusVariation}) {
            *value = number;
        }
        const BitmapImpl<float> mask = drawApertureMask(params, 64);
        EXPECT_THAT(mask.pixels(),
                    testing::Each(testing::AllOf(testing::Ge(0.0f), testing::Le(1.0f))));
    }
}

using Measure = Function<double(const BitmapImpl<float>&)>;

/// What a change of one property does to a mask.
struct Effect {
    int id;
    const char* what;
    ApertureParams before;
    Property value;
    Measure measure;
    double least;  ///< that the measure grows by
};

double countMarks(const BitmapImpl<float>& mask) {
    return static_cast<double>(findDarkMarks(mask).size());
}

double getCoveredArea(const BitmapImpl<float>& mask) {
    return -getArea(mask);
}

double getLargestExtent(const BitmapImpl<float>& mask) {
    const std::vector<DarkMark> marks = findDarkMarks(mask);
    return std::ranges::max_element(marks, {}, &DarkMark::extent)->extent;
}

double getSpreadOfAreas(const BitmapImpl<float>& mask) {
    return getSpread(getAreas(findDarkMarks(mask)));
}

std::vector<double> getNeighborDistances(const BitmapImpl<float>& mask) {
    std::vector<double> distances;
    for (const Vec2 way : getWaysToNeighbors(findDarkMarks(mask))) {
        distances.push_back(std::hypot(way.x, way.y));
    }
    return distances;
}

/// In a grid of squares the nearest neighbours are nearer than in one of hexagons with as many
/// points: 1 against sqrt(2 / sqrt(3)) for one point on an area of 1.
double getNeighborDistance(const BitmapImpl<float>& mask) {
    const double pointsPerArea = countMarks(mask) / (kPi * 0.95 * 0.95);
    return getNeighborDistances(mask).front() * std::sqrt(pointsPerArea);
}

/// Of the neighbours in a grid of squares, in degrees from 0 to 90.
double getNeighborAngle(const BitmapImpl<float>& mask) {
    const Vec2 way = getWaysToNeighbors(findDarkMarks(mask)).front();
    const double angle = std::atan2(way.y, way.x) * 180.0 / kPi;
    return std::fmod(angle + 360.0 + 1.0, 90.0) - 1.0;
}

double getGrainAngle(const BitmapImpl<float>& mask) {
    return getGrain(mask).degrees;
}

/// The light at a distance from the middle, in directions of equal steps through `angle` radians
/// around that to the right, clockwise.
std::vector<double> getArc(const BitmapImpl<float>& mask, double distance, double angle) {
    std::vector<double> values;
    for (int i = -2000; i < 2000; ++i) {
        const double direction = -0.5 * angle * i / 2000;
        values.push_back(
            getOpenness(mask, distance * std::cos(direction), distance * std::sin(direction)));
    }
    return values;
}

double countLines(const BitmapImpl<float>& mask) {
    const std::vector<double> ring = getArc(mask, 0.98, 2.0 * kPi);
    int count = 0;
    for (std::size_t i = 1; i < ring.size(); ++i) {
        count += ring[i - 1] >= 0.5 && ring[i] < 0.5;
    }
    return count;
}

/// How far clockwise the line that begins on the right has gone, as a part of the way to the next.
double getFirstLineShift(const BitmapImpl<float>& mask) {
    const std::vector<double> arc = getArc(mask, 0.85, 2.0 * kPi / 18.0);
    double sum = 0.0;
    double weight = 0.0;
    for (std::size_t i = 0; i < arc.size(); ++i) {
        sum += (1.0 - arc[i]) * (static_cast<double>(i) / static_cast<double>(arc.size()) - 0.5);
        weight += 1.0 - arc[i];
    }
    return sum / weight;
}

ApertureParams makeCircle() {
    ApertureParams params;
    params.isCustom = true;
    params.isBladed = false;
    return params;
}

/// A circle with something on it, changed as wanted.
template <class Part>
ApertureParams makeCircleWith(Part ApertureParams::*part, const auto& change) {
    ApertureParams params = makeCircle();
    (params.*part).isEnabled = true;
    change(params.*part);
    return params;
}

std::vector<Effect> makeOutlineEffects() {
    const auto grating = [](const auto& change) {
        return makeCircleWith(&ApertureParams::grating, change);
    };
    const auto occlusion = [](const auto& change) {
        return makeCircleWith(&ApertureParams::occlusion, change);
    };
    const auto unchanged = [](auto&) {};
    const auto addFewLines = [](ApertureGrating& g) {
        g.zoom = 10.0f;
        g.ratio = 0.2f;
        g.length = 0.01f;
    };
    ApertureParams bladed = makeCircle();
    bladed.isBladed = true;
    ApertureParams offGrating = makeCircle();
    const auto getRimCover = [](const auto& mask) { return -getRingOpenness(mask, 0.97, 0.99); };
    return {
        {402, "cuts the circle", makeCircle(), true, getCoveredArea, 0.5},
        {403, "comes near the circle", bladed, 12, getArea, 0.35},
        {404, "turns a corner to the right", bladed, 30.0f,
         [](const auto& mask) { return getOpenness(mask, 0.9, 0.0); }, 1.0},
        {405, "adds lines", offGrating, true, getCoveredArea, 0.2},
        {406, "covers the rim", grating(unchanged), 1.0f, getRimCover, 0.45},
        {407, "reaches the middle", grating(unchanged), 1.0f,
         [](const auto& mask) { return -getRingOpenness(mask, 0.1, 0.3); }, 0.5},
        {408, "leaves fewer lines", grating([](auto& g) { g.length = 0.04f; }), 6.0f,
         [](const auto& mask) { return -countLines(mask); }, 150.0},
        {409, "turns lines counterclockwise", grating(addFewLines), 30.0f, getFirstLineShift, 0.2},
        {410, "weakens lines", grating(unchanged), 0.5f, getArea, 0.1},
        {411, "covers a part", makeCircle(), true, getCoveredArea, 0.3},
        {412, "covers both sides alike", occlusion(unchanged), true,
         [](const auto& mask) { return -getOpenness(mask, -0.9, 0.0); }, 1.0},
        {413, "covers everything", occlusion(unchanged), 1.0f, getCoveredArea, 2.0},
        {414, "comes from above", occlusion(unchanged), 90.0f,
         [](const auto& mask) { return -getOpenness(mask, 0.0, 0.9); }, 1.0},
        {415, "comes around the aperture", occlusion([](auto& o) { o.arc = 0.0f; }), 1.0f,
         [](const auto& mask) {
             return getOpenness(mask, 0.45, 0.0) - getOpenness(mask, 0.2, 0.9);
         },
         1.0},
    };
}

std::vector<Effect> makeScratchesEffects() {
    const auto scratches = [](const auto& change) {
        return makeCircleWith(&ApertureParams::scratches, change);
    };
    const auto unchanged = [](auto&) {};
    const ApertureParams parallel = scratches([](auto& s) { s.slopeVariation = 0.0f; });
    const ApertureParams alike = scratches([](auto& s) {
        s.pattern = ScratchesPattern::Regular;
        s.slopeVariation = s.widthVariation = 0.0f;
        s.density = 0.1f;
        s.length = 0.1f;
    });
    const ApertureParams sparse = scratches([](auto& s) {
        s.density = 0.02f;
        s.length = 0.1f;
        s.widthVariation = 0.0f;
    });
    const BitmapImpl<float> usual = drawApertureMask(scratches(unchanged), 512);
    return {
        {416, "adds scratches", makeCircle(), true, getCoveredArea, 0.4},
        {417, "spreads scratches evenly", parallel, 0,
         [](const auto& mask) { return -getClumpiness(mask); }, 0.01},
        {418, "meets in the middle", scratches(unchanged), true,
         [](const auto& mask) { return -getRingOpenness(mask, 0.0, 0.05); }, 0.5},
        {419, "heaps scratches", parallel, 16, getClumpiness, 0.02},
        {420, "covers more", scratches(unchanged), 0.6f, getCoveredArea, 1.0},
        {421, "lengthens", sparse, 0.3f, getLargestExtent, 0.2},
        {422, "arranges anew", scratches(unchanged), 1,
         [usual](const auto& mask) { return getDifference(mask, usual); }, 0.1},
        {423, "goes in all directions", scratches(unchanged), 1.0f,
         [](const auto& mask) { return -getGrain(mask).coherence; }, 0.3},
        {424, "gives other widths", alike, 1.0f, getSpreadOfAreas, 0.3},
        {425, "leaves fewer scratches", sparse, 3.0f,
         [](const auto& mask) { return -countMarks(mask); }, 20.0},
        {426, "turns", parallel, 40.0f, getGrainAngle, 35.0},
        {427, "weakens scratches", scratches(unchanged), 0.5f, getArea, 0.2},
    };
}

std::vector<Effect> makeDustEffects() {
    const auto dust = [](const auto& change) {
        return makeCircleWith(&ApertureParams::dust, change);
    };
    const auto unchanged = [](auto&) {};
    const ApertureParams grid =
        dust([](auto& d) { d.positionVariation = d.radiusVariation = 0.0f; });
    return {
        {428, "adds particles", makeCircle(), true, getCoveredArea, 0.4},
        {429, "moves neighbours away", grid, 1, getNeighborDistance, 0.05},
        {430, "covers more", dust(unchanged), 0.6f, getCoveredArea, 1.0},
        {431, "gives other sizes", grid, 1.0f, getSpreadOfAreas, 0.4},
        {432, "leaves the grid", grid, 1.0f,
         [](const auto& mask) { return getSpread(getNeighborDistances(mask)); }, 0.15},
        {433, "leaves fewer particles", grid, 2.0f,
         [](const auto& mask) { return -countMarks(mask); }, 150.0},
        {434, "turns", grid, 30.0f, getNeighborAngle, 28.0},
        {435, "weakens particles", dust(unchanged), 0.5f, getArea, 0.2},
    };
}

TEST(ApertureMaskTest, EveryPropertyDoesWhatItSays) {
    std::vector<Effect> effects = makeOutlineEffects();
    std::ranges::move(makeScratchesEffects(), std::back_inserter(effects));
    std::ranges::move(makeDustEffects(), std::back_inserter(effects));
    ASSERT_EQ(effects.size(), 34u);
    for (int i = 0; i < 34; ++i) {
        const Effect& effect = effects[static_cast<std::size_t>(i)];
        ASSERT_EQ(effect.id, 402 + i);
        MapSettings settings;
        LensEffectsParams::saveApertureToSettings(effect.before, settings);
        settings.set(effect.id, effect.value);
        const ApertureParams after = LensEffectsParams::loadApertureFromSettings(settings);
        const double was = effect.measure(drawApertureMask(effect.before, 512));
        const double is = effect.measure(drawApertureMask(after, 512));
        EXPECT_GE(is - was, effect.least) << effect.id << " " << effect.what;
    }
}

}  // namespace
}  // namespace tavrin::postcore
