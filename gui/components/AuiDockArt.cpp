#include "gui/components/AuiDockArt.h"

#include "gui/components/AuiColors.h"

namespace tavrin::components {

AuiDockArt::AuiDockArt(const widgets::GuiSkin& skin) {
    SetColour(wxAUI_DOCKART_BACKGROUND_COLOUR, skin.base);
    SetColour(wxAUI_DOCKART_GRIPPER_COLOUR, skin.base);
    SetMetric(wxAUI_DOCKART_PANE_BORDER_SIZE, 0);
    // After the gripper's colour, which sets its pens too.
    m_borderPen = wxPen(kAuiShadow);
    m_gripperPen1 = wxPen(kAuiShadow);
    m_gripperPen2 = wxPen(kAuiEdge);
}

}  // namespace tavrin::components
