// The operators from the file to the picture against the same work without them.
//
//     pipeline-bench [--benchmark_... options] [PART...]
//
// merges the files named, or, without any, three full-HD parts of a render that it writes to the
// temporary folder first. The other rows work on images that exist only in memory.

#include "base/pipeline/Completion.h"
#include "base/pipeline/Performer.h"
#include "bench/BenchImages.h"
#include "bench/DisplayPieces.h"
#include "bench/FileBenchmarks.h"
#include "bench/PairedRuns.h"
#include "foundation/Scheduler.h"
#include "services/postcore/PropertyIds.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace tavrin::bench {
namespace {

using image::ChannelImage;
using image::ElementKind;

constexpr Bucket kFullHd{0, 0, 1920, 1080};
constexpr Bucket k4K{0, 0, 3840, 2160};
constexpr int kLightCount = 8;
constexpr int kPairs = 31;
const String kBeauty;

String numbered(const char* name, int number) {
    return name + String::fromUtf8(std::to_string(number));
}

ChannelImage makeImage(const Bucket& window, const std::vector<image::ElementInfo>& elements) {
    ChannelImage image(window, window, 1.0f);
    for (const image::ElementInfo& element : elements) {
        image.addElement(element);
    }
    image.fitChannelsToDataWindow();
    return image;
}

/// An image of a beauty with alpha and the light selects "Light1", "Light2", ...
ChannelImage makeLightSelects(const Bucket& window) {
    using postcore::RenderElementInfo;
    std::vector<image::ElementInfo> elements{{kBeauty, ElementKind::Rgba, 0}};
    std::vector<RenderElementInfo> infos;
    for (int i = 1; i <= kLightCount; ++i) {
        const String name = numbered("Light", i);
        elements.push_back({name, ElementKind::Rgb, 0});
        infos.emplace_back(RenderElementInfo::Data{postcore::kLightSelectType,
                                                   {name, name},
                                                   postcore::RenderElementFlag::NoPostProcessing});
    }
    ChannelImage image = makeImage(window, elements);
    image.setRenderElementInfos(infos);
    fillLikeRender(image);
    return image;
}

/// The operators with what they work with.
class Chain {
public:
    void load(std::vector<Path> paths) {
        operators.load.load({}, std::move(paths));
        const Result<String> ended = loaded_.wait();
        if (!ended) {
            throw Exception(ended.error());
        }
    }

    settings::Settings& settings() { return *settings_; }

private:
    const std::shared_ptr<settings::Settings> settings_ = std::make_shared<settings::Settings>();

public:
    colorkit::ColorMapping colorMapping;
    pipeline::Performer operators{*settings_, colorMapping};

private:
    pipeline::Completion loaded_{operators.load};
};

/// A chain with light selects of which all are in the mix, each in another way, and with sharpening
/// at its defaults.
class RenderChain : public Chain {
public:
    explicit RenderChain(const Bucket& window) {
        operators.load.setLoader(
            [window](const Path&) -> Result<ChannelImage> { return makeLightSelects(window); });
        load({Path(String("render"))});
        std::vector<Vec3> colors;
        std::vector<float> intensities;
        for (int i = 0; i < kLightCount; ++i) {
            const float shade = static_cast<float>(i) / kLightCount;
            const float intensity = 0.25f + shade;
            const Vec3 color{1.0f, 1.0f - 0.5f * shade, 0.5f + 0.5f * shade};
            colors.push_back(color);
            intensities.push_back(intensity);
            lights_.push_back(
                {numbered("Light", i + 1),
                 colorkit::linearSrgbToReflectance(
                     {color.x * intensity, color.y * intensity, color.z * intensity})});
        }
        settings().set(postcore::kLightMixColorId, colors);
        settings().set(postcore::kLightMixIntensityId, intensities);
        settings().set(postcore::kSharpenBlurEnabledId, true);
    }

