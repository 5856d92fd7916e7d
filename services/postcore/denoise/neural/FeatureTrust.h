#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "services/postcore/denoise/IDenoiser.h"

namespace tavrin::postcore {

/// Whether the albedo is so much cleaner than the colour that it, and the normals of the same
/// samples, are a help to the network; noisy ones mislead it. Compares the upper quartiles of their
/// relative errors where there is light; as both fall with the number of samples alike, the answer
/// does not depend on that. Without a variance of the albedo it is trusted.
bool isAlbedoTrusted(const DenoisingFeature& albedo, const BitmapImpl<Rgb>& color,
                     const BitmapImpl<Rgb>& variance, float exposure);

}  // namespace tavrin::postcore
