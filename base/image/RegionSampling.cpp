#include "base/image/RegionSampling.h"

#include <algorithm>
#include <cmath>

namespace tavrin::image {
namespace {

int getSampledLength(int length, float scale) {
    return static_cast<int>(std::ceil(static_cast<float>(std::max(length, 0)) * (1.0f / scale)));
}

}  // namespace

Pixel getSampledSize(Pixel size, float scale) {
    return {getSampledLength(size.x, scale), getSampledLength(size.y, scale)};
}

std::vector<int> getSampleIndices(int count, int length, float scale) {
    std::vector<int> indices(std::size_t(std::max(count, 0)));
    // How often a source pixel is repeated in an enlargement.
    const int repeats = scale < 1.0f ? static_cast<int>(std::lround(1.0f / scale)) : 1;
    for (int i = 0; i < count; ++i) {
        const int index =
            scale < 1.0f ? i / repeats : static_cast<int>(static_cast<float>(i) * scale);
        // The count has been rounded up, so that the last product may reach the end.
        indices[std::size_t(i)] = std::min(index, length - 1);
    }
    return indices;
}

}  // namespace tavrin::image
