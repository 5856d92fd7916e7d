#pragma once

#include "foundation/Flags.h"
#include "foundation/String.h"

#include <cstdint>
#include <vector>

namespace tavrin::postcore {

/// How noise is removed; the values of the property "denoiseMode". Other values mean none.
enum class DenoisingMode : int {
    None = 0,
    FirefliesOnly = 1,
    HighQuality = 2,
    NvidiaGpuAi = 4,
    IntelAi = 5,
};

enum class DenoisingModeFlag : std::uint32_t {
    Usable = 1,          ///< the mode denoises
    NeedsVariances = 2,  ///< of the features, too
};

/// Render elements that guide a denoiser.
enum class FeatureType : int {
    VisibleNormals = 0,
    VisibleDiffuse = 1,
    Hybrid = 2,
    HairIds = 3,
    OptixNormals = 4,
};

Flags<DenoisingModeFlag> getDenoisingModeFlags(DenoisingMode mode);
/// The features that the mode cannot do without, but for FeatureType::HairIds, which is left out
/// where an image lacks it.
std::vector<FeatureType> getDenoisingFeatures(DenoisingMode mode);
/// Further features that the mode uses where the image has them, each with its variance if that is
/// there.
std::vector<FeatureType> getOptionalDenoisingFeatures(DenoisingMode mode);
/// How many passes a pixel needs at least for its element to be denoised.
int getRequiredPassCount(DenoisingMode mode);
/// The name of the feature's render element.
String getFeatureElementName(FeatureType feature);

}  // namespace tavrin::postcore
