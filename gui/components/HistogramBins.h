#pragma once

#include "foundation/Range.h"

#include <cstdint>
#include <span>

namespace tavrin::components {

/// Equally wide bins over a range: of values, or of stops from middle grey (0.18).
struct HistogramBins {
    Range<float> range;
    int count;
    bool isInStops;

    /// The index of each value's bin; -1 for values out of the range, and for NaN. `out` has as
    /// many as `values`. Any thread.
    void find(std::span<const float> values, std::int32_t* out) const;
};

}  // namespace tavrin::components
