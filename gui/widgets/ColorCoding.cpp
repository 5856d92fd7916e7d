#include "gui/widgets/ColorCoding.h"

#include "gui/widgets/Conversions.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace tavrin::widgets {
namespace {

float clampToUnit(float component) {
    return component > 0.0f ? std::min(component, 1.0f) : 0.0f;
}

template <class Change>
Rgb changeComponents(const Rgb& color, Change change) {
    return {change(color.r), change(color.g), change(color.b), color.a};
}

}  // namespace

Hsv toHsv(const Rgb& displayed) {
    const Rgb color = changeComponents(displayed, clampToUnit);
    const float high = std::max({color.r, color.g, color.b});
    const float range = high - std::min({color.r, color.g, color.b});
    if (range == 0.0f) {
        return {0.0f, 0.0f, high};
    }
    // Smith 1978, "Color gamut transform pairs": sixths of the circle from the largest component.
    const float sixths = high == color.r   ? (color.g - color.b) / range
                         : high == color.g ? 2.0f + (color.b - color.r) / range
                                           : 4.0f + (color.r - color.g) / range;
    const float hue = sixths / 6.0f;
    return {hue < 0.0f ? hue + 1.0f : hue, range / high, high};
}

Rgb toRgb(const Hsv& color) {
    const float hue = clampToUnit(color.hue) * 6.0f;
    // How far a component is from the largest: none within a sixth of its place on the circle.
    const auto get = [&](float offset) {
        const float place = std::fmod(offset + hue, 6.0f);
        const float part = clampToUnit(std::min(place, 4.0f - place));
        return clampToUnit(color.value) * (1.0f - clampToUnit(color.saturation) * part);
    };
    return {get(5.0f), get(3.0f), get(1.0f), 1.0f};
}

Rgb encodeForDisplay(const Rgb& linear) {
    return changeComponents(linear, [](float component) {
        const float size = std::abs(component);
        const float coded =
            size <= 0.0031308f ? 12.92f * size : 1.055f * std::pow(size, 1.0f / 2.4f) - 0.055f;
        return std::copysign(coded, component);
    });
}

Rgb decodeFromDisplay(const Rgb& displayed) {
    return changeComponents(displayed, [](float component) {
        const float size = std::abs(component);
        const float linear =
            size <= 0.04045f ? size / 12.92f : std::pow((size + 0.055f) / 1.055f, 2.4f);
        return std::copysign(linear, component);
    });
}

String getHexText(const Rgb& displayed) {
    return toString(toWxColour(displayed).GetAsString(wxC2S_HTML_SYNTAX));
}

Optional<Rgb> parseHexText(const String& text) {
    std::string digits = text.trimmed().toUtf8();
    if (digits.starts_with('#')) {
        digits.erase(0, 1);
    }
    if (digits.size() == 3) {
        digits = {digits[0], digits[0], digits[1], digits[1], digits[2], digits[2]};
    }
    if (digits.size() != 6 ||
        digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
        return {};
    }
    const auto get = [&](std::size_t place) {
        return static_cast<float>(std::stoi(digits.substr(place, 2), nullptr, 16)) / 255.0f;
    };
    return Rgb{get(0), get(2), get(4), 1.0f};
}

}  // namespace tavrin::widgets
