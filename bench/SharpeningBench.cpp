// Sharpening and blurring of a full-HD view against a plain separable convolution with weights of
// the same function on as many threads.

#include "bench/PairedRuns.h"
#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Scheduler.h"
#include "services/postcore/sharpening/DiscreteGaussian.h"
#include "services/postcore/sharpening/Sharpening.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <span>
#include <utility>
#include <vector>

namespace tavrin::bench {
namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kPairs = 41;
constexpr double kBudget = 2.0;

BitmapImpl<Rgb> makeImage() {
    BitmapImpl<Rgb> image(kWidth, kHeight);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> shade(0.0f, 1.0f);
    for (Rgb& pixel : image.pixels()) {
        pixel = {shade(random), shade(random), shade(random), 1.0f};
    }
    return image;
}

template <class Body>
void forEachRow(const Body& body) {
    Scheduler::defaultInstance().parallelForRanges(0, kHeight, 16, TaskPriority::Interactive,
                                                   [&body](std::int64_t from, std::int64_t to) {
                                                       for (std::int64_t y = from; y < to; ++y) {
                                                           body(static_cast<int>(y));
                                                       }
                                                   });
}

/// Adds `weight` times as many floats: what compilers make vectors of.
void addWeighed(const float* values, float weight, std::ptrdiff_t count, float* sums) {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        sums[i] += weight * values[i];
    }
}

/// The plain loops, with two bitmaps to put results into.
class PlainFilter {
public:
    void apply(BitmapImpl<Rgb>& image, float amount, double sharpenRadius, double blurRadius) {
        if (amount > 0.0f) {
            blur(image, blurred_, sharpenRadius);
            forEachRow([&](int y) {
                const auto row = image.row(y);
                const auto blurredRow = std::as_const(blurred_).row(y);
                for (std::size_t x = 0; x < row.size(); ++x) {
                    const auto sharpen = [amount](float& value, float smooth) {
                        value = std::max(value + amount * (value - smooth), 0.0f);
                    };
                    sharpen(row[x].r, blurredRow[x].r);
                    sharpen(row[x].g, blurredRow[x].g);
                    sharpen(row[x].b, blurredRow[x].b);
                }
            });
        }
        if (blurRadius > 0.0) {
            blur(image, image, blurRadius);
        }
    }

private:
    void blur(const BitmapImpl<Rgb>& from, BitmapImpl<Rgb>& to, double radius) {
        const std::vector<float> weights = postcore::makeDiscreteGaussian(radius * radius);
        const int last = static_cast<int>(weights.size()) - 1;
        const auto getWeight = [&weights](int i) {
            return weights[static_cast<std::size_t>(std::abs(i))];
        };
        forEachRow([&](int y) {
            std::ranges::fill(rows_.row(y), Rgb());
            for (int i = -last; i <= last; ++i) {
                const int begin = std::max(-i, 0);
                const int end = std::min(kWidth - i, kWidth);
                addWeighed(&from.at(begin + i, y).r, getWeight(i), 4 * (end - begin),
                           &rows_.at(begin, y).r);
            }
        });
        forEachRow([&](int y) {
            std::ranges::fill(to.row(y), Rgb());
            for (int i = std::max(-last, -y); i <= std::min(last, kHeight - 1 - y); ++i) {
                addWeighed(&rows_.at(0, y + i).r, getWeight(i), 4 * kWidth, &to.at(0, y).r);
            }
        });
    }

    BitmapImpl<Rgb> rows_{kWidth, kHeight};
    BitmapImpl<Rgb> blurred_{kWidth, kHeight};
};

void sharpening(benchmark::State& state, float amount, float sharpenRadius, float blurRadius) {
    const BitmapImpl<Rgb> source = makeImage();
    BitmapImpl<Rgb> image(kWidth, kHeight);
    PlainFilter plain;
    runPaired(
        state, kBudget,
        [&] {
            postcore::Sharpening kernel;
            kernel.initialize(true, amount, sharpenRadius, blurRadius, 1.0f);
            kernel.apply(postcore::ImageOperatorsFlag::Parallel, image, 1, false);
        },
        [&] { plain.apply(image, amount, sharpenRadius, blurRadius); },
        [&] { std::copy(source.pixels().begin(), source.pixels().end(), image.pixels().begin()); });
}

#define TAVRIN_SHARPENING_BENCH(name, ...)           \
    BENCHMARK_CAPTURE(sharpening, name, __VA_ARGS__) \
        ->UseManualTime()                            \
        ->Unit(benchmark::kMillisecond)              \
        ->Iterations(getPairCount(kPairs))

TAVRIN_SHARPENING_BENCH(sharpen_default, 1.0f, 0.5f, 0.0f);
TAVRIN_SHARPENING_BENCH(sharpen_3, 1.0f, 3.0f, 0.0f);
TAVRIN_SHARPENING_BENCH(blur_3, 0.0f, 0.0f, 3.0f);
TAVRIN_SHARPENING_BENCH(both_default, 1.0f, 0.5f, 0.5f);
TAVRIN_SHARPENING_BENCH(both_3, 1.0f, 3.0f, 3.0f);

}  // namespace
}  // namespace tavrin::bench

BENCHMARK_MAIN();
