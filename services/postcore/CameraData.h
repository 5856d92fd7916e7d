#pragma once

#include <cstdint>

namespace tavrin::postcore {

/// How the camera was set that took the picture.
struct CameraExposure {
    float iso = 100.0f;          ///< ISO number of the film
    float shutterSpeed = 50.0f;  ///< reciprocal of the exposure time, in 1/s
    float fStop = 16.0f;         ///< focal length over the diameter of the aperture
};

/// What an image says about its camera. The defaults are those of an image that says nothing.
struct CameraData {
    std::uint32_t type = 1;  ///< the renderer's number for the kind of projection
    bool isVrEnabled = false;
    CameraExposure exposure;
};

}  // namespace tavrin::postcore
