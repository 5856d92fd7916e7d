#pragma once

#include "foundation/Color.h"
#include "foundation/Optional.h"
#include "foundation/Range.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tavrin::components {

/// What of a colour is counted: the mean of its components, or one of them.
enum class ColorCurveChannel { Average = 0, Red = 1, Green = 2, Blue = 3 };

float getChannel(const Rgb& color, ColorCurveChannel channel);

/// How many values are in each of equally wide bins, which share a range.
struct Histogram {
    Range<float> range;
    std::vector<std::uint64_t> counts;
};

/// Where the bins of a histogram are.
enum class HistogramScale {
    Linear,  ///< the range is one of values
    Stops,   ///< the range is in stops from middle grey (0.18)
};

/// What to count.
struct HistogramRequest {
    Range<float> range;
    HistogramScale scale = HistogramScale::Linear;
    std::vector<ColorCurveChannel> channels;  ///< a histogram for each
    int binCount = 0;
    Optional<int> stage;  ///< the id of the operator of the tone mapping whose input is counted
};

/// Histograms without counts, one for each channel of the request.
std::vector<Histogram> makeEmptyHistograms(const HistogramRequest& request);
/// Counts one more run of pixels. Values out of the range, and NaN, are not counted.
void count(const HistogramRequest& request, std::span<const Rgb> pixels,
           std::vector<Histogram>& histograms);

}  // namespace tavrin::components
