#pragma once

#include <cmath>

namespace tavrin {
inline namespace foundation {

/// A colour of three floats in a slot of four; the fourth float carries alpha through the pipeline.
/// Two colours are equal when their three components are.
struct alignas(16) Rgb {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 0.0f;

    friend bool operator==(const Rgb& left, const Rgb& right) {
        return left.r == right.r && left.g == right.g && left.b == right.b;
    }
};

/// Whether the three components are; alpha does not count.
inline bool isFinite(const Rgb& color) {
    return std::isfinite(color.r) && std::isfinite(color.g) && std::isfinite(color.b);
}

/// A colour of four floats.
struct alignas(16) Rgba {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 0.0f;

    friend bool operator==(const Rgba&, const Rgba&) = default;
};

/// A colour of three packed floats.
struct CompressedRgb {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;

    friend bool operator==(const CompressedRgb&, const CompressedRgb&) = default;
};

}  // namespace foundation
}  // namespace tavrin
