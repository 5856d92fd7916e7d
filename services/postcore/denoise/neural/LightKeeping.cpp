#include "services/postcore/denoise/neural/LightKeeping.h"

#include <algorithm>
#include <cmath>

namespace tavrin::postcore {
namespace {

constexpr std::int64_t kRowsPerTask = 16;
// Of the light of the noisy picture, what may be missing, or too much.
constexpr double kTolerated = 0.008;
constexpr double kLargestChange = 0.03;

double getSum(const Rgb& color) {
    return double{color.r} + double{color.g} + double{color.b};
}

}  // namespace

void keepLight(Scheduler& scheduler, const BitmapImpl<Rgb>& noisy, const BitmapImpl<float>& shares,
               BitmapImpl<Rgb>& denoised) {
    double light = 0.0;
    double lost = 0.0;
    double networkLight = 0.0;
    for (std::size_t i = 0; i < noisy.pixels().size(); ++i) {
        if (isFinite(noisy.pixels()[i])) {
            const double share = 1.0 - double{shares.pixels()[i]};
            const double before = getSum(noisy.pixels()[i]);
            const double after = getSum(denoised.pixels()[i]);
            light += before;
            lost += share * (before - after);
            networkLight += share * after;
        }
    }
    const double tolerated = kTolerated * std::abs(light);
    const double change = (lost - std::clamp(lost, -tolerated, tolerated)) / networkLight;
    if (change == 0.0 || !std::isfinite(change)) {
        return;
    }
    const auto factor =
        static_cast<float>(1.0 + std::clamp(change, -kLargestChange, kLargestChange));
    const auto scaleRows = [&](std::int64_t from, std::int64_t to) {
        for (int y = static_cast<int>(from); y < to; ++y) {
            for (Rgb& pixel : denoised.row(y)) {
                pixel = {pixel.r * factor, pixel.g * factor, pixel.b * factor, pixel.a};
            }
        }
    };
    scheduler.parallelForRanges(0, denoised.getHeight(), kRowsPerTask, TaskPriority::Normal,
                                scaleRows);
}

}  // namespace tavrin::postcore
