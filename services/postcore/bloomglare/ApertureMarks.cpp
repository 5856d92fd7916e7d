#include "services/postcore/bloomglare/ApertureMarks.h"

#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/Angles.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

namespace tavrin::postcore {
namespace {

// Marks are drawn in bands of rows, each by one thread in the order of the marks.
constexpr int kBandHeight = 32;

struct Interval {
    float from = -std::numeric_limits<float>::infinity();
    float to = std::numeric_limits<float>::infinity();

    /// Keeps the x with |offset + slope x| <= limit.
    void intersect(float offset, float slope, float limit) {
        if (std::abs(slope) < 1e-6f) {
            if (std::abs(offset) > limit) {
                to = from;
            }
            return;
        }
        const float a = (-limit - offset) / slope;
        const float b = (limit - offset) / slope;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
    }
};

/// A mark in pixels of the mask, rows downwards.
class PixelMark {
public:
    PixelMark(const ApertureMark& mark, int size)
        : scale_(0.5f * static_cast<float>(size)),
          center_{scale_ * (1.0f + mark.center.x) - 0.5f, scale_ * (1.0f - mark.center.y) - 0.5f},
          direction_{mark.direction.x, -mark.direction.y},
          halfLength_(scale_ * mark.halfLength),
          halfWidth_(scale_ * mark.halfWidth),
          bend_(-scale_ * mark.bend),
          taper_(mark.taper) {}

    /// Adds what the mark covers of the pixels of row y.
    void addTo(int y, std::span<float> row) const {
        const float dy = static_cast<float>(y) - center_.y;
        const float across = halfWidth_ + std::abs(bend_) + 1.0f;
        const float along = halfLength_ + halfWidth_ + 1.0f;
        Interval x;  // from the center
        x.intersect(dy * direction_.x, -direction_.y, across);
        x.intersect(dy * direction_.y, direction_.x, along);
        if (!(x.from < x.to)) {
            return;
        }
        const float last = static_cast<float>(row.size()) - 1.0f;
        const float begin = std::max(std::ceil(center_.x + x.from), 0.0f);
        const float end = std::min(std::floor(center_.x + x.to), last);
        for (float column = begin; column <= end; ++column) {
            row[static_cast<std::size_t>(column)] += getCoverage(column - center_.x, dy);
        }
    }

    /// The rows that the mark may touch: from the first to before the second.
    std::pair<int, int> getRows(int begin, int end) const {
        const float reach = halfLength_ * std::abs(direction_.y) + halfWidth_ + std::abs(bend_) + 1;
        const auto clampRow = [&](float y) {
            return static_cast<int>(
                std::clamp(y, static_cast<float>(begin), static_cast<float>(end)));
        };
        return {clampRow(center_.y - reach), clampRow(center_.y + reach + 1.0f)};
    }

private:
    /// The overlap of the pixel, as a line of length 1, with the mark's width.
    float getCoverage(float dx, float dy) const {
        const float along = dx * direction_.x + dy * direction_.y;
        const float t = halfLength_ > 0.0f ? std::clamp(along / halfLength_, -1.0f, 1.0f) : 0.0f;
        const float across = dy * direction_.x - dx * direction_.y - bend_ * (1.0f - t * t);
        const float beyond = along - t * halfLength_;
        const float distance = std::sqrt(beyond * beyond + across * across);
        const float halfWidth = halfWidth_ * (1.0f - taper_ * t * t);
        return std::max(
            std::min(distance + 0.5f, halfWidth) - std::max(distance - 0.5f, -halfWidth), 0.0f);
    }

    float scale_;
    Vec2 center_;
    Vec2 direction_;
    float halfLength_;
    float halfWidth_;
    float bend_;
    float taper_;
};

}  // namespace

void ApertureMarks::transform(float angle, float zoom) {
    const Vec2 axis = getDirection(angle);
    const auto rotate = [axis](Vec2 v) {
        return Vec2{v.x * axis.x - v.y * axis.y, v.x * axis.y + v.y * axis.x};
    };
    for (ApertureMark& mark : marks) {
        const Vec2 center = rotate(mark.center);
        mark.center = {zoom * center.x, zoom * center.y};
        mark.direction = rotate(mark.direction);
        mark.halfLength *= zoom;
        mark.halfWidth *= zoom;
        mark.bend *= zoom;
    }
}

void coverMask(const ApertureMarks& marks, float strength, BitmapImpl<float>& mask) {
    const int size = mask.getWidth();
    std::vector<PixelMark> pixelMarks;
    for (const ApertureMark& mark : marks.marks) {
        pixelMarks.emplace_back(mark, size);
    }
    const auto coverBand = [&](std::int64_t band) {
        const int begin = static_cast<int>(band) * kBandHeight;
        const int end = std::min(begin + kBandHeight, mask.getHeight());
        BitmapImpl<float> coverage(size, end - begin);
        std::ranges::fill(coverage.pixels(), marks.coverAll ? 1.0f : 0.0f);
        for (const PixelMark& mark : pixelMarks) {
            const auto [first, last] = mark.getRows(begin, end);
            for (int y = first; y < last; ++y) {
                mark.addTo(y, coverage.row(y - begin));
            }
        }
        for (int y = begin; y < end; ++y) {
            std::ranges::transform(mask.row(y), coverage.row(y - begin), mask.row(y).begin(),
                                   [strength](float open, float covered) {
                                       return open * (1.0f - strength * std::min(covered, 1.0f));
                                   });
        }
    };
    const int bandCount = (mask.getHeight() + kBandHeight - 1) / kBandHeight;
    Scheduler::defaultInstance().parallelFor(0, bandCount, TaskPriority::Normal, coverBand);
}

}  // namespace tavrin::postcore
