#pragma once

#include "base/image/RowLoop.h"
#include "foundation/Bitmap.h"
#include "foundation/Geometry.h"

#include <vector>

namespace tavrin::image {

/// How often an enlargement repeats a pixel along each axis: 1 / scale, without its fraction. 1 for
/// scales of 1 and more.
int getRepeats(float scale);

/// The size of the bitmap that samples `size` image pixels with one pixel for every scale × scale
/// of them: rounded up in a reduction, every pixel repeated getRepeats() times in an enlargement.
/// The one place where region sizes are rounded.
Pixel getSampledSize(Pixel size, float scale);

/// For each of `count` samples along one axis the index of its source pixel in [0, length).
std::vector<int> getSampleIndices(int count, int length, float scale);

/// A part of a region, and the first row of the region's bitmap that the part's bitmap makes up.
struct RegionRows {
    Bucket region;
    int firstRow;
};

/// Divides a region into parts of whole rows that, sampled one by one, give what the whole gives.
/// They have at most `mostRows` rows each, or one row of image pixels where these give more.
std::vector<RegionRows> divideIntoRows(const Bucket& region, float scale, int mostRows);

/// Samples a region. Source::row(y)[x] gives the pixel (x, y) of the data window, and
/// Source::row(y).read(x, span) the pixels from there on.
template <class P, class Source>
BitmapImpl<P> sampleRegion(const Source& source, const Bucket& region, float scale) {
    const Pixel size = getSampledSize(region.size(), scale);
    BitmapImpl<P> result(size.x, size.y);
    const auto width = std::size_t(result.getWidth());
    const auto x0 = std::size_t(region.x0);
    if (scale == 1.0f) {
        forEachRow(size, [&](int y) { source.row(region.y0 + y).read(x0, result.row(y)); });
        return result;
    }
    const std::vector<int> columns = getSampleIndices(size.x, region.width(), scale);
    const std::vector<int> rows = getSampleIndices(size.y, region.height(), scale);
    forEachRow(size, [&](int y) {
        const auto from = source.row(region.y0 + rows[std::size_t(y)]);
        P* to = result.row(y).data();
        for (std::size_t x = 0; x < width; ++x) {
            to[x] = from[x0 + std::size_t(columns[x])];
        }
    });
    return result;
}

}  // namespace tavrin::image
