#pragma once

#include "foundation/Color.h"
#include "foundation/Function.h"

#include <span>

namespace tavrin::postcore {

/// How a kind of picture becomes the numbers from 0 to 1 that a network was trained on, and back, a
/// row of pixels at a time. What is not finite counts as 0; the fourth float of a pixel is not
/// defined afterwards. Source and destination may be the same. Any thread.
struct PixelCode {
    Function<void(std::span<const Rgb> colors, std::span<Rgb> encoded)> encode;
    Function<void(std::span<const Rgb> encoded, std::span<Rgb> colors)> decode;
};

/// For light of any strength, with the factor that makes its middle grey 0.18; see
/// TransferFunction.
PixelCode makeLightCode(float exposure);
/// For albedos from 0 to 1: the curve of sRGB.
PixelCode makeAlbedoCode();
/// For normals, signed, of any length up to 1.
PixelCode makeNormalCode();

/// One component of a normal as makeNormalCode() encodes it.
float encodeNormal(float component);
/// The nearest value within the limits; 0 for what is not finite.
float clampFinite(float value, float least, float most);

}  // namespace tavrin::postcore
