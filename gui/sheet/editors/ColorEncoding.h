#pragma once

#include "foundation/Color.h"

#include <QColor>
#include <algorithm>
#include <cmath>

namespace tavrin::sheet {

// Linear Rec. 709 from 0 to 1 and the colours that a display shows for it, by the transfer function
// of sRGB (IEC 61966-2-1).

inline float encodeSrgb(float linear) {
    return linear <= 0.0031308f ? 12.92f * linear : 1.055f * std::pow(linear, 1.0f / 2.4f) - 0.055f;
}

inline float decodeSrgb(float encoded) {
    return encoded <= 0.04045f ? encoded / 12.92f : std::pow((encoded + 0.055f) / 1.055f, 2.4f);
}

inline QColor toDisplay(const CompressedRgb& linear) {
    const auto encode = [](float value) { return encodeSrgb(std::clamp(value, 0.0f, 1.0f)); };
    return QColor::fromRgbF(encode(linear.r), encode(linear.g), encode(linear.b));
}

inline CompressedRgb fromDisplay(const QColor& color) {
    const auto decode = [](float value) { return std::clamp(decodeSrgb(value), 0.0f, 1.0f); };
    return {decode(color.redF()), decode(color.greenF()), decode(color.blueF())};
}

}  // namespace tavrin::sheet
