#include "gui/components/DisplayedImage.h"

#include "foundation/Scheduler.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <mutex>

namespace tavrin::components {
namespace {

using Control = pipeline::IOperator::Control;

// An image is counted in bands of about so many pixels, so that no second copy of it is made.
constexpr std::int64_t kPixelsPerBand = 1 << 20;
// Below this many pixels for each thread, one thread is done before another has started.
constexpr std::int64_t kPixelsPerTask = 32768;

void countBitmap(const HistogramRequest& request, const BitmapImpl<Rgb>& bitmap,
                 std::vector<Histogram>& sum) {
    std::mutex mutex;
    Scheduler::defaultInstance().parallelForRanges(
        0, bitmap.getPixelCount(), kPixelsPerTask, TaskPriority::Interactive,
        [&](std::int64_t from, std::int64_t to) {
            std::vector<Histogram> part = makeEmptyHistograms(request);
            count(request,
                  bitmap.pixels().subspan(static_cast<std::size_t>(from),
                                          static_cast<std::size_t>(to - from)),
                  part);
            const std::lock_guard lock(mutex);
            for (std::size_t i = 0; i < sum.size(); ++i) {
                std::ranges::transform(sum[i].counts, part[i].counts, sum[i].counts.begin(),
                                       std::plus<>());
            }
        });
}

}  // namespace

Pixel DisplayedImage::getSize() const {
    return performer_.includeAlpha.getDataWindow().size();
}

DisplayedImage::Provider DisplayedImage::getDrawProvider(pipeline::IOperator& op) const {
    return [this, &op](const Bucket& region, float scale) {
        return op.provideRgbRegion(element_, region, scale, Control::Display);
    };
}

void DisplayedImage::setMeasuredStage(Optional<int> stage) {
    performer_.colorMap.setHistogramStage(stage ? static_cast<std::uint32_t>(*stage)
                                                : pipeline::ColorMapOperator::kNoStage);
}

std::vector<Histogram> DisplayedImage::getHistograms(const HistogramRequest& request) {
    setMeasuredStage(request.stage);
    std::vector<Histogram> histograms = makeEmptyHistograms(request);
    const Pixel size = performer_.zoom.getDataWindow().size();
    const int rows =
        static_cast<int>(std::clamp<std::int64_t>(kPixelsPerBand / std::max(size.x, 1), 1, 4096));
    for (int y = 0; y < size.y; y += rows) {
        const Bucket band = {0, y, size.x, std::min(y + rows, size.y)};
        const auto bitmap =
            performer_.zoom.provideRgbRegion(element_, band, 1.0f, Control::Measure);
        if (!bitmap) {
            // Another image has taken the place, or the element is still being computed.
            return makeEmptyHistograms(request);
        }
        countBitmap(request, *bitmap, histograms);
    }
    return histograms;
}

Optional<float> DisplayedImage::getPixelValue(Vec2 position, ColorCurveChannel channel) const {
    const Pixel size = performer_.zoom.getDataWindow().size();
    // Also false for what is not a number.
    if (!(position.x >= 0.0f && position.y >= 0.0f && position.x < static_cast<float>(size.x) &&
          position.y < static_cast<float>(size.y))) {
        return std::nullopt;
    }
    const Pixel pixel = {static_cast<int>(position.x), static_cast<int>(position.y)};
    const auto bitmap = performer_.zoom.provideRgbRegion(
        element_, {pixel.x, pixel.y, pixel.x + 1, pixel.y + 1}, 1.0f, Control::Measure);
    if (!bitmap) {
        return std::nullopt;
    }
    return getChannel(bitmap->at(0, 0), channel);
}

}  // namespace tavrin::components
