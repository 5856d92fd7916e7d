#include "services/postcore/bloomglare/BloomPsf.h"

#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/AreaResampling.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tavrin::postcore {
namespace {

// Half the side of the square that the glow is drawn on.
constexpr int kSteps = 512;
// From the light to the end of the glow, in degrees: so near that the inner glow, which is some
// hundredths of a degree wide, is seen as one and not as a blur.
constexpr double kReach = 0.8;

/// Light scattered in the eye by the angle from its source in degrees (G. Spencer, P. Shirley,
/// K. Zimmerman, D. Greenberg, "Physically-based glare effects for digital images", 1995, equation
/// 5), without the part that stays at its place.
double getScatteredLight(double angle) {
    const double offset = angle + 0.02;
    return 0.478 * 20.91 / (offset * offset * offset) + 0.138 * 72.37 / (offset * offset);
}

/// 1 around the middle, smoothly 0 at distance 1.
double fadeOut(double distance) {
    const double rest = std::max(1.0 - distance * distance, 0.0);
    return rest * rest;
}

BitmapImpl<float> drawGlow() {
    constexpr int kSize = 2 * kSteps + 1;
    BitmapImpl<float> square(kSize, kSize);
    Scheduler::defaultInstance().parallelFor(0, kSize, TaskPriority::Normal, [&](std::int64_t row) {
        const double y = static_cast<double>(row) - kSteps;
        for (int column = 0; column < kSize; ++column) {
            const double x = column - kSteps;
            const double distance = std::sqrt(x * x + y * y) / kSteps;
            square.at(column, static_cast<int>(row)) =
                static_cast<float>(getScatteredLight(kReach * distance) * fadeOut(distance));
        }
    });
    return square;
}

}  // namespace

PointSpreadFunction makeBloomPsf(int radius) {
    PointSpreadFunction result;
    result.radius = std::max(radius, 0);
    std::vector<float> kernel = resampleAreas(drawGlow(), result.getSize());
    normalize(kernel);
    result.planes.fill(kernel);
    return result;
}

}  // namespace tavrin::postcore
