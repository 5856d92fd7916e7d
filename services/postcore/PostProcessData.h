#pragma once

#include "foundation/Geometry.h"
#include "services/colorkit/CommonColorMappingContext.h"
#include "services/postcore/CameraData.h"
#include "services/postcore/ISettings.h"
#include "services/postcore/bloomglare/BloomGlareData.h"

namespace tavrin::postcore {

/// Settings by what they are for, with what they depend on of the image. A plain value.
struct PostProcessData {
    BloomGlareData bloomGlare;
    CameraData camera;
    Pixel displaySize;  ///< of the whole image, in pixels; 0 × 0 when not known
};

/// From the settings as they are now. Throws an Exception when one has another type.
PostProcessData getPostProcessData(const ISettings& settings);
/// The same for an image of this display size that `camera` took; its exposure is that of the
/// settings.
PostProcessData getPostProcessData(const ISettings& settings, Pixel displaySize,
                                   const CameraData& camera);

/// The context in which pictures are mapped, without an error callback.
colorkit::CommonColorMappingContext getCommonColorMappingContext(const PostProcessData& data);

}  // namespace tavrin::postcore
