#pragma once

#include "foundation/Function.h"
#include "foundation/String.h"

namespace tavrin::colorkit {

/// Kinds of errors, as the first argument of a context's error callback.
enum class MappingError {
    Transform = 1,  ///< a file or a library that an operator needs cannot be used
};

/// What the mapping takes from outside the pipeline: the display's curve and the properties of the
/// camera that took the picture. The defaults are those of an image that says nothing.
struct CommonColorMappingContext {
    /// 2.2 stands for the sRGB curve (IEC 61966-2-1); any other value is the exponent of a pure
    /// power. A value that is not positive and finite counts as 2.2.
    float displayGamma = 2.2f;
    /// Factor of the image on its linear colours, applied before the pipeline. Factors that are
    /// negative or not finite count as 1, those above 1e15 as that.
    float imageExposure = 1.0f;
    /// Factor of the viewer on the linear colours, applied before the pipeline as well, so that
    /// the whole range of the image stays available.
    float viewExposure = 1.0f;
    /// Seed of the noise of operators that add some.
    int noiseSeed = 0;
    /// Whether the camera's values below take part in photographic exposure.
    bool usesCameraExposure = true;
    /// Sensitivity of the film as an ISO number.
    float iso = 100.0f;
    /// Focal length over the diameter of the aperture.
    float fStop = 16.0f;
    /// Reciprocal of the exposure time, in 1/s.
    float shutterSpeed = 50.0f;
    /// Told about operators that cannot do their work (such as a LUT file that is missing) and are
    /// left out of the mapping: a MappingError and a sentence. May be empty. Called on the
    /// thread that creates a mapping operator.
    Function<void(int id, const String& text)> errorCallback;
};

}  // namespace tavrin::colorkit
