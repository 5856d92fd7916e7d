#include "services/postcore/bloomglare/BloomPsf.h"

#include "foundation/Scheduler.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tavrin::postcore {
namespace {

// Of the kernel's end from the light, in degrees.
constexpr double kReach = 2.0;

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

}  // namespace

PointSpreadFunction makeBloomPsf(int radius) {
    PointSpreadFunction result;
    result.radius = std::max(radius, 0);
    const int size = result.getSize();
    const double reach = result.radius + 0.5;  // in pixels
    std::vector<float> plane(result.index(0, size));
    Scheduler::defaultInstance().parallelFor(0, size, TaskPriority::Normal, [&](std::int64_t row) {
        const double y = static_cast<double>(row) - result.radius;
        for (int column = 0; column < size; ++column) {
            const double x = column - result.radius;
            const double distance = std::sqrt(x * x + y * y) / reach;
            plane[result.index(column, static_cast<int>(row))] =
                static_cast<float>(getScatteredLight(kReach * distance) * fadeOut(distance));
        }
    });
    result.planes.fill(plane);
    normalize(result);
    return result;
}

}  // namespace tavrin::postcore
