#include "bench/DisplayPieces.h"

#include "base/image/RegionSampling.h"
#include "bench/PairedRuns.h"
#include "foundation/Scheduler.h"
#include "services/postcore/PostProcessData.h"
#include "services/postcore/PropertyIds.h"

#include <algorithm>

namespace tavrin::bench {
namespace {

/// Adds a light to pixels of a mix.
void addLight(std::span<const Rgb> light, colorkit::Spectrum factors, Rgb* sum) {
    for (const Rgb& pixel : light) {
        const Rgb tinted =
            colorkit::radianceToLinearSrgb(factors * colorkit::linearSrgbToRadiance(pixel));
        const Rgb before = *sum;
        *sum++ = {before.r + tinted.r, before.g + tinted.g, before.b + tinted.b,
                  before.a + tinted.a};
    }
}

void includeAlpha(const BitmapImpl<float>& alpha, BitmapImpl<Rgb>& colors) {
    image::forEachRow(colors.getSize(), [&](int y) {
        const std::span<Rgb> row = colors.row(y);
        const std::span<const float> from = alpha.row(y);
        for (std::size_t x = 0; x < row.size(); ++x) {
            row[x].a = from[x];
        }
    });
}

BitmapImpl<Rgb> repeatPixels(const BitmapImpl<Rgb>& source, int repeats) {
    BitmapImpl<Rgb> result(source.getWidth() * repeats, source.getHeight() * repeats);
    image::forEachRow(result.getSize(), [&](int y) {
        Rgb* to = result.row(y).data();
        for (const Rgb& pixel : source.row(y / repeats)) {
            to = std::fill_n(to, repeats, pixel);
        }
    });
    return result;
}

}  // namespace

DisplayPieces::DisplayPieces(SharedPtr<const image::ChannelImage> image,
                             const postcore::ISettings& settings,
                             const colorkit::ColorMapping& colorMapping)
    : image_(std::move(image)) {
    const Pixel size = image_->getDisplayWindow().size();
    mapping_ = colorMapping.createMappingOperator(
        postcore::getCommonColorMappingContext(postcore::getPostProcessData(settings, size, {})),
        size);
    const auto get = [&](int id) { return settings.get(id).get<float>(); };
    sharpening_.initialize(true, get(postcore::kSharpenAmountId), get(postcore::kSharpenRadiusId),
                           get(postcore::kBlurRadiusId), 1.0f);
}

BitmapImpl<Rgb> DisplayPieces::show(const Bucket& region, float viewScale) {
    const float scale = std::max(viewScale, 1.0f);
    BitmapImpl<Rgb> colors;
    time("region_ms", [&] { colors = getColors(region, scale); });
    time("alpha_ms",
         [&] { includeAlpha(image_->getMonoRegion(image::kAlphaElement, region, scale), colors); });
    time("map_ms", [&] { mapping_->mapBitmap(colors, {region.x0, region.y0}, scale); });
    time("sharpen_ms", [&] {
        sharpening_.apply(postcore::ImageOperatorsFlag::Parallel, colors, static_cast<int>(scale),
                          false);
    });
    if (viewScale < 1.0f) {
        time("zoom_ms", [&] { colors = repeatPixels(colors, image::getRepeats(viewScale)); });
    }
    return colors;
}

void DisplayPieces::report(benchmark::State& state) const {
    for (const auto& [counter, times] : times_) {
        state.counters[counter] = 1e3 * getMedian(times);
    }
}

BitmapImpl<Rgb> DisplayPieces::getColors(const Bucket& region, float scale) const {
    return lights_.empty() ? image_->getRgbRegionWithAlpha({}, region, scale) : mixLights(region);
}

/// A few rows of all lights after the other, which stay in the cache.
BitmapImpl<Rgb> DisplayPieces::mixLights(const Bucket& region) const {
    constexpr int kRowsPerPart = 8;
    BitmapImpl<Rgb> mix(region.width(), region.height());
    const auto parts = image::divideIntoRows(region, 1.0f, kRowsPerPart);
    Scheduler::defaultInstance().parallelFor(
        0, std::ssize(parts), TaskPriority::Interactive, [&](std::int64_t index) {
            const auto& [rows, firstRow] = parts[std::size_t(index)];
            Rgb* sum = mix.row(firstRow).data();
            std::fill_n(sum, rows.width() * rows.height(), Rgb());
            for (const Light& light : lights_) {
                const auto colors = image_->getRgbRegion(light.element, rows, 1.0f);
                addLight(colors.pixels(), light.factors, sum);
            }
        });
    return mix;
}

template <class Work>
void DisplayPieces::time(const char* counter, const Work& work) {
    times_[counter].push_back(getSeconds(work));
}

}  // namespace tavrin::bench
