#include "services/colorkit/CurvePoint.h"

#include <cmath>

namespace tavrin::colorkit {

bool isCurve(const std::vector<CurvePoint>& points) {
    constexpr float kSmallestDistance = 0.001f;
    if (points.size() > kMostCurvePoints) {
        return false;
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        const bool isInRange = std::abs(points[i].x) <= kLargestCurveStop &&
                               std::abs(points[i].y) <= kLargestCurveStop;
        if (!isInRange || (i > 0 && !(points[i].x - points[i - 1].x >= kSmallestDistance))) {
            return false;
        }
    }
    return true;
}

}  // namespace tavrin::colorkit
