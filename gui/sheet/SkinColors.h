#pragma once

#include "foundation/String.h"
#include "gui/widgets/GuiSkin.h"

#include <QColor>
#include <QPalette>
#include <QString>

namespace tavrin::sheet {

/// The colours of the skin, for Qt.
inline QColor toQt(const wxColour& color) {
    return {color.Red(), color.Green(), color.Blue(), color.Alpha()};
}

inline QString toQt(const String& text) {
    return QString::fromUtf16(text.view().data(), static_cast<qsizetype>(text.size()));
}
inline String fromQt(const QString& text) {
    return std::u16string_view(reinterpret_cast<const char16_t*>(text.utf16()),
                               static_cast<std::size_t>(text.size()));
}

/// Paints all of Qt's own controls in the colours of the skin.
QPalette makePalette(const widgets::GuiSkin& skin);

}  // namespace tavrin::sheet
