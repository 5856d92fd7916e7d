#include "services/postcore/bloomglare/GlarePsf.h"

#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/Angles.h"
#include "services/postcore/bloomglare/ApertureMask.h"
#include "services/postcore/bloomglare/AreaResampling.h"
#include "services/postcore/bloomglare/GlareProperties.h"
#include "services/postcore/bloomglare/Interpolation.h"
#include "services/postcore/bloomglare/PolarPattern.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>

namespace tavrin::postcore {
namespace {

constexpr int kMaskSize = 512;
constexpr int kPadding = 4;
// Of the glare, in steps of λ / D / kPadding for the shortest wavelength λ.
constexpr int kReach = 512;
// In the same steps: where the soft edges of an aperture leave no light of the shortest wavelength.
// The mask is fine enough for that, its pixels' own diffraction still being weak.
constexpr int kEdgeReach = 350;
// Standard deviation of the most blurred streaks, in radians.
constexpr float kLargestBlur = 0.25f;
// The main lobe, light that has passed straight, ends here in green light: at twice the radius of
// the first dark ring.
constexpr int kCoreRows = 14;
// Part of the reach from which on the pattern fades out.
constexpr float kFadeStart = 0.5f;
// Between dark bands that the bevel of edges makes, in the same steps. In white light the bands are
// colours, so the more of colours is wanted, the more of the light passes beside the bevel.
constexpr float kBandDistance = 140.0f;
constexpr float kBandDepth = 0.6f;  // with all colours

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
            value = mix(level, value, own);
        }
    }
}

/// What edges that are not perfectly sharp do to the light. Softness takes away that in wide
/// directions; a bevel, a strip that lets half of the amplitude pass, makes light from its two
/// edges interfere by cos²(π δ sin θ / λ), δ being its width. As directions are counted in
/// wavelengths, streaks of blue light end before those of red light, and get dark bands before.
void shapeEdges(PolarPattern& pattern, float colorIntensity) {
    for (int y = 0; y < pattern.getHeight(); ++y) {
        const float distance = static_cast<float>(y) / static_cast<float>(kEdgeReach);
        const float rest = std::max(1.0f - distance * distance, 0.0f);
        const float wave = std::sin(kPi * static_cast<float>(y) / kBandDistance);
        const float part = rest * rest * (1.0f - kBandDepth * colorIntensity * wave * wave);
        for (float& value : pattern.row(y)) {
            value *= part;
        }
    }
}

/// 1 around the middle, smoothly 0 at distance 1.
float fadeOut(float distance) {
    return 1.0f - smoothStep(std::clamp((distance - kFadeStart) / (1.0f - kFadeStart), 0.0f, 1.0f));
}

/// Streaks that stay of those that the aperture throws.
class StreakChoice {
public:
    /// Real apertures throw all streaks to both sides, and polygons have at least three edges. For
    /// an odd number of streaks, for one and for two, those between the wanted ones fade away.
    static StreakChoice fromCount(int count) {
        StreakChoice choice;
        choice.count_ = count;
        choice.choosesAll_ = count > 2 && count % 2 == 0;
        return choice;
    }

    static StreakChoice all() { return {}; }

    /// The part that stays of the light at an angle and a distance in steps. The core stays round.
    float getPart(float angle, float distance) const {
        if (choosesAll_) {
            return 1.0f;
        }
        const float upright = count_ == 1 ? getWave(2, angle) : 1.0f;  // the square's other streaks
        const float wave = getWave(count_, angle) * upright;
        return mix(wave * wave, 1.0f, std::exp(-distance / static_cast<float>(kCoreRows)));
    }

private:
    static float getWave(int count, float angle) {
        return 0.5f * (1.0f + std::cos(static_cast<float>(count) * angle));
    }

    int count_ = 0;
    bool choosesAll_ = true;
};

