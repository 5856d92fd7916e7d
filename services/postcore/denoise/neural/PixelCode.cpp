#include "services/postcore/denoise/neural/PixelCode.h"

#include "services/postcore/denoise/neural/TransferFunction.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tavrin::postcore {
namespace {

// IEC 61966-2-1.
float encodeAlbedo(float albedo) {
    const float value = clampFinite(albedo, 0.0f, 1.0f);
    return value <= 0.0031308f ? 12.92f * value : 1.055f * std::pow(value, 1.0f / 2.4f) - 0.055f;
}

float decodeAlbedo(float encoded) {
    const float value = clampFinite(encoded, 0.0f, 1.0f);
    return value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
}

float decodeNormal(float encoded) {
    return 2.0f * clampFinite(encoded, 0.0f, 1.0f) - 1.0f;
}

template <float (*kFunction)(float)>
void forEachComponent(std::span<const Rgb> from, std::span<Rgb> to) {
    for (std::size_t i = 0; i < from.size(); ++i) {
        to[i] = {kFunction(from[i].r), kFunction(from[i].g), kFunction(from[i].b), 0.0f};
    }
}

}  // namespace

float clampFinite(float value, float least, float most) {
    return std::isfinite(value) ? std::clamp(value, least, most) : 0.0f;
}

float encodeNormal(float component) {
    return 0.5f + 0.5f * clampFinite(component, -1.0f, 1.0f);
}

PixelCode makeLightCode(float exposure) {
    return {[exposure](std::span<const Rgb> colors, std::span<Rgb> encoded) {
                encodeColors(colors, exposure, encoded);
            },
            [exposure](std::span<const Rgb> encoded, std::span<Rgb> colors) {
                decodeColors(encoded, exposure, colors);
            }};
}

PixelCode makeAlbedoCode() {
    return {forEachComponent<encodeAlbedo>, forEachComponent<decodeAlbedo>};
}

PixelCode makeNormalCode() {
    return {forEachComponent<encodeNormal>, forEachComponent<decodeNormal>};
}

}  // namespace tavrin::postcore
