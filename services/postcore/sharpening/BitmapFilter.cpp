#include "services/postcore/sharpening/BitmapFilter.h"

#include "foundation/Scheduler.h"
#include "services/postcore/sharpening/PreparedRows.h"
#include "services/postcore/sharpening/RowKernels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tavrin::postcore {
namespace {

int getLastDistance(const std::vector<float>& weights) {
    return std::max(static_cast<int>(weights.size()) - 1, 0);
}

/// Filters one row after the other: down the columns of the rows around it, then along the row.
class RowFilter {
public:
    RowFilter(const BitmapFilter& filter, int width)
        : filter_(filter),
          width_(width),
          pixelCount_(PreparedRows::countGranules(width) * kRowGranule),
          columnSums_(1, width, filter.getReach()),
          sums_(2, width) {
        const int reach = filter.getReach();
        for (int i = -reach; i <= reach; ++i) {
            shifted_.push_back(getColumnSum(i));
        }
    }

    /// `middle` points to the row's own prepared pixels among those of the rows within reach.
    void filterRow(const float* const* middle, std::span<Rgb> row) {
        const float* narrow = blur(middle, filter_.narrow, sums_.row(0));
        const float* wide = blur(middle, filter_.wide, sums_.row(1));
        combineRow(narrow, wide, filter_.amount, row);
    }

private:
    const float* blur(const float* const* middle, const std::vector<float>& weights, float* sums) {
        if (weights.empty()) {
            return nullptr;
        }
        sumRows(middle, weights, pixelCount_, columnSums_.row(0));
        if (filter_.sidesMeet) {
            joinSides(getLastDistance(weights));
        }
        sumRows(shifted_.data() + filter_.getReach(), weights, pixelCount_, sums);
        return sums;
    }

    /// Continues the row of column sums beyond its sides with what is at the other one.
    void joinSides(int distance) {
        const auto copyPixel = [this](int from, int to) {
            std::copy_n(getColumnSum(from), kPixelFloats, getColumnSum(to));
        };
        for (int i = 0; i < distance; ++i) {
            copyPixel(width_ - 1 - i % width_, -1 - i);
            copyPixel(i % width_, width_ + i);
        }
    }

    float* getColumnSum(int x) {
        return columnSums_.row(0) + x * static_cast<std::ptrdiff_t>(kPixelFloats);
    }

    const BitmapFilter& filter_;
    const int width_;
    const std::size_t pixelCount_;
    PreparedRows columnSums_;
    std::vector<const float*> shifted_;  // columnSums_, shifted by each distance within reach
    PreparedRows sums_;
};

/// One filtering of a bitmap, in bands of rows that can be worked on at the same time. As a band
/// overwrites what its neighbours look at, rows within reach of where two bands meet are prepared
/// for both before.
class BandedFilter {
public:
    BandedFilter(const BitmapFilter& filter, BitmapImpl<Rgb>& bitmap, int bandCount)
        : filter_(filter),
          bitmap_(bitmap),
          reach_(filter.getReach()),
          bandCount_(bandCount),
          emptyRow_(1, bitmap.getWidth()) {
        for (int i = 1; i < bandCount; ++i) {
            meetings_.emplace_back(2 * reach_, bitmap.getWidth());
        }
    }

    /// Prepares the rows around the start of band `band` + 1. All meetings come before all bands.
    void prepareMeeting(int band) {
        const int first = getStart(band + 1) - reach_;
        for (int i = 0; i < 2 * reach_; ++i) {
            prepareRow(bitmap_.row(first + i), meetings_[static_cast<std::size_t>(band)].row(i));
        }
    }

    void filterBand(int band) {
        const int start = getStart(band);
        const int end = getStart(band + 1);
        const int windowSize = 2 * reach_ + 1;
        RowFilter rowFilter(filter_, bitmap_.getWidth());
        PreparedRows ring(windowSize, bitmap_.getWidth());
        std::vector<const float*> window(static_cast<std::size_t>(windowSize));
        for (int y = start - reach_; y < end + reach_; ++y) {
            std::shift_left(window.begin(), window.end(), 1);
            window.back() = getNeighborRow(band, y);
            if (!window.back()) {
                float* prepared = ring.row(y % windowSize);
                prepareRow(bitmap_.row(y), prepared);
                window.back() = prepared;
            }
            if (y - reach_ >= start) {
                rowFilter.filterRow(window.data() + reach_, bitmap_.row(y - reach_));
            }
        }
    }

private:
    int getStart(int band) const {
        return static_cast<int>(std::int64_t{bitmap_.getHeight()} * band / bandCount_);
    }

    /// The prepared row, or null when it belongs to the band itself.
    const float* getNeighborRow(int band, int y) {
        if (y < 0 || y >= bitmap_.getHeight()) {
            return emptyRow_.row(0);
        }
        const int start = getStart(band);
        const int end = getStart(band + 1);
        if (y < start) {
            return meetings_[static_cast<std::size_t>(band - 1)].row(y - start + reach_);
        }
        return y < end ? nullptr : meetings_[static_cast<std::size_t>(band)].row(y - end + reach_);
    }

    const BitmapFilter& filter_;
    BitmapImpl<Rgb>& bitmap_;
    const int reach_;
    const int bandCount_;
    PreparedRows emptyRow_;
    std::vector<PreparedRows> meetings_;
};

/// Two bands for each thread. None is so low that more rows would be kept for neighbours than the
/// bitmap has, or that handing it out would cost more than filtering it.
int chooseBandCount(Pixel size, int reach) {
    constexpr int kLeastPixels = 16384;
    const int leastRows = std::max(2 * reach, kLeastPixels / size.x + 1);
    return std::clamp(size.y / leastRows, 1, 2 * Scheduler::getThreadCount());
}

}  // namespace

int BitmapFilter::getReach() const {
    return std::max(getLastDistance(narrow), getLastDistance(wide));
}

void BitmapFilter::apply(Flags<ImageOperatorsFlag> flags, BitmapImpl<Rgb>& bitmap) const {
    if (getReach() == 0 || bitmap.getPixelCount() == 0) {
        return;
    }
    const bool isParallel = flags.has(ImageOperatorsFlag::Parallel);
    const int bandCount = isParallel ? chooseBandCount(bitmap.getSize(), getReach()) : 1;
    BandedFilter filter(*this, bitmap, bandCount);
    const auto forEach = [](int count, const auto& body) {
        Scheduler::defaultInstance().parallelFor(0, count, TaskPriority::Interactive, body);
    };
    forEach(bandCount - 1,
            [&](std::int64_t band) { filter.prepareMeeting(static_cast<int>(band)); });
    forEach(bandCount, [&](std::int64_t band) { filter.filterBand(static_cast<int>(band)); });
}

}  // namespace tavrin::postcore
