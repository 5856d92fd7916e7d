#include "base/image/RegionSampling.h"

#include <algorithm>
#include <cmath>

namespace tavrin::image {
namespace {

int getSampledLength(int length, float scale) {
    const int pixels = std::max(length, 0);
    if (scale < 1.0f) {
        return pixels * getRepeats(scale);
    }
    // A quotient of whole numbers that is one itself is exact in single precision, so that it is
    // not rounded up; a product with the reciprocal may be slightly above it.
    return static_cast<int>(std::ceil(static_cast<float>(pixels) / scale));
}

}  // namespace

int getRepeats(float scale) {
    // Reciprocals of whole numbers, rounded to single precision, may be slightly too large.
    constexpr double kTolerance = 1e-4;
    return std::max(1, static_cast<int>(1.0 / double{scale} + kTolerance));
}

Pixel getSampledSize(Pixel size, float scale) {
    return {getSampledLength(size.x, scale), getSampledLength(size.y, scale)};
}

std::vector<int> getSampleIndices(int count, int length, float scale) {
    std::vector<int> indices(std::size_t(std::max(count, 0)));
    const int repeats = getRepeats(scale);
    for (int i = 0; i < count; ++i) {
        const int index =
            scale < 1.0f ? i / repeats : static_cast<int>(static_cast<float>(i) * scale);
        // The count has been rounded up, so that the last product may reach the end.
        indices[std::size_t(i)] = std::min(index, length - 1);
    }
    return indices;
}

std::vector<RegionRows> divideIntoRows(const Bucket& region, float scale, int mostRows) {
    const int repeats = getRepeats(scale);
    const int height = getSampledSize(region.size(), scale).y;
    const std::vector<int> rows = getSampleIndices(height, region.height(), scale);
    // Between rows that lie a fraction of a pixel apart no part starts where its own samples would.
    const bool isDivisible = scale <= 1.0f || std::trunc(scale) == scale;
    const int step = isDivisible ? std::max(mostRows / repeats, 1) * repeats : 1;
    std::vector<RegionRows> parts;
    for (int first = 0; first < height; first += step) {
        const int y0 = region.y0 + rows[std::size_t(first)];
        const int next = first + step;
        int y1 = next < height ? region.y0 + rows[std::size_t(next)] : region.y1;
        if (!isDivisible) {
            y1 = y0 + 1;
        }
        parts.push_back({{region.x0, y0, region.x1, y1}, first});
    }
    return parts;
}

}  // namespace tavrin::image
