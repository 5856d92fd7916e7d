// Default tone mapping of a 4K image against an OpenColorIO processor that does exposure, one 3D
// LUT and the sRGB curve on the same pixels with the same threads; and how many megapixels each
// operator alone maps in a second of one thread.

#include "bench/PairedRuns.h"
#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Scheduler.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/AgXOperator.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/CurvesOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/GainOperator.h"
#include "services/colorkit/operators/GrainOperator.h"
#include "services/colorkit/operators/LiftGammaGainOperator.h"
#include "services/colorkit/operators/LutOperator.h"
#include "services/colorkit/operators/MatrixOperator.h"
#include "services/colorkit/operators/OpenColorIoViewOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "services/colorkit/operators/SigmoidOperator.h"
#include "services/colorkit/operators/TintOperator.h"
#include "services/colorkit/operators/VignetteOperator.h"
#include "services/colorkit/operators/WhiteBalanceOperator.h"

#include <OpenColorIO/OpenColorIO.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace OCIO = OCIO_NAMESPACE;

namespace tavrin::bench {
namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;
constexpr int kPairs = 21;
constexpr double kBudget = 1.0;

/// Smooth shades with a little noise, as a render has them; neighbours use the same part of a LUT.
BitmapImpl<Rgb> makeImage() {
    BitmapImpl<Rgb> image(kWidth, kHeight);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> noise(0.98f, 1.02f);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const float u = static_cast<float>(x) / kWidth;
            const float v = static_cast<float>(y) / kHeight;
            const float light = std::exp2(3.0f - 9.0f * std::hypot(u - 0.4f, v - 0.3f));
            image.at(x, y) = {light * noise(random), light * (0.5f + 0.5f * u) * noise(random),
                              light * v * noise(random), 1.0f};
        }
    }
    return image;
}

OCIO::ConstCPUProcessorRcPtr makeProcessor() {
    constexpr unsigned long kGrid = 33;
    const auto exposure = OCIO::ExposureContrastTransform::Create();
    exposure->setStyle(OCIO::EXPOSURE_CONTRAST_LINEAR);
    exposure->setExposure(0.25);

    const auto lut = OCIO::Lut3DTransform::Create(kGrid);
    lut->setInterpolation(OCIO::INTERP_TETRAHEDRAL);
    const auto compress = [](unsigned long index) {
        const float x = static_cast<float>(index) / (kGrid - 1);
        return x / (0.3f + 0.7f * x);
    };
    for (unsigned long r = 0; r < kGrid; ++r) {
        for (unsigned long g = 0; g < kGrid; ++g) {
            for (unsigned long b = 0; b < kGrid; ++b) {
                lut->setValue(r, g, b, compress(r), compress(g), compress(b));
            }
        }
    }

    const auto encoding = OCIO::ExponentWithLinearTransform::Create();
    encoding->setGamma({2.4, 2.4, 2.4, 1.0});
    encoding->setOffset({0.055, 0.055, 0.055, 0.0});
    encoding->setDirection(OCIO::TRANSFORM_DIR_INVERSE);

    const auto group = OCIO::GroupTransform::Create();
    group->appendTransform(exposure);
    group->appendTransform(lut);
    group->appendTransform(encoding);
    return OCIO::Config::CreateRaw()->getProcessor(group)->getDefaultCPUProcessor();
}

void applyProcessor(const OCIO::ConstCPUProcessorRcPtr& processor, BitmapImpl<Rgb>& image) {
    Scheduler::defaultInstance().parallelForRanges(
        0, kHeight, 16, TaskPriority::Interactive, [&](std::int64_t from, std::int64_t to) {
            OCIO::PackedImageDesc rows(&image.at(0, static_cast<int>(from)).r, kWidth, to - from,
                                       4);
            processor->apply(rows);
        });
}

