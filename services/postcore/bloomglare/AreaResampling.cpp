#include "services/postcore/bloomglare/AreaResampling.h"

#include "foundation/Scheduler.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tavrin::postcore {
namespace {

/// For each pixel, the first of `count` values that it is summed up from, and their weights.
struct Taps {
    std::size_t count = 0;
    std::vector<std::size_t> firsts;
    std::vector<float> weights;  // all pixels' first ones, then the second ones, and so on
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

Taps makeTaps(int sourceSize, int size) {
    const double middle = 0.5 * (sourceSize - 1);
    const double step = size > 1 ? (sourceSize - 1.0) / (size - 1.0) : sourceSize;
    const int count = std::min(static_cast<int>(std::ceil(step)) + 2, sourceSize);
    Taps taps{static_cast<std::size_t>(count), {}, {}};
    taps.weights.resize(taps.count * static_cast<std::size_t>(size));
    for (int i = 0; i < size; ++i) {
        const double center = middle + step * (i - 0.5 * (size - 1));
        const double begin = center - 0.5 * step;
        const double end = center + 0.5 * step;
        const int first = std::clamp(static_cast<int>(std::floor(begin)), 0, sourceSize - count);
        taps.firsts.push_back(static_cast<std::size_t>(first));
        for (int k = 0; k < count; ++k) {
            const double place = first + k;
            taps.weights[static_cast<std::size_t>(k * size + i)] = static_cast<float>(
                (getTriangleArea(end - place) - getTriangleArea(begin - place)) / step);
        }
    }
    return taps;
}

}  // namespace

std::vector<float> resampleAreas(const BitmapImpl<float>& square, int size) {
    const Taps taps = makeTaps(square.getWidth(), size);
    const std::size_t width = taps.firsts.size();
    std::vector<float> result(width * width);
    Scheduler::defaultInstance().parallelFor(0, size, TaskPriority::Normal, [&](std::int64_t y) {
        const auto number = static_cast<std::size_t>(y);
        std::vector<float> sums(static_cast<std::size_t>(square.getWidth()));
        for (std::size_t k = 0; k < taps.count; ++k) {
            const float weight = taps.weights[k * width + number];
            const auto source = square.row(static_cast<int>(taps.firsts[number] + k));
            for (std::size_t x = 0; x < sums.size(); ++x) {
                sums[x] += weight * source[x];
            }
        }
        float* row = result.data() + number * width;
        for (std::size_t k = 0; k < taps.count; ++k) {
            const float* weights = taps.weights.data() + k * width;
            for (std::size_t x = 0; x < width; ++x) {
                row[x] += weights[x] * sums[taps.firsts[x] + k];
            }
        }
    });
    return result;
}

}  // namespace tavrin::postcore
