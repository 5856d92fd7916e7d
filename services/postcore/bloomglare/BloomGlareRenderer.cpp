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

/// Kernels reach as far as the size says in both directions of the image's longer side; that of a
/// panorama counts as twice the shorter one, or kernels would be far larger than the image.
int getRadius(Pixel imageSize, float size) {
    const int side =
        std::min(std::max(imageSize.x, imageSize.y), 2 * std::min(imageSize.x, imageSize.y));
    const double percent = size >= 1.0f ? std::min(static_cast<double>(size), 100.0) : 1.0;
    const double radius = 0.5 * percent / 100.0 * side;
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
    key.highlights = highlights.getHash();
    key.imageSize = highlights.getImageSize();
    key.kernel.effect = effect;
    key.kernel.radius = getRadius(key.imageSize, bloomGlare.size);
    key.kernel.isLegacy = bloomGlare.legacy != 0;
    if (effect == Effect::Glare) {
        key.kernel.glare = bloomGlare.glare;
        if (bloomGlare.aperture.isCustom && !key.kernel.isLegacy) {
            key.kernel.aperture = bloomGlare.aperture;
            key.kernel.glare.streakCount = GlareParams().streakCount;
        }
    }
    return key;
}

PointSpreadFunction BloomGlareRenderer::makePsf(const KernelKey& key) {
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

void BloomGlareRenderer::keepOnly(const std::vector<LayerKey>& keys) {
    std::erase_if(layers_, [&keys](const Layer& layer) {
        return std::ranges::find(keys, layer.key) == keys.end();
    });
    std::erase_if(kernels_, [&keys](const Kernel& kernel) {
        return std::ranges::find(keys, kernel.key, &LayerKey::kernel) == keys.end();
    });
}

const BloomGlareRenderer::Kernel& BloomGlareRenderer::getKernel(const KernelKey& key) {
    const auto found = std::ranges::find(kernels_, key, &Kernel::key);
    return found != kernels_.end() ? *found : kernels_.emplace_back(Kernel{key, makePsf(key)});
}

bool BloomGlareRenderer::render(Flags<ImageOperatorsFlag> flags, BitmapImpl<CompressedRgb>& bitmap,
                                const BloomGlareData& bloomGlare, BloomGlareProgress& progress) {
    const int endStep = progress.getCurrentStep() + getTotalSteps(bloomGlare);
    const Highlights highlights(flags, bitmap, bloomGlare.threshold);
    std::vector<LayerKey> keys;
    for (const Effect effect : {Effect::Bloom, Effect::Glare}) {
        keys.push_back(makeKey(effect, highlights, bloomGlare));
    }
    keepOnly(keys);
    std::vector<LayerKey> missing;
    std::ranges::copy_if(keys, std::back_inserter(missing), [&](const LayerKey& key) {
        return getIntensity(key.kernel.effect, bloomGlare) > 0.0f &&
               !highlights.getBounds().isEmpty() &&
               std::ranges::find(layers_, key, &Layer::key) == layers_.end();
    });
    if (getTotalSteps(bloomGlare) > 1) {
        progress.advance();
    }
    if ((!missing.empty() && !convolve(flags, highlights, missing, progress)) ||
        progress.isAborted()) {
        return false;
    }
    addUp(flags, bloomGlare, highlights.getUnit(), bitmap);
    progress.advance(endStep - progress.getCurrentStep());
    return true;
}

bool BloomGlareRenderer::convolve(Flags<ImageOperatorsFlag> flags, const Highlights& highlights,
                                  const std::vector<LayerKey>& keys, BloomGlareProgress& progress) {
    for (const LayerKey& key : keys) {
        if (progress.isAborted()) {
            return false;
        }
        getKernel(key.kernel);
        progress.advance();
    }
    FftConvolution convolution(flags, highlights.getImageSize(), highlights.getBounds(),
                               keys.front().kernel.radius);
    std::vector<Layer> layers;
    for (const LayerKey& key : keys) {
        layers.push_back({key, convolution.getResultBounds(), {}});
    }
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        std::vector<const float*> weights;
        std::vector<float*> results;
        for (Layer& layer : layers) {
            layer.planes[channel] = PixelArray<float>(countPixels(layer.bounds));
            results.push_back(layer.planes[channel].data());
            weights.push_back(getKernel(layer.key.kernel).psf.planes[channel].data());
        }
        const auto readRow = [&](int y, std::span<float> row) {
            return highlights.getRow(y, static_cast<int>(channel), row);
        };
        if (!convolution.convolve(readRow, weights, results,
                                  [&progress] { return progress.isAborted(); })) {
            return false;
        }
        progress.advance(static_cast<int>(keys.size()));
    }
    convolutionCount_ += static_cast<int>(layers.size());
    std::ranges::move(layers, std::back_inserter(layers_));
    return true;
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
            const float intensity = getIntensity(layer.key.kernel.effect, bloomGlare);
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
