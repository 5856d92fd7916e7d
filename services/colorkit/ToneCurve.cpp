#include "services/colorkit/ToneCurve.h"

#include <algorithm>
#include <cmath>

namespace tavrin::colorkit {
namespace {

std::vector<double> computeSecants(const std::vector<CurvePoint>& points) {
    std::vector<double> secants;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        secants.push_back((double{points[i + 1].y} - points[i].y) /
                          (double{points[i + 1].x} - points[i].x));
    }
    return secants;
}

/// Slopes at the points. Within the circle of radius 3 around the origin, the slopes at the ends of
/// a segment over its secant keep the segment monotone (Fritsch, Carlson 1980, region 2).
std::vector<double> computeSlopes(const std::vector<double>& secants) {
    std::vector<double> slopes(secants.size() + 1, 1.0);
    if (secants.empty()) {
        return slopes;
    }
    slopes.front() = std::max(secants.front(), 0.0);
    slopes.back() = std::max(secants.back(), 0.0);
    for (std::size_t i = 1; i < secants.size(); ++i) {
        const bool turns = secants[i - 1] * secants[i] <= 0.0;
        slopes[i] = turns ? 0.0 : (secants[i - 1] + secants[i]) / 2.0;
    }
    for (std::size_t i = 0; i < secants.size(); ++i) {
        if (secants[i] == 0.0) {
            slopes[i] = 0.0;
            slopes[i + 1] = 0.0;
            continue;
        }
        const double radius = std::hypot(slopes[i] / secants[i], slopes[i + 1] / secants[i]);
        if (radius > 3.0) {
            slopes[i] *= 3.0 / radius;
            slopes[i + 1] *= 3.0 / radius;
        }
    }
    return slopes;
}

}  // namespace

ToneCurve::ToneCurve(const std::vector<CurvePoint>& points)
    : first(points.front()), last(points.back()) {
    const std::vector<double> secants = computeSecants(points);
    const std::vector<double> slopes = computeSlopes(secants);
    firstSlope = slopes.front();
    lastSlope = slopes.back();
    for (std::size_t i = 0; i < secants.size(); ++i) {
        const double width = double{points[i + 1].x} - points[i].x;
        // The cubic of Hermite with these values and slopes at its ends.
        segments.push_back(
            {points[i].x,
             {points[i].y, slopes[i], (3.0 * secants[i] - 2.0 * slopes[i] - slopes[i + 1]) / width,
              (slopes[i] + slopes[i + 1] - 2.0 * secants[i]) / (width * width)}});
    }
}

}  // namespace tavrin::colorkit
