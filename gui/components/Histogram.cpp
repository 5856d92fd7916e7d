#include "gui/components/Histogram.h"

#include <cmath>
#include <cstddef>

namespace tavrin::components {
namespace {

constexpr float kMiddleGrey = 0.18f;

}  // namespace

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
    const auto bins = static_cast<float>(request.binCount);
    const float scale = bins / (request.range.maximum - request.range.minimum);
    for (std::size_t i = 0; i < histograms.size(); ++i) {
        for (const Rgb& pixel : pixels) {
            const float channel = getChannel(pixel, request.channels[i]);
            const float value =
                request.scale == HistogramScale::Stops ? std::log2(channel / kMiddleGrey) : channel;
            const float bin = (value - request.range.minimum) * scale;
            if (bin >= 0.0f && bin < bins) {
                ++histograms[i].counts[static_cast<std::size_t>(bin)];
            }
        }
    }
}

}  // namespace tavrin::components
