#pragma once

#include <cstddef>
#include <vector>

namespace tavrin::colorkit {

/// A point of a tone curve, in stops from middle grey (0.18): a colour of x stops becomes one of y.
struct CurvePoint {
    float x = 0.0f;
    float y = 0.0f;

    friend bool operator==(const CurvePoint&, const CurvePoint&) = default;
};

/// Both coordinates lie within this many stops from middle grey.
constexpr float kLargestCurveStop = 16.0f;
constexpr std::size_t kMostCurvePoints = 32;

/// Whether there are at most kMostCurvePoints within the range and each lies at least a thousandth
/// of a stop to the right of the one before. No points at all are a curve too: the one that changes
/// nothing.
bool isCurve(const std::vector<CurvePoint>& points);

}  // namespace tavrin::colorkit
