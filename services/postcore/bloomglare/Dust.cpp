#include "services/postcore/bloomglare/Dust.h"

#include "services/postcore/bloomglare/Angles.h"
#include "services/postcore/bloomglare/RandomNumbers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavrin::postcore {
namespace {

// In radii of the aperture, without zoom and variation.
constexpr float kRadius = 0.025f;
// Of particles whose radii vary, in radii: with all as large, all are round.
constexpr float kLargestElongation = 0.6f;
// How far a particle may be from its place, in steps of the grid: far enough to hide the grid.
constexpr float kLargestShift = 1.5f;
// Particles anywhere cover everything when there are infinitely many of them.
constexpr float kLargestRandomDensity = 0.98f;
constexpr int kSeed = 2026;

/// A regular arrangement of points; a step is the distance of neighbours in a row.
struct Grid {
    float rowPitch;    // in steps
    float oddShift;    // of every second row, in steps
    float fullRadius;  // of discs that cover the plane, in steps
};

Grid getGrid(DustPattern pattern) {
    if (pattern == DustPattern::Hexagons) {
        return {0.5f * std::numbers::sqrt3_v<float>, 0.5f, 1.0f / std::numbers::sqrt3_v<float>};
    }
    return {1.0f, 0.0f, std::numbers::sqrt2_v<float> / 2.0f};
}

/// The particles' areas summed up over the area that they lie on. On the grid that is the density
/// until discs begin to overlap; anywhere, a point is free of n particles with the probability
/// (1 - a)^n, a being the part that one covers.
float getCrowding(const ApertureDust& dust, const Grid& grid) {
    const float density = dust.density;
    const float full = kPi * grid.fullRadius * grid.fullRadius / grid.rowPitch;
    const float onGrid = density * (1.0f + (full - 1.0f) * std::pow(density, 6.0f));
    const float anywhere = -std::log1p(-std::min(density, kLargestRandomDensity));
    return std::lerp(onGrid, anywhere, dust.positionVariation);
}

/// Of a particle on average, by the distribution of radii and elongations in makeParticle.
float getMeanArea(float variation) {
    const float meanSquare = kRadius * kRadius * (1.0f + variation * variation / 3.0f);
    return meanSquare * (kPi + 2.0f * kLargestElongation * variation);
}

ApertureMark makeParticle(const ApertureDust& dust, Vec2 center, RandomNumbers& random) {
    const float radius = kRadius * (1.0f + dust.radiusVariation * random.nextSigned());
    const float elongation = kLargestElongation * dust.radiusVariation * random.next();
    return {.center = center,
            .direction = getDirection(kPi * random.next()),
            .halfLength = elongation * radius,
            .halfWidth = radius};
}

}  // namespace

ApertureMarks makeDust(const ApertureDust& dust) {
    ApertureMarks result;
    result.coverAll = dust.density >= 1.0f;
    if (dust.density <= 0.0f) {
        return result;
    }
    const Grid grid = getGrid(dust.pattern);
    const float step =
        std::sqrt(getMeanArea(dust.radiusVariation) / (getCrowding(dust, grid) * grid.rowPitch));
    const float shift = kLargestShift * dust.positionVariation;
    const float reach = 1.0f / step + shift + 1.0f;
    const int columns = static_cast<int>(std::ceil(reach));
    const int rows = static_cast<int>(std::ceil(reach / grid.rowPitch));
    for (int j = -rows; j <= rows; ++j) {
        for (int i = -columns; i <= columns; ++i) {
            RandomNumbers random{kSeed, i, j};
            const float column = static_cast<float>(i) + (j % 2 != 0 ? grid.oddShift : 0.0f);
            const float row = static_cast<float>(j) * grid.rowPitch;
            const Vec2 center{step * (column + shift * random.nextSigned()),
                              step * (row + shift * random.nextSigned())};
            result.marks.push_back(makeParticle(dust, center, random));
        }
    }
    result.transform(toRadians(dust.rotation), dust.zoom);
    return result;
}

}  // namespace tavrin::postcore
