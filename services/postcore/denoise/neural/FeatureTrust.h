#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "services/postcore/denoise/IDenoiser.h"

#include <cstddef>
#include <vector>

namespace tavrin::postcore {

/// Whether an albedo is so much cleaner than colours that it, and the normals of the same samples,
/// are a help to the network; noisy ones mislead it. Any thread.
class AlbedoTrust {
public:
    /// Remembers how noisy the albedo is.
    explicit AlbedoTrust(const DenoisingFeature& albedo);

    /// Compares the upper quartiles of the relative errors where there is light; as both fall with
    /// the number of samples alike, the answer does not depend on that. An albedo without variance
    /// is trusted. The bitmaps have the albedo's size.
    bool isTrusted(const BitmapImpl<Rgb>& color, const BitmapImpl<Rgb>& variance,
                   float exposure) const;

private:
    std::size_t step_;
    std::vector<double> errors_;  // of every step_-th pixel; empty without variance
};

}  // namespace tavrin::postcore