/// Where a direction and a distance are between the columns and rows of a pattern.
class PolarPlace {
public:
    PolarPlace(float angle, float distance) {
        constexpr float kColumnsPerRadian = static_cast<float>(kPolarDirections) / kPi;
        const float place = angle * kColumnsPerRadian;
        const float whole = std::floor(place);
        column_ = static_cast<int>(whole) & (kPolarDirections - 1);
        next_ = (column_ + 1) & (kPolarDirections - 1);
        row_ = static_cast<int>(distance);
        columnPart_ = place - whole;
        rowPart_ = distance - static_cast<float>(row_);
    }

    float sample(const PolarPattern& pattern) const {
        const auto mixColumns = [&](int y) {
            return mix(pattern.at(column_, y), pattern.at(next_, y), columnPart_);
        };
        return mix(mixColumns(row_), mixColumns(row_ + 1), rowPart_);
    }

private:
    int column_;
    int next_;
    int row_;
    float columnPart_;
    float rowPart_;
};

/// The patterns on a square grid, turned by `rotation` radians and faded out towards the sides.
std::array<BitmapImpl<float>, 3> toSquares(const PolarColorPattern& channels, float rotation,
                                           const StreakChoice& streaks) {
    constexpr int kSize = 2 * kReach + 1;
    std::array<BitmapImpl<float>, 3> squares;
    for (BitmapImpl<float>& square : squares) {
        square = BitmapImpl<float>(kSize, kSize);
        std::ranges::fill(square.pixels(), 0.0f);
    }
    // Two pixels at a time, opposite to each other, for the light of a pattern is alike there.
    const auto drawPixels = [&](int x, int y) {
        const auto distance = std::sqrt(static_cast<float>(x * x + y * y));
        if (distance >= static_cast<float>(kReach)) {
            return;
        }
        const float angle = std::atan2(static_cast<float>(y), static_cast<float>(x)) - rotation;
        const PolarPlace place(angle, distance);
        const float part = fadeOut(distance / static_cast<float>(kReach));
        const float own = part * streaks.getPart(angle, distance);
        const float opposite = part * streaks.getPart(angle + kPi, distance);
        for (std::size_t c = 0; c < channels.size(); ++c) {
            const float light = place.sample(channels[c]);
            squares[c].at(kReach + x, kReach - y) = own * light;
            squares[c].at(kReach - x, kReach + y) = opposite * light;
        }
    };
    Scheduler::defaultInstance().parallelFor(
        0, kReach + 1, TaskPriority::Normal, [&](std::int64_t y) {
            for (int x = y == 0 ? 0 : -kReach; x <= kReach; ++x) {
                drawPixels(x, static_cast<int>(y));
            }
        });
    return squares;
}

}  // namespace

PointSpreadFunction makeGlarePsf(const GlareParams& glare, const ApertureParams& aperture,
                                 int radius) {
    const GlareParams valid = limitToRanges(glare);
    const BitmapImpl<float> mask = aperture.isCustom ? drawApertureMask(aperture, kMaskSize)
                                                     : drawStreakMask(valid.streakCount, kMaskSize);
    PolarPattern pattern = toPolarPattern(ApertureSpectrum(mask, kPadding, kEdgeReach));
    blurDirections(pattern, kLargestBlur * valid.streakBlur * valid.streakBlur);
    shapeEdges(pattern, valid.colorIntensity);
    PolarColorPattern channels = spreadWavelengths(
        pattern, makeSpectralColors(valid.colorIntensity, valid.colorShift), kReach);
    std::ranges::for_each(channels, levelCore);
    const auto squares = toSquares(
        channels, toRadians(std::remainder(valid.rotation, 360.0f)),
        aperture.isCustom ? StreakChoice::all() : StreakChoice::fromCount(valid.streakCount));
    PointSpreadFunction result;
    result.radius = std::max(radius, 0);
    for (std::size_t c = 0; c < squares.size(); ++c) {
        result.planes[c] = resampleAreas(squares[c], result.getSize());
        normalize(result.planes[c]);
    }
    return result;
}

}  // namespace tavrin::postcore
