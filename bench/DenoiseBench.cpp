// The neural denoiser on a picture of about a megapixel with all features, against nothing but the
// convolutions of its network in oneDNN, in the layouts that the library chooses.

#include "bench/PairedRuns.h"
#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/PixelArray.h"
#include "foundation/Scheduler.h"
#include "foundation/platform/Memory.h"
#include "services/postcore/denoise/neural/NeuralDenoiser.h"

#include <benchmark/benchmark.h>
#include <oneapi/dnnl/dnnl.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tavrin::bench {
namespace {

using dnnl::memory;

constexpr int kWidth = 1024;
constexpr int kHeight = 1024;
constexpr int kPairs = 9;
constexpr double kBudget = 1.25;

/// The convolutions of the network, with channels that fill vectors of sixteen.
constexpr struct {
    int inputs;
    int outputs;
    int level;  ///< how often the picture has been halved
} kConvolutions[] = {
    {16, 32, 0}, {32, 32, 0},   {32, 48, 1},   {48, 64, 2},  {64, 80, 3}, {80, 96, 4},
    {96, 96, 4}, {160, 112, 3}, {112, 112, 3}, {160, 96, 2}, {96, 96, 2}, {128, 64, 1},
    {64, 64, 1}, {80, 64, 0},   {64, 32, 0},   {32, 16, 0},
};

/// All layers read one block of memory and write another one.
class BareConvolutions {
public:
    BareConvolutions() {
        std::size_t sourceBytes = 0;
        std::size_t destinationBytes = 0;
        for (const auto& [inputs, outputs, level] : kConvolutions) {
            const auto description = describe(inputs, outputs, level);
            sourceBytes = std::max(sourceBytes, description.src_desc().get_size());
            destinationBytes = std::max(destinationBytes, description.dst_desc().get_size());
            descriptions_.push_back(description);
        }
        source_ = PixelArray<std::byte>(sourceBytes);
        destination_ = PixelArray<std::byte>(destinationBytes);
        // Random bits would be slow numbers.
        std::fill_n(reinterpret_cast<float*>(source_.data()), sourceBytes / sizeof(float), 0.5f);
        for (const auto& description : descriptions_) {
            memory weights(description.weights_desc(), engine_);
            memory bias(description.bias_desc(), engine_);
            fill(weights);
            fill(bias);
            primitives_.emplace_back(description);
            arguments_.push_back(
                {{DNNL_ARG_SRC, memory(description.src_desc(), engine_, source_.data())},
                 {DNNL_ARG_DST, memory(description.dst_desc(), engine_, destination_.data())},
                 {DNNL_ARG_WEIGHTS, weights},
                 {DNNL_ARG_BIAS, bias}});
        }
    }

    void run() {
        for (std::size_t i = 0; i < primitives_.size(); ++i) {
            primitives_[i].execute(stream_, arguments_[i]);
        }
        stream_.wait();
    }

private:
    static void fill(memory& values) {
        std::fill_n(static_cast<float*>(values.get_data_handle()),
                    values.get_desc().get_size() / sizeof(float), 0.01f);
    }

    dnnl::convolution_forward::primitive_desc describe(int inputs, int outputs, int level) const {
        const auto any = [](memory::dims shape) {
            return memory::desc(std::move(shape), memory::data_type::f32, memory::format_tag::any);
        };
        const int width = kWidth >> level;
        const int height = kHeight >> level;
        const auto make = [&](dnnl::algorithm algorithm) {
            return dnnl::convolution_forward::primitive_desc({dnnl::prop_kind::forward_inference,
                                                              algorithm,
                                                              any({1, inputs, height, width}),
                                                              any({outputs, inputs, 3, 3}),
                                                              any({outputs}),
                                                              any({1, outputs, height, width}),
                                                              {1, 1},
                                                              {1, 1},
                                                              {1, 1}},
                                                             engine_);
        };
        try {
            return make(dnnl::algorithm::convolution_winograd);
        } catch (const dnnl::error&) {
            return make(dnnl::algorithm::convolution_direct);
        }
    }

    dnnl::engine engine_{dnnl::engine::kind::cpu, 0};
    dnnl::stream stream_{engine_};
    PixelArray<std::byte> source_;
    PixelArray<std::byte> destination_;
    std::vector<dnnl::convolution_forward::primitive_desc> descriptions_;
    std::vector<dnnl::convolution_forward> primitives_;
    std::vector<std::unordered_map<int, memory>> arguments_;
};

BitmapImpl<Rgb> makeNoise(float scale) {
    BitmapImpl<Rgb> image(kWidth, kHeight);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> shade(0.0f, scale);
    for (Rgb& pixel : image.pixels()) {
        pixel = {shade(random), shade(random), shade(random), 1.0f};
    }
    return image;
}

class StandardErrorLogger final : public postcore::ILogger {
public:
    void error(const String& text) override {
        std::fprintf(stderr, "%s\n", text.toUtf8().c_str());
        std::exit(1);
    }
    void warning(const String&) override {}
};

std::unique_ptr<postcore::IDenoiser> makeDenoiser(postcore::ILogger& logger) {
    postcore::DenoisingData data;
    for (const auto type :
         {postcore::FeatureType::VisibleDiffuse, postcore::FeatureType::VisibleNormals}) {
        data.features.push_back({type, makeNoise(1.0f), makeNoise(1e-6f)});
    }
    return postcore::createNeuralDenoiser(Scheduler::highPriorityInstance(), logger,
                                          std::move(data), postcore::OidnBackend::Best);
}

/// The first element pays for cleaning the features, which takes two more networks.
void neural(benchmark::State& state, bool isFirst) {
    const auto color = makeNoise(1.0f);
    const auto variance = makeNoise(0.1f);
    StandardErrorLogger logger;
    auto denoiser = makeDenoiser(logger);
    const auto denoise = [&] {
        return denoiser->denoise(color, variance, [](float) { return true; });
    };
    platform::resetPeakMemory();
    denoise();
    const auto peak = static_cast<double>(platform::getPeakMemory());
    BareConvolutions bare;
    bare.run();
    const auto denoiseFirst = [&] {
        denoiser = makeDenoiser(logger);
        denoise();
    };
    const auto runThrice = [&bare] {
        for (int i = 0; i < 3; ++i) {
            bare.run();
        }
    };
    if (isFirst) {
        runPaired(state, kBudget, denoiseFirst, runThrice);
    } else {
        runPaired(state, kBudget, denoise, [&bare] { bare.run(); });
    }
    constexpr double kMegapixels = 1e-6 * kWidth * kHeight;
    state.counters["s_per_megapixel"] = 1e-3 * state.counters["ours_ms"] / kMegapixels;
    state.counters["peak_MB"] = 1e-6 * peak;
}

BENCHMARK_CAPTURE(neural, further_elements, false)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(getPairCount(kPairs));
BENCHMARK_CAPTURE(neural, first_element, true)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(getPairCount(kPairs));

}  // namespace
}  // namespace tavrin::bench

BENCHMARK_MAIN();
