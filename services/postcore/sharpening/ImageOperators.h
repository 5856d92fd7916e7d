#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Flags.h"
#include "foundation/Geometry.h"

#include <cstdint>

namespace tavrin::postcore {

/// How functions that work on a whole bitmap may do it.
enum class ImageOperatorsFlag : std::uint32_t {
    Parallel = 1,  ///< with the threads of the default scheduler; else the calling thread alone
};

/// The part of the bitmap inside the rectangle, whose coordinates are the bitmap's. What of the
/// rectangle lies outside the bitmap is left off; an empty rest gives an empty bitmap. Throws
/// std::bad_alloc. May be called from any thread.
BitmapImpl<Rgb> getSubBitmap(Flags<ImageOperatorsFlag> flags, const BitmapImpl<Rgb>& bitmap,
                             const Bucket& rectangle);

}  // namespace tavrin::postcore
