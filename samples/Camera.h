#pragma once

#include "foundation/Geometry.h"
#include "samples/Sampler.h"

namespace tavrin::samples {

/// A camera with a thin lens. It frames at least its picture of 16 to 9, and more on the longer
/// sides of an image of another shape. Camera space has x to the right, y up and z towards the
/// viewer.
class Camera {
public:
    struct View {
        Vector eye;
        Vector target;
        double fieldOfView = 40;   ///< horizontal angle of the 16 : 9 picture, in degrees
        double lensRadius = 0;     ///< decimetres; 0 is sharp everywhere
        double focusDistance = 1;  ///< along the axis, in decimetres
    };

    Camera(const View& view, Pixel imageSize);

    /// A ray through a pixel, with a tent filter of radius 1 by choice of the position (Ernst et
    /// al. 2006, "Filter importance sampling"), so that all samples weigh the same.
    Ray makeRay(Pixel pixel, Sampler& sampler) const;
    Vector toCameraSpace(const Vector& direction) const { return frame_.toLocal(direction); }
    /// Distance of a position from the eye along the camera's axis.
    double getDepth(const Vector& position) const { return -dot(position - eye_, frame_.normal); }

private:
    Vector eye_;
    Frame frame_;
    Pixel imageSize_;
    double pixelSize_;  ///< on the image plane at distance 1
    double lensRadius_;
    double focusDistance_;
};

}  // namespace tavrin::samples
