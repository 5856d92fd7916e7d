#include "services/postcore/bloomglare/GlarePsf.h"

#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/Angles.h"
#include "services/postcore/bloomglare/ApertureMask.h"
#include "services/postcore/bloomglare/AreaResampling.h"
#include "services/postcore/bloomglare/GlareProperties.h"
#include "services/postcore/bloomglare/PolarPattern.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

namespace tavrin::postcore {
namespace {

constexpr int kMaskSize = 512;
constexpr int kPadding = 4;
// Of the pattern, in steps of λ / D / kPadding for the shortest wavelength: what the mask is fine
// enough for, with its pixels' own diffraction still weak.
constexpr int kReach = 512;
// Standard deviation of the most blurred streaks, in radians.
constexpr float kLargestBlur = 0.25f;
// The main lobe, light that has passed straight, ends here in green light: at twice the radius of
// the first dark ring.
constexpr int kCoreRows = 14;
// Part of the reach from which on the pattern fades out.
constexpr float kFadeStart = 0.4f;

bool isOneSided(const GlareParams& glare, const ApertureParams& aperture) {
    return !aperture.isCustom && glare.streakCount % 2 != 0;
}

/// Light that passes an aperture straight is no glare but the image itself. Inside of its lobe, the
/// pattern goes on as bright as around it.
void levelCore(PolarPattern& pattern) {
    double sum = 0.0;
    for (int y = kCoreRows; y < 2 * kCoreRows; ++y) {
        const auto row = pattern.row(y);
        sum += std::accumulate(row.begin(), row.end(), 0.0);
    }
    const auto level = static_cast<float>(sum / kCoreRows / pattern.getWidth());
    for (int y = 0; y < 2 * kCoreRows; ++y) {
        const float t = static_cast<float>(y) / (2 * kCoreRows);
        const float own = t * t * t * (10.0f - t * (15.0f - 6.0f * t));
        for (float& value : pattern.row(y)) {
            value = std::lerp(level, value, own);
        }
    }
}

/// 1 around the middle, smoothly 0 at the end.
float fadeOut(float distance) {
    const float t = std::clamp((distance - kFadeStart) / (1.0f - kFadeStart), 0.0f, 1.0f);
    return 1.0f - t * t * (3.0f - 2.0f * t);
}

/// Every real aperture throws its streaks to both sides. For an odd number of them, those opposite
/// to the wanted ones fade away with the distance from the core.
float chooseSide(int streakCount, float angle, float distance) {
    const float side = 0.5f * (1.0f + std::cos(static_cast<float>(streakCount) * angle));
    const float core = std::exp(-distance / static_cast<float>(kCoreRows));
    return std::lerp(side * side, 1.0f, core);
}

/// The pattern on a square grid, turned, and faded out towards its sides.
BitmapImpl<float> toSquare(const PolarPattern& pattern, const GlareParams& glare, bool oneSided) {
    const float rotation = toRadians(std::remainder(glare.rotation, 360.0f));
    const float columnsPerRadian = static_cast<float>(kPolarDirections) / kPi;
    BitmapImpl<float> square(2 * kReach + 1, 2 * kReach + 1);
    const auto drawRow = [&](std::int64_t row) {
        const auto y = static_cast<float>(kReach - row);
        for (int i = 0; i <= 2 * kReach; ++i) {
            const auto x = static_cast<float>(i - kReach);
            const float distance = std::hypot(x, y);
            float& value = square.at(i, static_cast<int>(row));
            if (distance >= static_cast<float>(kReach)) {
                value = 0.0f;
                continue;
            }
            const float angle = std::atan2(y, x) - rotation;
            const float place = angle * columnsPerRadian;
            const float partX = place - std::floor(place);
            const int column = static_cast<int>(std::floor(place)) & (kPolarDirections - 1);
            const int next = (column + 1) & (kPolarDirections - 1);
            const int inner = static_cast<int>(distance);
            const auto lerpRow = [&](int j) {
                return std::lerp(pattern.at(column, j), pattern.at(next, j), partX);
            };
            value = std::lerp(lerpRow(inner), lerpRow(inner + 1),
                              distance - static_cast<float>(inner)) *
                    fadeOut(distance / static_cast<float>(kReach)) *
                    (oneSided ? chooseSide(glare.streakCount, angle, distance) : 1.0f);
        }
    };
    Scheduler::defaultInstance().parallelFor(0, 2 * kReach + 1, TaskPriority::Normal, drawRow);
    return square;
}

}  // namespace

PointSpreadFunction makeGlarePsf(const GlareParams& glare, const ApertureParams& aperture,
                                 int radius) {
    const GlareParams valid = limitToRanges(glare);
    const BitmapImpl<float> mask = aperture.isCustom ? drawApertureMask(aperture, kMaskSize)
                                                     : drawStreakMask(valid.streakCount, kMaskSize);
    PolarPattern pattern = toPolarPattern(ApertureSpectrum(mask, kPadding, kReach));
    blurDirections(pattern, kLargestBlur * valid.streakBlur * valid.streakBlur);
    PolarColorPattern channels =
        spreadWavelengths(pattern, makeSpectralColors(valid.colorIntensity, valid.colorShift));
    PointSpreadFunction result;
    result.radius = std::max(radius, 0);
    for (std::size_t c = 0; c < channels.size(); ++c) {
        levelCore(channels[c]);
        const BitmapImpl<float> kernel = resampleAreas(
            toSquare(channels[c], valid, isOneSided(valid, aperture)), result.getSize());
        result.planes[c].assign(kernel.pixels().begin(), kernel.pixels().end());
    }
    normalize(result);
    return result;
}

}  // namespace tavrin::postcore
