#include "samples/Microfacet.h"

namespace tavrin::samples {

double Microfacet::density(const Vector& half) const {
    const double x = half.x / alphaX_;
    const double y = half.y / alphaY_;
    const double sum = x * x + y * y + half.z * half.z;
    return 1 / (kPi * alphaX_ * alphaY_ * sum * sum);
}

double Microfacet::lambda(const Vector& direction) const {
    const double x = alphaX_ * direction.x;
    const double y = alphaY_ * direction.y;
    const double z = direction.z;
    return 0.5 * (std::sqrt(1 + (x * x + y * y) / (z * z)) - 1);
}

Vector Microfacet::sampleVisible(const Vector& out, Point2 u) const {
    // Stretched, the facets are those of a hemisphere; pick a point of its projection.
    const Vector view = normalize({alphaX_ * out.x, alphaY_ * out.y, out.z});
    const Frame frame = Frame::around(view);
    const double radius = std::sqrt(u.x);
    const double angle = 2 * kPi * u.y;
    // The disc seen from `view` is cut to the half in front of the equator. Its axes are chosen
    // so that the cut is along the first one.
    const double sine = std::hypot(view.x, view.y);
    const Vector first = sine > 0 ? Vector{-view.y / sine, view.x / sine, 0} : frame.tangent;
    const Vector second = cross(view, first);
    const double a = radius * std::cos(angle);
    const double edge = std::sqrt(std::max(0.0, 1 - a * a));
    const double s = 0.5 * (1 + view.z);
    const double b = (1 - s) * edge + s * radius * std::sin(angle);
    const double c = std::sqrt(std::max(0.0, 1 - a * a - b * b));
    const Vector half = a * first + b * second + c * view;
    return normalize({alphaX_ * half.x, alphaY_ * half.y, std::max(0.0, half.z)});
}

}  // namespace tavrin::samples
