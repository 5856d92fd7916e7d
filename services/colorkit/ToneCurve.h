#pragma once

#include "services/colorkit/CurvePoint.h"

#include <vector>

namespace tavrin::colorkit {

/// A smooth curve through points: the monotone cubic of Fritsch, Carlson 1980, which rises and
/// falls only where the points do, continued beyond the first and the last point by straight lines
/// with the slopes there. Those are never negative: a curve that falls at an end stays level beyond
/// it.
struct ToneCurve {
    /// c0 + u (c1 + u (c2 + u c3)) for u = x - start.
    struct Segment {
        double start;
        double coefficients[4];
    };

    /// At least one point, as isCurve() demands. A single point has the slope 1.
    explicit ToneCurve(const std::vector<CurvePoint>& points);

    CurvePoint first;
    CurvePoint last;
    double firstSlope;
    double lastSlope;
    std::vector<Segment> segments;  ///< one less than points
};

}  // namespace tavrin::colorkit
