#pragma once

#include "foundation/Color.h"
#include "gui/widgets/ColorCoding.h"

#include <QColor>
#include <algorithm>

namespace tavrin::sheet {

// Linear colours with components from 0 to 1, and what a display shows for them.

inline QColor toDisplay(const CompressedRgb& linear) {
    const Rgb shown = widgets::encodeForDisplay({linear.r, linear.g, linear.b});
    return QColor::fromRgbF(std::clamp(shown.r, 0.0f, 1.0f), std::clamp(shown.g, 0.0f, 1.0f),
                            std::clamp(shown.b, 0.0f, 1.0f));
}

inline CompressedRgb fromDisplay(const QColor& color) {
    const Rgb linear = widgets::decodeFromDisplay({color.redF(), color.greenF(), color.blueF()});
    return {std::clamp(linear.r, 0.0f, 1.0f), std::clamp(linear.g, 0.0f, 1.0f),
            std::clamp(linear.b, 0.0f, 1.0f)};
}

}  // namespace tavrin::sheet
