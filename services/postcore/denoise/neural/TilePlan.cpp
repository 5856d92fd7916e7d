#include "services/postcore/denoise/neural/TilePlan.h"

#include <algorithm>
#include <limits>

namespace tavrin::postcore {
namespace {

int divideUp(int value, int divisor) {
    return (value + divisor - 1) / divisor;
}

/// One direction of the picture.
struct Axis {
    int size;     ///< rounded up to the granule
    int granule;  ///< of the tiles
    int overlap;

    /// The length of tiles of which `count` cover the axis.
    int getTileLength(int count) const {
        const int used = divideUp(size - 2 * overlap, count * granule) * granule;
        return count == 1 ? size : std::min(used + 2 * overlap, size);
    }

    /// How many tiles of this length cover the axis; 0: no number does.
    int getTileCount(std::int64_t length) const {
        if (length >= size) {
            return 1;
        }
        const auto used = static_cast<int>(length / granule) * granule - 2 * overlap;
        return used < granule ? 0 : divideUp(size - 2 * overlap, used);
    }

    int getMostTiles() const { return std::max((size - 2 * overlap) / granule, 1); }

    int getOrigin(int tile, int length) const {
        return std::min(tile * (length - 2 * overlap), size - length);
    }
};

/// Where the pixels of the tile that are used begin; the tile after the last one begins at the end.
int getResultBegin(const Axis& axis, int tile, int count, int length, int end) {
    return tile == 0       ? 0
           : tile == count ? end
                           : axis.getOrigin(tile - 1, length) + length - axis.overlap;
}

}  // namespace

TilePlan planTiles(Pixel size, int granule, int overlap, std::int64_t mostPixels) {
    const Axis horizontal{divideUp(size.x, granule) * granule, granule, overlap};
    const Axis vertical{divideUp(size.y, granule) * granule, granule, overlap};
    // Without a choice that keeps to the limit, the smallest tiles.
    Pixel count{horizontal.getMostTiles(), vertical.getMostTiles()};
    std::int64_t leastWork = std::numeric_limits<std::int64_t>::max();
    for (int columns = 1; columns <= horizontal.getMostTiles(); ++columns) {
        const std::int64_t width = horizontal.getTileLength(columns);
        const int rows = vertical.getTileCount(mostPixels / width);
        if (rows == 0) {
            continue;
        }
        const std::int64_t work = columns * width * rows * vertical.getTileLength(rows);
        if (work < leastWork) {
            leastWork = work;
            count = {columns, rows};
        }
    }

    TilePlan plan;
    plan.tileSize = {horizontal.getTileLength(count.x), vertical.getTileLength(count.y)};
    const auto [width, height] = plan.tileSize;
    for (int y = 0; y < count.y; ++y) {
        for (int x = 0; x < count.x; ++x) {
            plan.tiles.push_back({{horizontal.getOrigin(x, width), vertical.getOrigin(y, height)},
                                  {getResultBegin(horizontal, x, count.x, width, size.x),
                                   getResultBegin(vertical, y, count.y, height, size.y),
                                   getResultBegin(horizontal, x + 1, count.x, width, size.x),
                                   getResultBegin(vertical, y + 1, count.y, height, size.y)}});
        }
    }
    return plan;
}

}  // namespace tavrin::postcore
