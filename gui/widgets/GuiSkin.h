#pragma once

#include <wx/colour.h>
#include <wx/font.h>

class wxWindow;

namespace tavrin::widgets {

/// The colours and sizes of everything that we draw. All lengths are in device-independent pixels:
/// wxWindow::FromDIP makes them pixels of the window's display.
struct GuiSkin {
    // Surfaces, from the deepest to the highest.
    wxColour canvas;     ///< around the image; neutral, so that it does not tint what is judged
    wxColour base;       ///< panels, bars, inactive tabs
    wxColour field;      ///< where something is typed, chosen or dragged
    wxColour raised;     ///< buttons, and fields under the pointer
    wxColour highlight;  ///< the active tab, what is pressed, docking hints
    // Lines.
    wxColour border;       ///< around fields and buttons
    wxColour borderFocus;  ///< around what has the keyboard
    wxColour separator;    ///< between sections
    // Text.
    wxColour text;
    wxColour textWeak;      ///< units, hints, section counts
    wxColour textDisabled;  ///< also of marks in disabled controls
    wxColour accent;        ///< check marks, the filled part of a slider, selection
    wxColour accentText;    ///< text on the accent
    wxColour warning;       ///< what needs attention
    wxColour error;         ///< what has failed

    int fontSize = 8;  ///< in points
    int controlHeight = 22;
    int cornerRadius = 3;
    int padding = 6;

    /// The font of labels and fields: the system's in our size.
    wxFont getFont() const;

    /// The dark skin of the program, one for the whole run. Main thread.
    static const GuiSkin& DEFAULT();
};

/// What changes its looks with the skin. The skin outlives it.
class ISkinnable {
public:
    virtual ~ISkinnable() = default;
    virtual void applySkin(const GuiSkin& skin) = 0;
};

/// Gives the window and all windows in it the skin: our own controls what they draw with, and
/// others (panels, texts) its colours and font.
void applySkin(wxWindow& window, const GuiSkin& skin);

}  // namespace tavrin::widgets
