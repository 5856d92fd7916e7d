#pragma once

#include "foundation/Color.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace tavrin::colorkit {

/// Where a row of pixels lies in the image: pixel i of the row stands for the position
/// (x + trunc(i * scale), y) in display-window coordinates.
struct RowPosition {
    int x = 0;
    int y = 0;
    float scale = 1.0f;
};

/// A piece of a row as planes that stay in the nearest cache while all stages work on them. Stages
/// may compute on the values after the last pixel, up to the next full vector; these are 0 at first
/// and are never stored.
struct PixelBlock {
    static constexpr std::size_t kCapacity = 256;

    alignas(128) float r[kCapacity];
    alignas(128) float g[kCapacity];
    alignas(128) float b[kCapacity];
    alignas(128) float a[kCapacity];
    std::size_t count;       ///< number of pixels, at most kCapacity
    RowPosition position;    ///< of the whole row
    std::size_t firstIndex;  ///< index in the row of the block's first pixel
};

/// Where each pixel of the block lies: whole positions along x, for use with vectors. Those after
/// the last pixel are 0.
struct PixelColumns {
    explicit PixelColumns(const PixelBlock& block);

    alignas(128) std::int32_t x[PixelBlock::kCapacity] = {};
};

/// Loads pixels (at most kCapacity) into the planes. Colours become finite and not negative: what
/// is below 0 and what is not a number becomes 0, infinity the largest float.
void loadBlock(std::span<const Rgb> pixels, PixelBlock& block);

/// Stores the planes into as many pixels as loadBlock took; negative colours become 0 and the
/// fourth component is what it was.
void storeBlock(const PixelBlock& block, std::span<Rgb> pixels);

}  // namespace tavrin::colorkit