void toneMapping(benchmark::State& state) {
    colorkit::ColorMapping colorMapping;
    colorMapping.setPipeline(colorkit::createDefaultPipeline());
    const auto mapping =
        colorMapping.createMappingOperator(colorMapping.getContext(), {kWidth, kHeight});
    const OCIO::ConstCPUProcessorRcPtr processor = makeProcessor();
    const BitmapImpl<Rgb> source = makeImage();
    BitmapImpl<Rgb> image(kWidth, kHeight);
    runPaired(
        state, kBudget, [&] { mapping->mapBitmap(image, {}, 1.0f); },
        [&] { applyProcessor(processor, image); },
        [&] { std::copy(source.pixels().begin(), source.pixels().end(), image.pixels().begin()); });
}
BENCHMARK(toneMapping)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(getPairCount(kPairs));

/// Rows of an image that stays in the cache, linear to linear, by one operator in one thread.
void singleOperator(benchmark::State& state, const std::vector<colorkit::OperatorValues>& values) {
    constexpr int kRows = 16;
    colorkit::CommonColorMappingContext context;
    context.displayGamma = 1.0f;
    context.iso = 200.0f;
    const colorkit::ColorMappingOperator<0> mapping(colorkit::makePipeline(values), true,
                                                    {context, {kWidth, kHeight}});
    const BitmapImpl<Rgb> source = makeImage();
    std::vector<Rgb> row(kWidth);
    int y = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        const auto from = source.row(y * (kHeight / kRows));
        std::copy(from.begin(), from.end(), row.begin());
        mapping.mapRow(row, {0, y, 1.0f});
        benchmark::DoNotOptimize(row.data());
        y = (y + 1) % kRows;
    }
    state.counters["megapixels"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * kWidth / 1e6, benchmark::Counter::kIsRate);
}

/// Every operator once that needs no file, with values that make it work where its defaults do
/// nothing, and some again with values that cost more.
std::vector<std::pair<std::string, colorkit::OperatorValues>> makeOperators() {
    using namespace colorkit;
    const std::vector<CurvePoint> curve{{-8, -9}, {-3, -3.5f}, {-1, -0.5f}, {0, 0.25f}, {5, 3}};
    const CompressedRgb color{0.9f, 0.8f, 0.7f};
    std::vector<std::pair<std::string, OperatorValues>> operators;
    for (const auto& [name, descriptor] :
         ColorMappingOperatorFactory::getInstance().getAllDescriptors()) {
        // These do nothing without a file.
        if (descriptor != &LutOperator::kDescriptor &&
            descriptor != &OpenColorIoViewOperator::kDescriptor) {
            operators.emplace_back(name.toUtf8(), *descriptor);
        }
    }
    const auto change = [&](const auto& parameter, const auto& descriptor, const auto& value) {
        for (auto& [name, values] : operators) {
            if (&values.getDescriptor() == &descriptor) {
                values.set(parameter, value);
            }
        }
    };
    change(ContrastOperator::kContrast, ContrastOperator::kDescriptor, 1.3f);
    change(CurvesOperator::kMaster, CurvesOperator::kDescriptor, curve);
    change(ExposureOperator::kStops, ExposureOperator::kDescriptor, 1.0f);
    change(GainOperator::kFactors, GainOperator::kDescriptor, color);
    change(GrainOperator::kAmount, GrainOperator::kDescriptor, 0.5f);
    change(LiftGammaGainOperator::kPower, LiftGammaGainOperator::kDescriptor, color);
    change(MatrixOperator::kRed, MatrixOperator::kDescriptor, color);
    change(SaturationOperator::kSaturation, SaturationOperator::kDescriptor, 1.2f);
    change(TintOperator::kColor, TintOperator::kDescriptor, color);
    change(VignetteOperator::kStrength, VignetteOperator::kDescriptor, 0.5f);
    change(WhiteBalanceOperator::kTemperature, WhiteBalanceOperator::kDescriptor, 4000.0f);

    operators.emplace_back("Grain of size 2", OperatorValues(GrainOperator::kDescriptor)
                                                  .set(GrainOperator::kAmount, 0.5f)
                                                  .set(GrainOperator::kSize, 2.0f));
    operators.emplace_back(
        "Sigmoid, skewed",
        OperatorValues(SigmoidOperator::kDescriptor).set(SigmoidOperator::kSkew, 0.3f));
    operators.emplace_back(
        "AgX, punchy",
        OperatorValues(AgXOperator::kDescriptor).set(AgXOperator::kLook, AgXLook::Punchy));
    return operators;
}

