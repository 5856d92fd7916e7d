#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Scheduler.h"
#include "services/postcore/denoise/neural/PixelCode.h"
#include "services/postcore/denoise/neural/TiledNetwork.h"

namespace tavrin::postcore {

/// What a network is told about a picture.
struct NetworkInput {
    const BitmapImpl<Rgb>* picture = nullptr;
    const BitmapImpl<Rgb>* albedo = nullptr;   ///< may be missing, then without normals
    const BitmapImpl<Rgb>* normals = nullptr;  ///< may be missing
};

/// Fills in a tile's channels: the encoded picture, the albedo from 0 to 1, the normal moved from
/// -1 ... 1 to 0 ... 1. What is not finite counts as 0.
void writeTile(Scheduler& scheduler, const NetworkInput& input, const PixelCode& code,
               const Tile& tile, const TiledNetwork::Channels& channels);

/// Decodes the result of a tile into its part of the picture; alpha becomes 0.
void readTile(Scheduler& scheduler, const TiledNetwork::Channels& channels, const PixelCode& code,
              const Tile& tile, BitmapImpl<Rgb>& result);

}  // namespace tavrin::postcore
