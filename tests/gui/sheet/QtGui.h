#pragma once

#include "foundation/Function.h"
#include "tests/gui/Gui.h"

#include <wx/frame.h>

#include <QPoint>
#include <QWidget>

namespace tavrin::tests {

// Tests of Qt widgets in windows of wxWidgets, as in Gui.h; positions are Qt's.

/// A place of a Qt widget in client coordinates of the window around it.
wxPoint toWindow(const wxWindow& window, const QWidget& widget, QPoint position);
/// The middle of the widget.
wxPoint toWindow(const wxWindow& window, const QWidget& widget);

void clickMouse(const wxWindow& window, const QWidget& widget);
void dragMouse(const wxWindow& window, const QWidget& widget, QPoint from, QPoint to);

/// Waits until the widget is shown and no layout is pending.
bool waitUntilShown(const QWidget& widget);

}  // namespace tavrin::tests
