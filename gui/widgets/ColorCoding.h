#pragma once

#include "foundation/Color.h"
#include "foundation/Optional.h"
#include "foundation/String.h"

namespace tavrin::widgets {

/// Hue (0 red, 1/3 green, 2/3 blue, 1 red again), saturation and value, all from 0 to 1, of a
/// display-encoded colour.
struct Hsv {
    float hue = 0.0f;
    float saturation = 0.0f;
    float value = 0.0f;
};

// Components from 0 to 1 are clamped where they leave it, and NaN is 0.
Hsv toHsv(const Rgb& displayed);
Rgb toRgb(const Hsv& color);

/// Between linear and display-encoded components by the transfer function of sRGB (IEC 61966-2-1);
/// negative numbers are mirrored, and those above 1 go on along the curve.
Rgb encodeForDisplay(const Rgb& linear);
Rgb decodeFromDisplay(const Rgb& displayed);

/// "#RRGGBB" of a display-encoded colour.
String getHexText(const Rgb& displayed);
/// Reads three or six hexadecimal digits, with or without "#".
Optional<Rgb> parseHexText(const String& text);

}  // namespace tavrin::widgets
