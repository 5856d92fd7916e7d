#include "services/postcore/bloomglare/Highlights.h"

#include "services/postcore/bloomglare/RowLoop.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace tavrin::postcore {
namespace {

// Where light begins to glow, in parts of the threshold below it.
constexpr float kKnee = 0.5f;

constexpr std::uint64_t kHashStart = 0xcbf29ce484222325u;

/// FNV-1a over 64 bits at a time, with the upper half mixed down (Fowler, Noll, Vo 1991).
std::uint64_t addToHash(std::uint64_t hash, std::uint64_t value) {
    hash = (hash ^ value) * 0x100000001b3u;
    return hash ^ (hash >> 29);
}

std::uint64_t addToHash(std::uint64_t hash, float first, float second) {
    const std::uint64_t upper = std::bit_cast<std::uint32_t>(first);
    return addToHash(hash, upper << 32 | std::bit_cast<std::uint32_t>(second));
}

float getLargest(const CompressedRgb& color) {
    return std::max(std::max(color.r, color.g), color.b);
}

}  // namespace

struct Highlights::RowSummary {
    int begin = std::numeric_limits<int>::max();
    int end = 0;  // 0: no light
    float largest = 0.0f;
    std::uint64_t hash = kHashStart;
};

Highlights::Highlights(Flags<ImageOperatorsFlag> flags, const BitmapImpl<CompressedRgb>& image,
                       float threshold)
    : image_(image),
      threshold_(threshold > 0.0f ? threshold : 0.0f),
      darkest_(std::isinf(threshold_) ? threshold_ : (1.0f - kKnee) * threshold_) {
    std::vector<RowSummary> rows(static_cast<std::size_t>(image.getHeight()));
    forEachRow(flags, image.getHeight(),
               [&](int y) { rows[static_cast<std::size_t>(y)] = summarizeRow(y); });
    spans_.reserve(rows.size());
    RowSummary all;
    for (int y = 0; y < image.getHeight(); ++y) {
        const RowSummary& row = rows[static_cast<std::size_t>(y)];
        spans_.push_back({row.begin, row.end});
        if (row.end == 0) {
            continue;
        }
        bounds_.y0 = all.end == 0 ? y : bounds_.y0;
        bounds_.y1 = y + 1;
        all.begin = std::min(all.begin, row.begin);
        all.end = std::max(all.end, row.end);
        all.largest = std::max(all.largest, row.largest);
        all.hash = addToHash(addToHash(all.hash, static_cast<std::uint64_t>(y)), row.hash);
    }
    hash_ = all.hash;
    if (all.end != 0) {
        bounds_.x0 = all.begin;
        bounds_.x1 = all.end;
        // Not beyond what is a float, nor so far down that dividing by it is not one.
        unit_ = std::ldexp(1.0f, std::clamp(std::ilogb(all.largest) + 1, -100, 127));
    }
}

bool Highlights::isDark(const CompressedRgb& pixel) const {
    // Also when the largest component is not a number.
    return !(getLargest(pixel) > darkest_);
}

CompressedRgb Highlights::getLight(const CompressedRgb& pixel) const {
    if (!std::isfinite(pixel.r) || !std::isfinite(pixel.g) || !std::isfinite(pixel.b)) {
        return {};
    }
    const float value = getLargest(pixel);
    const float knee = threshold_ - darkest_;
    const float excess = value - threshold_;
    float light = excess;
    if (excess < knee) {
        // A parabola that meets nothing below and the excess above without a kink.
        const float part = 0.5f * (excess / knee + 1.0f);
        light = knee * part * part;
    }
    const float weight = light / value;
    const auto scale = [weight](float component) { return std::max(component, 0.0f) * weight; };
    return {scale(pixel.r), scale(pixel.g), scale(pixel.b)};
}

Highlights::RowSummary Highlights::summarizeRow(int y) const {
    RowSummary summary;
    const auto pixels = image_.row(y);
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        if (isDark(pixels[x])) {
            continue;
        }
        const CompressedRgb light = getLight(pixels[x]);
        const float largest = getLargest(light);
        if (largest > 0.0f) {
            summary.begin = std::min(summary.begin, static_cast<int>(x));
            summary.end = static_cast<int>(x) + 1;
            summary.largest = std::max(summary.largest, largest);
            summary.hash = addToHash(summary.hash, light.r, light.g);
            summary.hash = addToHash(summary.hash, x << 32 | std::bit_cast<std::uint32_t>(light.b));
        }
    }
    return summary;
}

bool Highlights::getRow(int y, int channel, std::span<float> row) const {
    constexpr std::array kComponents = {&CompressedRgb::r, &CompressedRgb::g, &CompressedRgb::b};
    const auto component = kComponents[static_cast<std::size_t>(channel)];
    const float factor = 1.0f / unit_;
    const auto& [begin, end] = spans_[static_cast<std::size_t>(y)];
    std::ranges::fill(row, 0.0f);
    for (int x = begin; x < end; ++x) {
        const CompressedRgb& pixel = image_.at(x, y);
        if (!isDark(pixel)) {
            row[static_cast<std::size_t>(x - bounds_.x0)] = getLight(pixel).*component * factor;
        }
    }
    return end != 0;
}

}  // namespace tavrin::postcore
