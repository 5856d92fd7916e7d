#include "gui/components/AuiNotebook.h"

#include "gui/components/AuiDockArt.h"
#include "gui/components/AuiTabArt.h"

namespace tavrin::components {

AuiNotebook::AuiNotebook(wxWindow* parent, int style)
    : wxAuiNotebook(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, style) {
    applySkin(widgets::GuiSkin::DEFAULT());
}

void AuiNotebook::applySkin(const widgets::GuiSkin& skin) {
    SetBackgroundColour(skin.base);
    // What the manager draws is what shows between the pages, and where there are none.
    m_mgr.SetArtProvider(new AuiDockArt(skin));
    // The fonts first, which it gives to the art again whenever a page is selected.
    SetNormalFont(skin.getFont());
    SetSelectedFont(skin.getFont());
    SetMeasuringFont(skin.getFont());
    SetArtProvider(new AuiTabArt(skin));
    Refresh();
}

}  // namespace tavrin::components