/// A file of a three-dimensional table with `size` entries along each edge, in the system's folder
/// for such things.
Path writeTable(int size) {
    const Path path =
        std::filesystem::temp_directory_path() / ("tavrin-bench-" + std::to_string(size) + ".cube");
    std::ofstream file(path.std());
    file << "LUT_3D_SIZE " << size << '\n';
    for (int i = 0; i < size * size * size; ++i) {
        const auto entry = [&](int index) {
            const double x = static_cast<double>(index % size) / (size - 1);
            return x / (0.3 + 0.7 * x);
        };
        file << entry(i) << ' ' << entry(i / size) << ' ' << entry(i / size / size) << '\n';
    }
    return path;
}

/// The LUT operator with a table of this size, and OpenColorIO with the table alone, on colours as
/// they are.
void lookUpTable(benchmark::State& state, int size) {
    const Path path = writeTable(size);
    const auto values = colorkit::OperatorValues(colorkit::LutOperator::kDescriptor)
                            .setEnabled(true)
                            .set(colorkit::LutOperator::kPath, path)
                            .set(colorkit::LutOperator::kLinear, true);
    const auto transform = OCIO::FileTransform::Create();
    transform->setSrc(path.std().c_str());
    transform->setInterpolation(OCIO::INTERP_TETRAHEDRAL);
    const auto processor =
        OCIO::Config::CreateRaw()->getProcessor(transform)->getDefaultCPUProcessor();
    colorkit::CommonColorMappingContext context;
    context.displayGamma = 1.0f;
    const colorkit::ColorMappingOperator<0> mapping(colorkit::makePipeline({values}), true,
                                                    {context, {kWidth, kHeight}});
    std::filesystem::remove(path.std());
    const BitmapImpl<Rgb> source = makeImage();
    std::vector<Rgb> row(kWidth);
    std::vector<double> oursSeconds;
    std::vector<double> baselineSeconds;
    const auto mapAll = [&](const auto& mapRow) {
        return getSeconds([&] {
            for (int y = 0; y < kHeight; y += 16) {
                const auto from = source.row(y);
                std::copy(from.begin(), from.end(), row.begin());
                mapRow(y);
            }
        });
    };
    for (auto iteration : state) {
        static_cast<void>(iteration);
        oursSeconds.push_back(mapAll([&](int y) { mapping.mapRow(row, {0, y, 1.0f}); }));
        baselineSeconds.push_back(mapAll([&](int) {
            OCIO::PackedImageDesc pixels(&row.front().r, kWidth, 1, 4);
            processor->apply(pixels);
        }));
        state.SetIterationTime(oursSeconds.back());
    }
    constexpr double kMegapixels = kWidth * (kHeight / 16) / 1e6;
    state.counters["megapixels"] = kMegapixels / getMedian(oursSeconds);
    state.counters["ratio"] = getMedian(oursSeconds) / getMedian(baselineSeconds);
}
BENCHMARK_CAPTURE(lookUpTable, 33, 33)->UseManualTime()->Iterations(getPairCount(kPairs));
BENCHMARK_CAPTURE(lookUpTable, 65, 65)->UseManualTime()->Iterations(getPairCount(kPairs));

const bool kAreOperatorsRegistered = [] {
    benchmark::RegisterBenchmark("no operator",
                                 [](benchmark::State& state) { singleOperator(state, {}); });
    for (const auto& [name, values] : makeOperators()) {
        benchmark::RegisterBenchmark(name.c_str(), [values = values](benchmark::State& state) {
            singleOperator(state, {values});
        });
    }
    return true;
}();

}  // namespace
}  // namespace tavrin::bench

BENCHMARK_MAIN();
