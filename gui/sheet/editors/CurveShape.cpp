#include "gui/sheet/editors/CurveShape.h"

#include "services/colorkit/ToneCurve.h"

#include <algorithm>
#include <iterator>

namespace tavrin::sheet {
namespace {

using colorkit::CurvePoint;
using colorkit::kLargestCurveStop;

constexpr float kEnds = 6.0f;            // stops from middle grey, of the points that hold a curve
constexpr float kSmallestStep = 0.002f;  // between neighbours; a curve demands half of that

}  // namespace

CurveShape::CurveShape(const CurvePoints& points) {
    if (points.empty()) {
        return;
    }
    const colorkit::ToneCurve curve(points);
    firstX_ = curve.first.x;
    firstY_ = curve.first.y;
    firstSlope_ = curve.firstSlope;
    lastX_ = curve.last.x;
    lastY_ = curve.last.y;
    lastSlope_ = curve.lastSlope;
    for (const auto& segment : curve.segments) {
        Segment copy{segment.start, {}};
        std::copy(std::begin(segment.coefficients), std::end(segment.coefficients),
                  std::begin(copy.coefficients));
        segments_.push_back(copy);
    }
}

double CurveShape::getHeight(double x) const {
    if (x <= firstX_ || segments_.empty()) {
        return firstY_ + firstSlope_ * (x - firstX_);
    }
    if (x >= lastX_) {
        return lastY_ + lastSlope_ * (x - lastX_);
    }
    const auto after =
        std::upper_bound(segments_.begin(), segments_.end(), x,
                         [](double place, const Segment& each) { return place < each.start; });
    const Segment& segment = *std::prev(after);
    const double u = x - segment.start;
    const double* c = segment.coefficients;
    return c[0] + u * (c[1] + u * (c[2] + u * c[3]));
}

std::size_t addPoint(CurvePoints& points, CurvePoint point) {
    if (points.empty() && std::abs(point.x) < kEnds) {
        points = {{-kEnds, -kEnds}, {kEnds, kEnds}};
    }
    const auto place = std::lower_bound(points.begin(), points.end(), point.x,
                                        [](const CurvePoint& each, float x) { return each.x < x; });
    const auto index = static_cast<std::size_t>(place - points.begin());
    points.insert(place, point);
    movePoint(points, index, point);
    return index;
}

void movePoint(CurvePoints& points, std::size_t index, CurvePoint place) {
    const float left = index == 0 ? -kLargestCurveStop : points[index - 1].x + kSmallestStep;
    const float right =
        index + 1 == points.size() ? kLargestCurveStop : points[index + 1].x - kSmallestStep;
    points[index].x = std::max(left, std::min(place.x, right));
    points[index].y = std::clamp(place.y, -kLargestCurveStop, kLargestCurveStop);
}

}  // namespace tavrin::sheet