    const std::vector<DisplayPieces::Light>& getLights() const { return lights_; }

private:
    std::vector<DisplayPieces::Light> lights_;
};

// Merging

/// The largest difference of a channel from the weighted mean of the parts' channels, relative to
/// the mean, of which at least 1e-4 counts.
double getWorstError(const ChannelImage& merged, const std::vector<ChannelImage>& parts,
                     const String& channel) {
    const std::span<const float> means = merged.getChannel<float>(channel).getValues();
    std::vector<const float*> values;
    std::vector<const float*> weights;
    for (const ChannelImage& part : parts) {
        values.push_back(part.getChannel<float>(channel).getData());
        weights.push_back(part.getChannel<float>(image::kWeightsElement).getData());
    }
    double worst = 0.0;
    for (std::size_t i = 0; i < means.size(); ++i) {
        double sum = 0.0;
        double weight = 0.0;
        for (std::size_t k = 0; k < parts.size(); ++k) {
            sum += double{weights[k][i]} * double{values[k][i]};
            weight += double{weights[k][i]};
        }
        // What is not a number is black in a loaded image.
        const double mean = weight == 0.0 || std::isnan(sum) ? 0.0 : sum / weight;
        const double error = std::abs(double{means[i]} - mean) / std::max(std::abs(mean), 1e-4);
        worst = error <= worst ? worst : error;
    }
    return worst;
}

double getWorstError(const ChannelImage& merged, const std::vector<std::string>& files) {
    std::vector<ChannelImage> parts;
    for (const std::string& file : files) {
        parts.push_back(loadOrThrow(file));
        if (parts.back().getDataWindow() != merged.getDataWindow()) {
            throw Exception("Image \"" + String::fromUtf8(file) +
                            "\" has another data window than the first one.");
        }
    }
    double worst = 0.0;
    for (const auto& [name, channel] : merged.getChannels()) {
        const auto hasChannel = [&name = name](const ChannelImage& part) {
            return part.hasChannel<float>(name);
        };
        if (name != image::kWeightsElement && std::ranges::all_of(parts, hasChannel)) {
            worst = std::max(worst, getWorstError(merged, parts, name));
        }
    }
    return worst;
}

void merge(benchmark::State& state, const std::vector<std::string>& files) {
    std::vector<Path> paths;
    for (const std::string& file : files) {
        paths.emplace_back(std::filesystem::path(file));
    }
    auto chain = std::make_unique<Chain>();
    runPaired(
        state, 1.15, [&] { chain->load(paths); },
        [&] {
            for (const std::string& file : files) {
                const ChannelImage image = loadOrThrow(file);
                benchmark::DoNotOptimize(&image);
            }
        },
        [&] { chain = std::make_unique<Chain>(); });
    chain->load(paths);
    state.counters["worst_relative_error"] =
        getWorstError(*chain->operators.load.getImage(), files);
}

/// Parts of a render: 20 channels and the weights of their pixels.
std::vector<std::string> writeParts() {
    std::vector<image::ElementInfo> elements{{kBeauty, ElementKind::Rgba, 0},
                                             {"Depth", ElementKind::Mono, 0},
                                             {image::kWeightsElement, ElementKind::Mono, 0}};
    for (int i = 1; i <= 5; ++i) {
        elements.push_back({numbered("Pass", i), ElementKind::Rgb, 0});
    }
    std::vector<std::string> files;
    for (std::uint32_t part = 1; part <= 3; ++part) {
        ChannelImage image = makeImage(kFullHd, elements);
        fillLikeRender(image, part);
        files.push_back(getTemporaryFile("tavrin-pipeline-bench-" + std::to_string(part) + ".exr"));
        saveOrThrow(image, files.back());
    }
    return files;
}

// Mixing lights

/// The sum of all values, in as many sums as keep the processor waiting for nothing but memory.
float addUp(std::span<const float> values) {
    std::array<float, 32> sums{};
    for (std::size_t i = 0; i + sums.size() <= values.size(); i += sums.size()) {
        for (std::size_t k = 0; k < sums.size(); ++k) {
            sums[k] += values[i + k];
        }
    }
    float sum = 0.0f;
    for (const float part : sums) {
        sum += part;
    }
    return sum;
}

void readLights(const ChannelImage& image) {
    constexpr std::int64_t kGrain = 32768;
    for (int i = 1; i <= kLightCount; ++i) {
        for (const char* component : {"R", "G", "B"}) {
            const std::span<const float> plane =
                image.getChannel<float>(image::joinChannelName(numbered("Light", i), component))
                    .getValues();
            Scheduler::defaultInstance().parallelForRanges(
                0, std::ssize(plane), kGrain, TaskPriority::Interactive,
                [plane](std::int64_t from, std::int64_t to) {
                    benchmark::DoNotOptimize(
                        addUp(plane.subspan(std::size_t(from), std::size_t(to - from))));
                });
        }
    }
}

void lightMix(benchmark::State& state) {
    RenderChain chain(kFullHd);
    const auto image = chain.operators.load.getImage();
    runPaired(
        state, 3.0,
        [&] {
            return chain.operators.lightMix.provideRgbRegion(image::kLightMixInteractive, kFullHd,
                                                             1.0f);
        },
        [&] { readLights(*image); });
}

// The whole chain

/// Away from the edges, where the chain looks at pixels outside, both have the same pixels.
void checkSame(const BitmapImpl<Rgb>& left, const BitmapImpl<Rgb>& right) {
    constexpr int kEdge = 128;
    for (int y = kEdge; y < left.getHeight() - kEdge; ++y) {
        const auto inside = [y](const BitmapImpl<Rgb>& bitmap) {
            return std::as_bytes(
                bitmap.row(y).subspan(kEdge, std::size_t(bitmap.getWidth() - 2 * kEdge)));
        };
        if (!std::ranges::equal(inside(left), inside(right))) {
            throw Exception("The chain and its pieces give different pictures.");
        }
    }
}

/// A full-HD view of the middle of a 4K image.
void view(benchmark::State& state, const String& element, float scale) {
    RenderChain chain(k4K);
    const int width = static_cast<int>(scale * static_cast<float>(kFullHd.width()));
    const int height = static_cast<int>(scale * static_cast<float>(kFullHd.height()));
    const int x0 = (k4K.width() - width) / 2;
    const int y0 = (k4K.height() - height) / 2;
    const Bucket region{x0, y0, x0 + width, y0 + height};
    DisplayPieces pieces(chain.operators.load.getImage(), chain.settings(), chain.colorMapping);
    if (element != kBeauty) {
        pieces.setLights(chain.getLights());
    }
    const auto provide = [&] {
        return *chain.operators.zoom.provideRgbRegion(element, region, scale);
    };
    checkSame(provide(), pieces.show(region, scale));
    runPaired(state, 1.2, provide, [&] { return pieces.show(region, scale); });
    pieces.report(state);
}

void registerBenchmarks(const std::vector<std::string>& parts) {
    const auto add = [&](const std::string& name, auto function, auto... arguments) {
        return benchmark::RegisterBenchmark(name.c_str(), function, arguments...)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(getPairCount(kPairs));
    };
    add("merge", merge, parts)->Iterations(getPairCount(7));
    add("lightMix", lightMix);
    add("view/scale:1", view, kBeauty, 1.0f);
    add("view/scale:2", view, kBeauty, 2.0f);
    add("view/scale:0.5", view, kBeauty, 0.5f);
    add("view_lightMix/scale:1", view, image::kLightMixInteractive, 1.0f);
}

}  // namespace
}  // namespace tavrin::bench

int main(int argumentCount, char** arguments) {
    return tavrin::bench::runFileBenchmarks(argumentCount, arguments, tavrin::bench::writeParts,
                                            tavrin::bench::registerBenchmarks);
}
