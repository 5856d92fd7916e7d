#include "gui/components/AuiDockArt.h"

#include "gui/components/AuiColors.h"

namespace tavrin::components {

AuiDockArt::AuiDockArt(const widgets::GuiSkin& skin) {
    for (const int surface : {wxAUI_DOCKART_BACKGROUND_COLOUR, wxAUI_DOCKART_GRIPPER_COLOUR,
                              wxAUI_DOCKART_SASH_COLOUR}) {
        SetColour(surface, skin.base);
    }
    SetMetric(wxAUI_DOCKART_PANE_BORDER_SIZE, 0);
    // After the gripper's colour, which sets its pens too.
    m_gripperPen1 = wxPen(kAuiShadow);
    m_gripperPen2 = wxPen(kAuiShadow);
    m_gripperPen3 = wxPen(kAuiEdge);
    setCaption(skin);
}

void AuiDockArt::setCaption(const widgets::GuiSkin& skin) {
    SetMetric(wxAUI_DOCKART_GRADIENT_TYPE, wxAUI_GRADIENT_NONE);
    SetColour(wxAUI_DOCKART_ACTIVE_CAPTION_COLOUR, skin.raised);
    SetColour(wxAUI_DOCKART_ACTIVE_CAPTION_TEXT_COLOUR, skin.text);
    SetColour(wxAUI_DOCKART_INACTIVE_CAPTION_COLOUR, skin.field);
    SetColour(wxAUI_DOCKART_INACTIVE_CAPTION_TEXT_COLOUR, skin.textWeak);
    SetFont(wxAUI_DOCKART_CAPTION_FONT, skin.getFont());
}

}  // namespace tavrin::components
