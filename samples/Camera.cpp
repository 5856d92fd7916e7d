#include "samples/Camera.h"

namespace tavrin::samples {
namespace {

// The inverse of the tent's cumulative distribution: −1 to 1.
double sampleTent(double u) {
    return u < 0.5 ? std::sqrt(2 * u) - 1 : 1 - std::sqrt(2 - 2 * u);
}

}  // namespace

Camera::Camera(const View& view, Pixel imageSize)
    : eye_(view.eye),
      frame_(Frame::along(normalize(view.eye - view.target),
                          cross({0, 1, 0}, view.eye - view.target))),
      imageSize_(imageSize),
      lensRadius_(view.lensRadius),
      focusDistance_(view.focusDistance) {
    const double width = 2 * std::tan(view.fieldOfView * kPi / 360);
    const double height = width * 9 / 16;
    pixelSize_ = std::max(width / imageSize.x, height / imageSize.y);
}

Ray Camera::makeRay(Pixel pixel, Sampler& sampler) const {
    const Point2 filter = sampler.nextPoint();
    const double x = pixel.x + 0.5 + sampleTent(filter.x) - 0.5 * imageSize_.x;
    const double y = pixel.y + 0.5 + sampleTent(filter.y) - 0.5 * imageSize_.y;
    const Point2 u = sampler.nextPoint();
    const double radius = lensRadius_ * std::sqrt(u.x);
    const double angle = 2 * kPi * u.y;
    const Vector lens{radius * std::cos(angle), radius * std::sin(angle), 0};
    const Vector focus = focusDistance_ * Vector{x * pixelSize_, -y * pixelSize_, -1};
    return {eye_ + frame_.toWorld(lens), frame_.toWorld(normalize(focus - lens))};
}

}  // namespace tavrin::samples
