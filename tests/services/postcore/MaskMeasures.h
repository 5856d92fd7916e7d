#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Vec.h"

#include <vector>

namespace tavrin::postcore {

// What can be measured of the mask of an aperture. Lengths are in radii of the aperture, x to the
// right and y up from its middle.

/// The open area.
double getArea(const BitmapImpl<float>& mask);
/// How open the mask is around a point.
double getOpenness(const BitmapImpl<float>& mask, double x, double y);
/// How open it is on average between two distances from the middle.
double getRingOpenness(const BitmapImpl<float>& mask, double from, double to);
/// The mean difference of two masks.
double getDifference(const BitmapImpl<float>& left, const BitmapImpl<float>& right);
/// The deviation between the mean opennesses of square blocks: high where marks lie in heaps.
double getClumpiness(const BitmapImpl<float>& mask);

/// The direction along which the mask changes least, and how much more it changes across it.
struct Grain {
    double degrees;    ///< -90 to 90, counterclockwise
    double coherence;  ///< 0 is alike in all directions, 1 only across
};
Grain getGrain(const BitmapImpl<float>& mask);

/// A connected dark region.
struct DarkMark {
    double area;
    double extent;  ///< diagonal of its bounding box
    Vec2 middle;
};
/// Those that lie wholly within `reach` of the middle.
std::vector<DarkMark> findDarkMarks(const BitmapImpl<float>& mask, double reach = 0.95);

/// Deviation over mean.
double getSpread(const std::vector<double>& values);
std::vector<double> getAreas(const std::vector<DarkMark>& marks);
/// From each mark that is not near the rim to the nearest other one.
std::vector<Vec2> getWaysToNeighbors(const std::vector<DarkMark>& marks);

}  // namespace tavrin::postcore
