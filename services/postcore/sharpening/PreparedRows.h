#pragma once

#include "foundation/PixelArray.h"
#include "services/postcore/sharpening/RowKernels.h"

#include <algorithm>
#include <cstddef>

namespace tavrin::postcore {

/// Rows of prepared pixels (see RowKernels.h), all 0 at first, each with a margin of at least
/// `margin` pixels of 0 on both sides, of which the right one begins where the width rounded up to
/// granules ends. Throws std::bad_alloc.
class PreparedRows {
public:
    PreparedRows(int count, int width, int margin = 0)
        : margin_(countGranules(margin)),
          // An odd number of granules: rows whose distance is a power of two would compete for the
          // same places in the cache.
          stride_((countGranules(width) + 2 * margin_) | 1),
          floats_(static_cast<std::size_t>(count) * stride_ * kGranuleFloats) {
        std::fill_n(floats_.data(), floats_.size(), 0.0f);
    }

    /// The first pixel after the left margin.
    float* row(int index) {
        return floats_.data() +
               (static_cast<std::size_t>(index) * stride_ + margin_) * kGranuleFloats;
    }

    const float* row(int index) const { return const_cast<PreparedRows*>(this)->row(index); }

    static std::size_t countGranules(int pixels) {
        return (static_cast<std::size_t>(pixels) + kRowGranule - 1) / kRowGranule;
    }

private:
    static constexpr std::size_t kGranuleFloats = kRowGranule * kPixelFloats;

    std::size_t margin_;
    std::size_t stride_;
    PixelArray<float> floats_;
};

}  // namespace tavrin::postcore
