#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QRectF>

namespace tavrin::sheet {

/// The small marks on controls, drawn as lines so that they are sharp at every scale.
enum class Glyph {
    Check,
    Down,
    Right,
    Handle,
    More,
    Plus,
    Minus,
    Reset,
    Folder,
    Dropper,
    Previous,
    Next
};

/// In the middle of the place, at most 14 units large; units are those of the painter.
void drawGlyph(QPainter& painter, Glyph glyph, const QRectF& place, const QColor& color);

/// For buttons, with a paler one for when they are disabled.
QIcon makeIcon(Glyph glyph);

}  // namespace tavrin::sheet
