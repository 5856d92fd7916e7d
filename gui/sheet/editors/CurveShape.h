#pragma once

#include "services/colorkit/CurvePoint.h"

#include <cstddef>
#include <vector>

namespace tavrin::sheet {

using CurvePoints = std::vector<colorkit::CurvePoint>;

/// The height of the curve at x; of one without points, x itself.
class CurveShape {
public:
    explicit CurveShape(const CurvePoints& points);
    double getHeight(double x) const;

private:
    struct Segment {
        double start;
        double coefficients[4];
    };

    double firstY_ = 0.0;
    double firstX_ = 0.0;
    double firstSlope_ = 1.0;
    double lastX_ = 0.0;
    double lastY_ = 0.0;
    double lastSlope_ = 1.0;
    std::vector<Segment> segments_;
};

// What a user does with the points of a curve; the result is a curve again.

/// A new point there, of a curve with room for one; its index. The first point of a curve brings
/// two more, which keep the rest of it where it is.
std::size_t addPoint(CurvePoints& points, colorkit::CurvePoint point);
/// To that place, as far as the neighbours and the range allow.
void movePoint(CurvePoints& points, std::size_t index, colorkit::CurvePoint place);

}  // namespace tavrin::sheet
