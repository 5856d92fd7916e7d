#pragma once

#include "services/colorkit/CommonColorMappingContext.h"
#include "services/postcore/ISettings.h"

namespace tavrin::postcore {

/// How the camera was set that took the picture.
struct CameraExposure {
    float iso;           ///< ISO number of the film
    float shutterSpeed;  ///< reciprocal of the exposure time, in 1/s
    float fStop;         ///< focal length over the diameter of the aperture
};

/// Settings by what they are for. A plain value.
struct PostProcessData {
    CameraExposure camera;
};

/// From the settings as they are now. Throws an Exception when one has another type.
PostProcessData getPostProcessData(const ISettings& settings);

/// The context in which pictures are mapped, without an error callback.
colorkit::CommonColorMappingContext getCommonColorMappingContext(const PostProcessData& data);

}  // namespace tavrin::postcore
