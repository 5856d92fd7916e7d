#include "services/postcore/bloomglare/BloomGlareRenderer.h"

#include "services/postcore/bloomglare/BloomPsf.h"
#include "services/postcore/bloomglare/FftConvolution.h"
#include "services/postcore/bloomglare/LegacyPsf.h"
#include "services/postcore/bloomglare/RowLoop.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <span>
#include <utility>

namespace tavrin::postcore {
namespace {

constexpr std::size_t kChannels = 3;
constexpr int kStepsPerLayer = 1 + static_cast<int>(kChannels);  // its kernel, its channels
constexpr float kLargest = std::numeric_limits<float>::max();

std::size_t countPixels(const Bucket& bounds) {
    return static_cast<std::size_t>(bounds.width()) * static_cast<std::size_t>(bounds.height());
}

/// Kernels reach as far as the size says in both directions of the image's longer side.
int getRadius(Pixel imageSize, float size) {
    const double percent = size >= 1.0f ? std::min(static_cast<double>(size), 100.0) : 1.0;
    const double radius = 0.5 * percent / 100.0 * std::max(imageSize.x, imageSize.y);
    return std::max(static_cast<int>(std::lround(radius)), 1);
}

/// For images whose row 0 is the lowest.
void turnUpsideDown(PointSpreadFunction& psf) {
    const auto size = static_cast<std::size_t>(psf.getSize());
    for (std::vector<float>& plane : psf.planes) {
        for (std::size_t y = 0; y < size / 2; ++y) {
            float* row = plane.data() + y * size;
            std::swap_ranges(row, row + size, plane.data() + (size - 1 - y) * size);
        }
    }
}

}  // namespace

const float* BloomGlareRenderer::Layer::row(std::size_t channel, int y) const {
    const auto index = static_cast<std::size_t>(y - bounds.y0);
    return planes[channel].data() + index * static_cast<std::size_t>(bounds.width());
}

int BloomGlareRenderer::getTotalSteps(const BloomGlareData& bloomGlare) {
    int layers = 0;
    for (const Effect effect : {Effect::Bloom, Effect::Glare}) {
        layers += getIntensity(effect, bloomGlare) > 0.0f;
    }
    // Before and after the layers, what glows is found and the layers are added up.
    return layers == 0 ? 1 : 1 + layers * kStepsPerLayer + 1;
}

float BloomGlareRenderer::getIntensity(Effect effect, const BloomGlareData& bloomGlare) {
    const float intensity =
        effect == Effect::Bloom ? bloomGlare.bloomIntensity : bloomGlare.glareIntensity;
    return bloomGlare.enabled != 0 && intensity > 0.0f ? std::min(intensity, kLargest) : 0.0f;
}

BloomGlareRenderer::LayerKey BloomGlareRenderer::makeKey(Effect effect,
                                                         const Highlights& highlights,
                                                         const BloomGlareData& bloomGlare) {
    LayerKey key;
    key.effect = effect;
    key.highlights = highlights.getHash();
    key.imageSize = highlights.getImageSize();
    key.radius = getRadius(key.imageSize, bloomGlare.size);
    key.isLegacy = bloomGlare.legacy != 0;
    if (effect == Effect::Glare) {
        key.glare = bloomGlare.glare;
        if (bloomGlare.aperture.isCustom && !key.isLegacy) {
            key.aperture = bloomGlare.aperture;
        }
    }
    return key;
}

PointSpreadFunction BloomGlareRenderer::makeKernel(const LayerKey& key) {
    PointSpreadFunction psf;
    if (key.effect == Effect::Bloom) {
        psf = key.isLegacy ? makeLegacyBloomPsf(key.radius) : makeBloomPsf(key.radius);
    } else {
        psf = key.isLegacy ? makeLegacyGlarePsf(key.glare, key.radius)
                           : makeGlarePsf(key.glare, key.aperture, key.radius);
    }
    turnUpsideDown(psf);
    return psf;
}

bool BloomGlareRenderer::render(Flags<ImageOperatorsFlag> flags, BitmapImpl<CompressedRgb>& bitmap,
                                const BloomGlareData& bloomGlare, BloomGlareProgress& progress) {
    const int endStep = progress.getCurrentStep() + getTotalSteps(bloomGlare);
    const Highlights highlights(flags, bitmap, bloomGlare.threshold);
    std::vector<Layer> kept;
    std::vector<LayerKey> missing;
    for (const Effect effect : {Effect::Bloom, Effect::Glare}) {
        if (getIntensity(effect, bloomGlare) > 0.0f && !highlights.getBounds().isEmpty()) {
            const LayerKey key = makeKey(effect, highlights, bloomGlare);
            const auto found = std::ranges::find(layers_, key, &Layer::key);
            if (found == layers_.end()) {
                missing.push_back(key);
            } else {
                kept.push_back(std::move(*found));
            }
        }
    }
    layers_ = std::move(kept);
    progress.advance();
    if (!missing.empty()) {
        std::vector<Layer> fresh = convolve(flags, highlights, missing, progress);
        if (fresh.empty()) {
            return false;
        }
        convolutionCount_ += static_cast<int>(fresh.size());
        std::ranges::move(fresh, std::back_inserter(layers_));
    }
    if (progress.isAborted()) {
        return false;
    }
    addUp(flags, bloomGlare, highlights.getUnit(), bitmap);
    progress.advance(endStep - progress.getCurrentStep());
    return true;
}

std::vector<BloomGlareRenderer::Layer> BloomGlareRenderer::convolve(
    Flags<ImageOperatorsFlag> flags, const Highlights& highlights,
    const std::vector<LayerKey>& keys, BloomGlareProgress& progress) {
    std::vector<PointSpreadFunction> kernels;
    for (const LayerKey& key : keys) {
        if (progress.isAborted()) {
            return {};
        }
        kernels.push_back(makeKernel(key));
        progress.advance();
    }
    FftConvolution convolution(flags, highlights.getImageSize(), highlights.getBounds(),
                               keys.front().radius);
    std::vector<Layer> layers;
    for (const LayerKey& key : keys) {
        layers.push_back({key, convolution.getResultBounds(), {}});
    }
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        std::vector<const float*> weights;
        std::vector<float*> results;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            PixelArray<float>& plane = layers[i].planes[channel];
            plane = PixelArray<float>(countPixels(layers[i].bounds));
            results.push_back(plane.data());
            weights.push_back(kernels[i].planes[channel].data());
        }
        const auto readRow = [&](int y, std::span<float> row) {
            highlights.getRow(y, static_cast<int>(channel), row);
        };
        if (!convolution.convolve(readRow, weights, results,
                                  [&progress] { return progress.isAborted(); })) {
            return {};
        }
        progress.advance(static_cast<int>(keys.size()));
    }
    return layers;
}

void BloomGlareRenderer::addUp(Flags<ImageOperatorsFlag> flags, const BloomGlareData& bloomGlare,
                               float unit, BitmapImpl<CompressedRgb>& bitmap) const {
    constexpr std::array kComponents = {&CompressedRgb::r, &CompressedRgb::g, &CompressedRgb::b};
    forEachRow(flags, bitmap.getHeight(), [&](int y) {
        const auto row = bitmap.row(y);
        std::ranges::fill(row, CompressedRgb());
        for (const Layer& layer : layers_) {
            if (y < layer.bounds.y0 || y >= layer.bounds.y1) {
                continue;
            }
            const float intensity = getIntensity(layer.key.effect, bloomGlare);
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                const float* light = layer.row(channel, y);
                CompressedRgb* pixels = row.data() + layer.bounds.x0;
                for (int x = 0; x < layer.bounds.width(); ++x) {
                    float& sum = pixels[x].*kComponents[channel];
                    sum = std::min(sum + intensity * light[x] * unit, kLargest);
                }
            }
        }
    });
}

}  // namespace tavrin::postcore
