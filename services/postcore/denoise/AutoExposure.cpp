#include "services/postcore/denoise/AutoExposure.h"

#include "services/colorkit/Luminance.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr int kBinSize = 16;
constexpr double kMiddleGrey = 0.18;
constexpr double kLeastLuminance = 1e-8;

double clean(float value) {
    return std::isfinite(value) ? std::max(static_cast<double>(value), 0.0) : 0.0;
}

struct LogSum {
    double sum = 0.0;
    int bins = 0;
};

/// Where bin `index` of `count` begins.
int getBinBegin(int index, int count, int size) {
    return static_cast<int>(std::int64_t{index} * size / count);
}

double getMeanLuminance(const BitmapImpl<Rgb>& color, int x0, int x1, int y0, int y1) {
    double sum = 0.0;
    for (int y = y0; y < y1; ++y) {
        const auto row = color.row(y);
        for (int x = x0; x < x1; ++x) {
            const Rgb& pixel = row[static_cast<std::size_t>(x)];
            sum += colorkit::getLuminance(clean(pixel.r), clean(pixel.g), clean(pixel.b));
        }
    }
    return sum / (double(x1 - x0) * double(y1 - y0));
}

}  // namespace

float computeAutoExposure(Scheduler& scheduler, const BitmapImpl<Rgb>& color) {
    const auto [width, height] = color.getSize();
    const int columns = (width + kBinSize - 1) / kBinSize;
    const int rows = (height + kBinSize - 1) / kBinSize;
    std::vector<LogSum> sums(static_cast<std::size_t>(rows));
    scheduler.parallelFor(0, rows, TaskPriority::Normal, [&](std::int64_t index) {
        const int row = static_cast<int>(index);
        LogSum& sum = sums[static_cast<std::size_t>(index)];
        for (int column = 0; column < columns; ++column) {
            const double luminance =
                getMeanLuminance(color, getBinBegin(column, columns, color.getWidth()),
                                 getBinBegin(column + 1, columns, color.getWidth()),
                                 getBinBegin(row, rows, color.getHeight()),
                                 getBinBegin(row + 1, rows, color.getHeight()));
            if (luminance > kLeastLuminance) {
                sum.sum += std::log2(luminance);
                ++sum.bins;
            }
        }
    });
    LogSum total;
    for (const LogSum& sum : sums) {
        total.sum += sum.sum;
        total.bins += sum.bins;
    }
    if (total.bins == 0) {
        return 1.0f;
    }
    const double exposure = kMiddleGrey / std::exp2(total.sum / total.bins);
    return std::max(static_cast<float>(exposure), std::numeric_limits<float>::min());
}

}  // namespace tavrin::postcore
