#include "gui/components/Histogram.h"

#include "gui/components/HistogramBins.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tavrin::components {

float getChannel(const Rgb& color, ColorCurveChannel channel) {
    switch (channel) {
        case ColorCurveChannel::Red:
            return color.r;
        case ColorCurveChannel::Green:
            return color.g;
        case ColorCurveChannel::Blue:
            return color.b;
        case ColorCurveChannel::Average:
            break;
    }
    return (color.r + color.g + color.b) * (1.0f / 3.0f);
}

std::vector<Histogram> makeEmptyHistograms(const HistogramRequest& request) {
    const Histogram empty{request.range,
                          std::vector<std::uint64_t>(static_cast<std::size_t>(request.binCount))};
    return std::vector<Histogram>(request.channels.size(), empty);
}

void count(const HistogramRequest& request, std::span<const Rgb> pixels,
           std::vector<Histogram>& histograms) {
    constexpr std::size_t kRun = 1024;  // pixels
    const HistogramBins bins = {request.range, request.binCount,
                                request.scale == HistogramScale::Stops};
    std::array<float, kRun> values;
    std::array<std::int32_t, kRun> found;
    for (std::size_t from = 0; from < pixels.size(); from += kRun) {
        const auto run = pixels.subspan(from, std::min(kRun, pixels.size() - from));
        for (std::size_t i = 0; i < histograms.size(); ++i) {
            std::ranges::transform(run, values.begin(), [&](const Rgb& pixel) {
                return getChannel(pixel, request.channels[i]);
            });
            bins.find({values.data(), run.size()}, found.data());
            for (const std::int32_t bin : std::span(found).first(run.size())) {
                if (bin >= 0) {
                    ++histograms[i].counts[static_cast<std::size_t>(bin)];
                }
            }
        }
    }
}

}  // namespace tavrin::components
