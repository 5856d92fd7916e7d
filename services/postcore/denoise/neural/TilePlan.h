#pragma once

#include "foundation/Geometry.h"

#include <cstdint>
#include <vector>

namespace tavrin::postcore {

/// A part of a picture that a network computes at once.
struct Tile {
    Pixel origin;   ///< multiples of the granule
    Bucket result;  ///< the pixels for which the tile is the one to use
};

struct TilePlan {
    Pixel tileSize;  ///< of all tiles, multiples of the granule; may reach over the picture's end
    std::vector<Tile> tiles;
};

/// Divides a picture into tiles of one size with as few pixels in all as can be. The pixels of a
/// tile that are used are at least `overlap` away from those of its edges that are not the
/// picture's, and the last tile ends where the picture does, rounded up to the granule: so the
/// results are those of the whole picture at once. A tile has at most `mostPixels`, or as few as
/// can be. The overlap is a multiple of the granule. `size` is at least 1 × 1.
TilePlan planTiles(Pixel size, int granule, int overlap, std::int64_t mostPixels);

}  // namespace tavrin::postcore
