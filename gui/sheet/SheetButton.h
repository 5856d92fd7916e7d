#pragma once

#include "gui/sheet/Glyphs.h"

#include <QPushButton>
#include <QToolButton>

namespace tavrin::sheet {

/// A flat button with a mark; the help is also what assistive technology calls it.
QToolButton* makeIconButton(Glyph glyph, const QString& help, QWidget* parent);

/// A button with a mark and a text.
QPushButton* makeTextButton(Glyph glyph, const QString& text, const QString& help, QWidget* parent);

/// As a tooltip that is broken into lines.
QString makeTooltip(const QString& text);

}  // namespace tavrin::sheet
