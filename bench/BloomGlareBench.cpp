// Bloom and glare of a whole image against the FFT library's own forward and inverse transforms of
// three planes of the same padded size. One thread, for the library's own threads would be another
// thing to measure.

#include "bench/PairedRuns.h"
#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Scheduler.h"
#include "foundation/platform/Memory.h"
#include "services/postcore/bloomglare/BloomGlareRenderer.h"
#include "services/postcore/bloomglare/Fft.h"

#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>

namespace tavrin::bench {
namespace {

constexpr double kBudget = 1.5;
constexpr Pixel kFullHd{1920, 1080};
constexpr Pixel k4K{3840, 2160};

/// A dark picture with lights of many brightnesses all over it.
BitmapImpl<CompressedRgb> makeImage(Pixel size) {
    BitmapImpl<CompressedRgb> image(size.x, size.y);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> shade(0.0f, 0.4f);
    for (CompressedRgb& pixel : image.pixels()) {
        pixel = {shade(random), shade(random), shade(random)};
    }
    for (int light = 0; light < 200; ++light) {
        const int radius = 1 + static_cast<int>(random() % 12);
        const int x0 = static_cast<int>(random() % static_cast<unsigned>(size.x - 2 * radius));
        const int y0 = static_cast<int>(random() % static_cast<unsigned>(size.y - 2 * radius));
        const float brightness = std::exp2(20.0f * shade(random));
        for (int y = y0; y < y0 + 2 * radius; ++y) {
            std::fill_n(&image.at(x0, y), 2 * radius,
                        CompressedRgb{brightness, 0.8f * brightness, 0.5f * brightness});
        }
    }
    return image;
}

/// The library's transforms, there and back, in one buffer.
class PlainTransforms {
public:
    explicit PlainTransforms(Pixel size)
        : values_(fftwf_alloc_real(2 * static_cast<std::size_t>(size.x / 2 + 1) *
                                   static_cast<std::size_t>(size.y))) {
        auto* const frequencies = reinterpret_cast<fftwf_complex*>(values_);
        forward_ = fftwf_plan_dft_r2c_2d(size.y, size.x, values_, frequencies, FFTW_ESTIMATE);
        inverse_ = fftwf_plan_dft_c2r_2d(size.y, size.x, frequencies, values_, FFTW_ESTIMATE);
        std::fill_n(values_, 2 * (size.x / 2 + 1) * size.y, 0.0f);
    }
    ~PlainTransforms() {
        fftwf_destroy_plan(forward_);
        fftwf_destroy_plan(inverse_);
        fftwf_free(values_);
    }
    PlainTransforms(const PlainTransforms&) = delete;
    PlainTransforms& operator=(const PlainTransforms&) = delete;

    void run() {
        for (int plane = 0; plane < 3; ++plane) {
            fftwf_execute(forward_);
            fftwf_execute(inverse_);
        }
    }

private:
    float* values_;
    fftwf_plan forward_ = nullptr;
    fftwf_plan inverse_ = nullptr;
};

/// What is new to the renderer: everything, the light, or only the intensity.
enum class News { All, Light, Intensity };

void bloomGlare(benchmark::State& state, Pixel size, float bloom, float glare, bool isLegacy,
                News news) {
    const BitmapImpl<CompressedRgb> source = makeImage(size);
    BitmapImpl<CompressedRgb> image(size.x, size.y);
    postcore::BloomGlareData data;
    data.enabled = 1;
    data.legacy = isLegacy ? 1 : 0;
    data.bloomIntensity = bloom;
    data.glareIntensity = glare;
    const int radius = size.x / 4;  // of the default size
    PlainTransforms plain(
        {postcore::getFftSize(size.x + radius), postcore::getFftSize(size.y + radius)});
    auto renderer = std::make_unique<postcore::BloomGlareRenderer>();
    const auto restore = [&] {
        std::copy(source.pixels().begin(), source.pixels().end(), image.pixels().begin());
        if (news == News::All) {
            renderer = std::make_unique<postcore::BloomGlareRenderer>();
        } else if (news == News::Light) {
            data.threshold += 1e-3f;
        }
    };
    const auto render = [&] {
        postcore::BloomGlareProgress progress;
        renderer->render(postcore::ImageOperatorsFlag::Parallel, image, data, progress);
    };
    restore();
    platform::releaseUnusedPixelMemory();
    platform::resetPeakMemory();
    const std::uint64_t before = platform::getPeakMemory();
    render();
    state.counters["peak_MB"] = static_cast<double>(platform::getPeakMemory() - before) * 1e-6;
    runPaired(
        state, kBudget, render, [&] { plain.run(); }, restore);
}

#define TAVRIN_BLOOM_GLARE_BENCH(name, ...)          \
    BENCHMARK_CAPTURE(bloomGlare, name, __VA_ARGS__) \
        ->UseManualTime()                            \
        ->Unit(benchmark::kMillisecond)              \
        ->Iterations(getPairCount(5))

TAVRIN_BLOOM_GLARE_BENCH(both_full_hd, kFullHd, 0.2f, 0.2f, false, News::All);
TAVRIN_BLOOM_GLARE_BENCH(both_4k, k4K, 0.2f, 0.2f, false, News::All);
TAVRIN_BLOOM_GLARE_BENCH(other_light_4k, k4K, 0.2f, 0.2f, false, News::Light);
TAVRIN_BLOOM_GLARE_BENCH(other_light_full_hd, kFullHd, 0.2f, 0.2f, false, News::Light);
TAVRIN_BLOOM_GLARE_BENCH(bloom_4k, k4K, 0.2f, 0.0f, false, News::All);
TAVRIN_BLOOM_GLARE_BENCH(glare_4k, k4K, 0.0f, 0.2f, false, News::All);
TAVRIN_BLOOM_GLARE_BENCH(legacy_4k, k4K, 0.2f, 0.2f, true, News::All);
TAVRIN_BLOOM_GLARE_BENCH(other_intensity_4k, k4K, 0.2f, 0.2f, false, News::Intensity);

}  // namespace
}  // namespace tavrin::bench

int main(int argumentCount, char** arguments) {
    tavrin::Scheduler::setThreadCount(1);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
