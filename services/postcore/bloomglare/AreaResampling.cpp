#include "services/postcore/bloomglare/AreaResampling.h"

#include "foundation/Scheduler.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace tavrin::postcore {
namespace {

/// Values from the first on that a pixel is summed up from.
struct Taps {
    int first = 0;
    std::vector<float> weights;
};

/// The area left of x under the triangle of height 1 over [-1, 1], which is what a value has a part
/// in when values are interpolated linearly.
double getTriangleArea(double x) {
    if (x <= -1.0) {
        return 0.0;
    }
    if (x >= 1.0) {
        return 1.0;
    }
    return x < 0.0 ? 0.5 * (1.0 + x) * (1.0 + x) : 1.0 - 0.5 * (1.0 - x) * (1.0 - x);
}

std::vector<Taps> makeTaps(int sourceSize, int size) {
    const double middle = 0.5 * (sourceSize - 1);
    const double step = size > 1 ? (sourceSize - 1.0) / (size - 1.0) : sourceSize;
    std::vector<Taps> result;
    for (int i = 0; i < size; ++i) {
        const double center = middle + step * (i - 0.5 * (size - 1));
        const double begin = center - 0.5 * step;
        const double end = center + 0.5 * step;
        Taps& taps = result.emplace_back();
        taps.first = std::max(static_cast<int>(std::floor(begin)), 0);
        const int last = std::min(static_cast<int>(std::ceil(end)), sourceSize - 1);
        for (int k = taps.first; k <= last; ++k) {
            taps.weights.push_back(
                static_cast<float>((getTriangleArea(end - k) - getTriangleArea(begin - k)) / step));
        }
    }
    return result;
}

}  // namespace

std::vector<float> resampleAreas(const BitmapImpl<float>& square, int size) {
    const std::vector<Taps> allTaps = makeTaps(square.getWidth(), size);
    std::vector<float> result(allTaps.size() * allTaps.size());
    Scheduler::defaultInstance().parallelFor(0, size, TaskPriority::Normal, [&](std::int64_t y) {
        const Taps& rowTaps = allTaps[static_cast<std::size_t>(y)];
        std::vector<float> sums(static_cast<std::size_t>(square.getWidth()));
        for (std::size_t k = 0; k < rowTaps.weights.size(); ++k) {
            const std::span<const float> row = square.row(rowTaps.first + static_cast<int>(k));
            for (std::size_t x = 0; x < sums.size(); ++x) {
                sums[x] += rowTaps.weights[k] * row[x];
            }
        }
        const std::span<float> row =
            std::span(result).subspan(static_cast<std::size_t>(y) * allTaps.size(), allTaps.size());
        for (std::size_t x = 0; x < row.size(); ++x) {
            const Taps& taps = allTaps[x];
            float sum = 0.0f;
            for (std::size_t k = 0; k < taps.weights.size(); ++k) {
                sum += taps.weights[k] * sums[static_cast<std::size_t>(taps.first) + k];
            }
            row[x] = sum;
        }
    });
    return result;
}

}  // namespace tavrin::postcore
