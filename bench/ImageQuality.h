#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"

namespace tavrin::bench {

/// How far an image is from its reference.
struct ImageQuality {
    double error;          ///< the mean of d², d being the difference of a component
    double relativeError;  ///< the mean of d² / (L² + 0.01), L being the mean of the reference's
                           ///< three components
    double signalToNoise;  ///< dB, of the tone-mapped colours
    double clippedSignalToNoise;  ///< dB, of the colours clipped to 0 ... 1 and encoded as sRGB
    double similarity;            ///< SSIM of the tone-mapped luminance (Wang et al. 2004)
    double meanChange;            ///< of the mean of all components, in per cent
};

/// Both images have one size.
ImageQuality measureQuality(const BitmapImpl<Rgb>& image, const BitmapImpl<Rgb>& reference);

/// The image after the default tone mapping, encoded for the display.
BitmapImpl<Rgb> toneMap(BitmapImpl<Rgb> image);

}  // namespace tavrin::bench
