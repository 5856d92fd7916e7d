#include "gui/widgets/GuiSkin.h"

#include <wx/settings.h>
#include <wx/window.h>

namespace tavrin::widgets {

const GuiSkin& GuiSkin::DEFAULT() {
    // GTK's dark theme stands at 0x35 to 0x33; file dialogs and menus, which it draws, fit in.
    static const GuiSkin skin = {
        .canvas = wxColour(0x1F, 0x1F, 0x1F),
        .base = wxColour(0x33, 0x33, 0x33),
        .field = wxColour(0x26, 0x26, 0x26),
        .raised = wxColour(0x42, 0x42, 0x42),
        .highlight = wxColour(0x9A, 0x9A, 0x9A),
        .border = wxColour(0x1B, 0x1B, 0x1B),
        .borderFocus = wxColour(0x5B, 0x8F, 0xC9),
        .separator = wxColour(0x25, 0x25, 0x25),
        .text = wxColour(0xDC, 0xDC, 0xDA),
        .textWeak = wxColour(0x9C, 0x9C, 0x9A),
        .textDisabled = wxColour(0x6B, 0x6B, 0x6B),
        .accent = wxColour(0x4A, 0x7F, 0xBD),
        .accentText = wxColour(0xFF, 0xFF, 0xFF),
        .warning = wxColour(0xE0, 0xA0, 0x40),
        .error = wxColour(0xD9, 0x5C, 0x55),
    };
    return skin;
}

wxFont GuiSkin::getFont() const {
    wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
    font.SetPointSize(fontSize);
    return font;
}

void applySkin(wxWindow& window, const GuiSkin& skin) {
    if (auto* const skinnable = dynamic_cast<ISkinnable*>(&window)) {
        skinnable->applySkin(skin);
    } else {
        window.SetBackgroundColour(skin.base);
        window.SetForegroundColour(skin.text);
        window.SetFont(skin.getFont());
    }
    for (wxWindow* const child : window.GetChildren()) {
        applySkin(*child, skin);
    }
    window.Refresh();
}

}  // namespace tavrin::widgets
