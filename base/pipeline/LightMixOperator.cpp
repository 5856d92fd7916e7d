#include "base/pipeline/LightMixOperator.h"

#include "base/image/RegionSampling.h"
#include "base/pipeline/VirtualElements.h"
#include "foundation/Scheduler.h"
#include "services/postcore/PropertyIds.h"

#include <algorithm>
#include <atomic>
#include <functional>

namespace tavrin::pipeline {
namespace {

using colorkit::Spectrum;
using image::ElementInfo;
using image::RegionRows;

// Rows of the mix are made in parts of about so many pixels: what one light gives of a part is
// still in the cache of the processor when it is added.
constexpr int kPixelsPerPart = 16384;

/// Denoised variants of lights, which are auxiliary, say that they are lights too.
bool isLight(const ElementInfo& element) {
    return element.has(image::kLightSelectElement) && !element.has(image::kAuxiliaryElement);
}

Spectrum getMultiplier(const Vec3& color, float intensity) {
    return colorkit::linearSrgbToReflectance(
        {color.x * intensity, color.y * intensity, color.z * intensity});
}

bool isBlack(const Spectrum& multiplier) {
    return std::ranges::all_of(multiplier.bands, [](float band) { return band == 0.0f; });
}

Rgb tint(const Rgb& light, const Spectrum& multiplier) {
    return colorkit::radianceToLinearSrgb(multiplier * colorkit::linearSrgbToRadiance(light));
}

template <class T>
T getOr(const std::vector<T>& values, std::size_t index, const T& fallback) {
    return index < values.size() ? static_cast<T>(values[index]) : fallback;
}

/// Adds a light to a part of the mix, or makes it the part when it is the first. Every pixel is
/// written whole, with its fourth float, as compilers then compute it as one vector.
void addLight(std::span<const Rgb> light, Spectrum multiplier, bool isFirst, std::span<Rgb> sum) {
    if (isFirst) {
        for (std::size_t i = 0; i < light.size(); ++i) {
            sum[i] = tint(light[i], multiplier);
        }
        return;
    }
    for (std::size_t i = 0; i < light.size(); ++i) {
        const Rgb tinted = tint(light[i], multiplier);
        const Rgb before = sum[i];
        sum[i] = {before.r + tinted.r, before.g + tinted.g, before.b + tinted.b,
                  before.a + tinted.a};
    }
}

}  // namespace

std::vector<ElementInfo> LightMixOperator::getElements() const {
    std::vector<ElementInfo> elements = input().getElements();
    if (std::ranges::none_of(elements, isLight)) {
        return elements;
    }
    elements.push_back(makeVirtualElement(image::kLightMixInteractive, imageInfo()));
    return elements;
}

std::vector<ElementInfo> LightMixOperator::getLightElements() const {
    std::vector<ElementInfo> elements = input().getElements();
    std::erase_if(elements, std::not_fn(isLight));
    return elements;
}

Optional<BitmapImpl<Rgb>> LightMixOperator::computeRgbRegion(const Request& request) {
    return request.element == image::kLightMixInteractive ? mix(request) : requestRgb(request);
}

std::vector<LightMixOperator::Light> LightMixOperator::getLightsInMix() const {
    const auto enabled = settings().get(postcore::kLightMixEnabledId).get<std::vector<bool>>();
    const auto intensities =
        settings().get(postcore::kLightMixIntensityId).get<std::vector<float>>();
    const auto colors = settings().get(postcore::kLightMixColorId).get<std::vector<Vec3>>();
    std::vector<Light> lights;
    const std::vector<ElementInfo> elements = getLightElements();
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Spectrum multiplier =
            getMultiplier(getOr(colors, i, Vec3{1.0f, 1.0f, 1.0f}), getOr(intensities, i, 1.0f));
        if (getOr(enabled, i, true) && !isBlack(multiplier)) {
            lights.push_back({elements[i].name, multiplier});
        }
    }
    return lights;
}

Optional<BitmapImpl<Rgb>> LightMixOperator::mix(const Request& request) {
    const std::vector<Light> lights = getLightsInMix();
    const Pixel size = image::getSampledSize(request.region.size(), request.scale);
    BitmapImpl<Rgb> sum(size.x, size.y);
    if (lights.empty()) {
        std::ranges::fill(sum.pixels(), Rgb());
        return sum;
    }
    const std::vector<RegionRows> parts =
        image::divideIntoRows(request.region, request.scale, kPixelsPerPart / std::max(size.x, 1));
    std::atomic<bool> isComplete = true;
    Scheduler::defaultInstance().parallelFor(
        0, std::ssize(parts), TaskPriority::Interactive, [&](std::int64_t index) {
            if (isComplete && !mixPart(request, lights, parts[std::size_t(index)], sum)) {
                isComplete = false;
            }
        });
    return isComplete ? Optional<BitmapImpl<Rgb>>(std::move(sum)) : std::nullopt;
}

bool LightMixOperator::mixPart(const Request& request, const std::vector<Light>& lights,
                               const RegionRows& part, BitmapImpl<Rgb>& sum) const {
    const Pixel size = image::getSampledSize(part.region.size(), request.scale);
    const auto width = std::size_t(size.x);
    const std::span<Rgb> rows =
        sum.pixels().subspan(std::size_t(part.firstRow) * width, std::size_t(size.y) * width);
    bool isFirst = true;
    for (const Light& light : lights) {
        const auto pixels = requestRgb({light.element, part.region, request.scale, request.flags});
        if (!pixels || pixels->getSize() != size) {
            return false;
        }
        addLight(pixels->pixels(), light.multiplier, isFirst, rows);
        isFirst = false;
    }
    return true;
}

}  // namespace tavrin::pipeline
