#pragma once

#include "gui/widgets/Drawing.h"
#include "gui/widgets/GuiSkin.h"

#include <wx/popupwin.h>

namespace tavrin::widgets {

/// Base of what floats above everything and never takes the keyboard: tooltips, the pixel probe and
/// drop-down lists. Its parent owns it. Main thread.
class FloatingWindow : public wxPopupWindow {
protected:
    explicit FloatingWindow(wxWindow* parent);

    /// Draws all of the window.
    virtual void paint(wxGraphicsContext& canvas) = 0;
    const GuiSkin& skin() const { return GuiSkin::DEFAULT(); }

    /// Moves beside the pointer, never under it, where all of the window is on the display.
    void placeBeside(wxPoint pointer);

private:
    void onPaint();
};

}  // namespace tavrin::widgets
